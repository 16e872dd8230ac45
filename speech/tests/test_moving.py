"""Going about in a text that is being read: what is played then, and what is synthesised for it."""

import asyncio
import dataclasses
import re
from contextlib import asynccontextmanager
from functools import partial

import pytest
from engine_process import FOLDER
from reading_parts import Synthesizer
from tavin import clips
from tavin.engine import SPEEDS
from tavin.process import frames
from tavin.reading import Reading
from tavin.sound.stream import Stream
from tavin.synthesis.backends import BACKENDS
from tavin.synthesis.synthesis import BackendError
from tavin.text.pieces import pieces

TEXT = "One. Two. Three.\n\nFour. Five.\n\nSix. Seven."
LENGTH = 40  # bytes of a sentence's sound
BUFFER = 10  # bytes that the player takes before they are heard


class Teller(Synthesizer):
    """Makes sound that says what it is of."""

    def __init__(self):
        super().__init__()
        self.speed = 1.0
        self.backend = dataclasses.replace(BACKENDS["espeak"], ahead=0.0)

    async def say(self, text, voice, speed, hear):
        self.heard.append(text.strip())
        hear(f"{text.strip()}{speed if speed != 1.0 else ''}".ljust(LENGTH).encode())


class Listener:
    """Takes as much sound as it is told to hear, and a little beforehand."""

    def __init__(self):
        self.streams = []  # whether each began paused
        self.rates = []
        self.open_streams = 0
        self.played = []
        self.ended = False
        self.drains = False  # what it holds is still heard after the end

    async def open(self, rate, paused, on_started):
        self.stream = Stream(self, len(self.streams), paused, on_started, self.close)
        self.streams.append(paused)
        self.rates.append(rate)
        self.open_streams += 1
        self.played.append(b"")
        self.stream.frame(frames.NEED, str(BUFFER).encode())
        return self.stream

    def close(self, stream):
        self.open_streams -= 1

    def send(self, kind, number, payload=b""):
        if kind == frames.AUDIO:
            self.played[number] += payload
        elif kind == frames.END:
            self.ended = True
            if not self.drains:
                self.stream.frame(frames.ENDED, b"")

    def sentences(self):
        """What began to be played since the last move."""
        return self.played[-1].decode().split() if self.played and self.stream.open else []

    async def hear(self, count):
        for _ in range(count):
            self.stream.frame(frames.NEED, b"1")
            for _ in range(5):
                await asyncio.sleep(0)


class Moving:
    """A reading that goes on as far as the test has it heard."""

    def __init__(self, text, teller, others):
        """`others`: who speaks a sentence instead."""
        self.teller = teller
        self.player = Listener()
        self.errors = []

        async def choose(sentence):
            return others.get(sentence.strip(), teller), "voice", teller.speed

        self.reading = Reading(partial(pieces, text, "en-us", 300), choose, teller, self.player, self.errors.append)
        self.task = asyncio.create_task(self.reading.run())

    async def until_played(self, *sentences):
        async with asyncio.timeout(10):
            while self.player.sentences() != list(sentences):
                await asyncio.sleep(0)

    async def hear_sentences(self, count):
        """And the next one's begin."""
        await self.player.hear(count * LENGTH + 1)


@asynccontextmanager
async def moving(text=TEXT, teller=None, others={}):
    scene = Moving(text, teller or Teller(), others)
    await scene.until_played(text.split()[0] if text else ())
    try:
        yield scene
    finally:
        scene.task.cancel()
        await asyncio.wait([scene.task])


def scenario(steps, *arguments, **options):
    async def play():
        async with moving(*arguments, **options) as scene:
            await steps(scene)

    asyncio.run(play())


def test_how_long_a_next_piece_may_be_is_told_by_the_sound_that_nobody_has_heard():
    async def steps(scene):
        await scene.hear_sentences(2)
        await scene.until_played("One.", "Two.", "Three.")
        scene.teller.pace.longest = lambda left: left * 2 * scene.teller.rate
        assert scene.reading.longest_in_time() == pytest.approx(2 * LENGTH, abs=BUFFER), "of two sentences"

    scenario(steps)


def test_next_goes_to_the_next_sentence_in_a_new_stream():
    async def steps(scene):
        scene.reading.next("sentence")
        assert scene.player.stream.open is False
        await scene.until_played("Two.")
        scene.reading.next("sentence")
        await scene.until_played("Three.")

    scenario(steps)


def test_each_of_several_moves_counts_before_anything_is_played():
    async def steps(scene):
        for _ in range(4):
            scene.reading.next("sentence")
        await scene.until_played("Five.")
        assert "Three." not in scene.teller.heard, "what is passed over is not made"
        for _ in range(2):
            scene.reading.previous("sentence")
        scene.reading.next("sentence")
        await scene.until_played("Four.")

    scenario(steps)


def test_next_and_previous_paragraph():
    async def steps(scene):
        scene.reading.next("paragraph")
        await scene.until_played("Four.")
        scene.reading.next("paragraph")
        await scene.until_played("Six.")
        scene.reading.next("sentence")
        await scene.until_played("Seven.")
        scene.reading.previous("paragraph")
        await scene.until_played("Six.")
        scene.reading.previous("paragraph")
        await scene.until_played("Four.")

    scenario(steps)


@pytest.mark.parametrize("by", ["sentence", "paragraph"])
def test_previous_at_the_beginning_starts_it_again(by):
    async def steps(scene):
        scene.reading.previous(by)
        await scene.until_played("One.")
        assert len(scene.player.streams) == 2

    scenario(steps)


@pytest.mark.parametrize("paused", [False, True])
@pytest.mark.parametrize("by", ["sentence", "paragraph"])
def test_next_at_the_end_ends_the_reading(by, paused):
    async def steps(scene):
        scene.reading.pause(paused)
        scene.reading.next(by)
        async with asyncio.timeout(10):
            await scene.task

    scenario(steps, "Only.")


def test_going_back_synthesises_nothing_again():
    async def steps(scene):
        await scene.hear_sentences(4)
        assert scene.player.sentences() == ["One.", "Two.", "Three.", "Four.", "Five."]
        made = list(scene.teller.heard)
        scene.reading.previous("paragraph")
        await scene.until_played("Four.")
        scene.reading.previous("paragraph")
        await scene.until_played("One.")
        await scene.hear_sentences(4)
        assert scene.player.sentences() == ["One.", "Two.", "Three.", "Four.", "Five."]
        scene.reading.repeat()
        await scene.until_played("Five.")
        assert [said for said in scene.teller.heard if scene.teller.heard.count(said) > 1] == []
        assert scene.teller.heard[: len(made)] == made

    scenario(steps)


def test_what_counts_is_what_is_heard_not_what_the_player_holds():
    async def steps(scene):
        await scene.player.hear(LENGTH - BUFFER // 2)  # the player has the next sentence's begin
        assert scene.player.sentences() == ["One.", "Two."]
        scene.reading.repeat()
        await scene.until_played("One.")
        await scene.player.hear(LENGTH + BUFFER // 2)
        scene.reading.repeat()
        await scene.until_played("Two.")

    scenario(steps)


class Brief(Teller):
    """Makes no more of a sentence than the player takes beforehand, or nothing."""

    def __init__(self, length):
        super().__init__()
        self._length = length

    async def say(self, text, voice, speed, hear):
        hear(text.encode().ljust(BUFFER)[: self._length])


@pytest.mark.parametrize("text", ["One. Two. Three.", "One. Two."])
def test_a_short_sentence_that_the_player_holds_is_not_passed_over(text):
    async def steps(scene):
        scene.player.drains = True
        await scene.player.hear(LENGTH - 1)
        assert scene.player.played[-1].decode().split()[:2] == ["One.", "Two."]
        scene.reading.next("sentence")
        assert scene.reading.place().text.strip() == "Two."
        async with asyncio.timeout(10):
            while not scene.player.played[-1].startswith(b"Two."):
                await asyncio.sleep(0)

    scenario(steps, text, others={"Two.": Brief(5)})


def test_a_sentence_without_sound_hides_no_place():
    async def steps(scene):
        await scene.player.hear(LENGTH - 1)
        assert scene.player.sentences() == ["One.", "Three."]
        assert scene.reading.place().text.strip() == "One."
        scene.reading.repeat()
        await scene.until_played("One.")

    scenario(steps, "One. Two. Three.", others={"Two.": Brief(0)})


@pytest.mark.parametrize("count, streams", [(1, 2), (2, 3)])
def test_a_move_to_another_rate_plays_nothing_out(count, streams):
    """One more stream, and another where the rate was not known yet."""
    other = Teller()
    other.rate = 2000

    async def steps(scene):
        scene.reading.pause(True)
        await scene.player.hear(3)
        for _ in range(count):
            scene.reading.next("sentence")
        await scene.until_played(["Two.", "Three."][count - 1])
        assert scene.player.rates[-1] == 2000
        assert len(scene.player.rates) == streams
        assert not scene.player.ended
        assert scene.player.open_streams == 1

    scenario(steps, "One. Two. Three. Four.", others={"Two.": other, "Three.": other})


def test_a_move_while_paused_stays_paused():
    async def steps(scene):
        scene.reading.pause(True)
        scene.reading.next("sentence")
        await scene.until_played("Two.")
        assert scene.reading.paused
        assert scene.player.streams == [False, True]

    scenario(steps)


def test_after_a_change_of_speed_going_back_is_at_the_new_one():
    async def steps(scene):
        await scene.hear_sentences(1)
        scene.teller.speed = 2.0
        scene.reading.voice_changed()
        scene.reading.previous("sentence")
        await scene.until_played("One.2.0")
        scene.reading.repeat()
        await scene.until_played("One.2.0")
        assert scene.teller.heard.count("One.") == 2

    scenario(steps)


def test_what_is_being_made_is_left_for_what_is_wanted_now():
    class Slow(Teller):
        async def say(self, text, voice, speed, hear):
            if text == "Two.":
                self.heard.append("begun")
                await asyncio.Event().wait()
            await super().say(text, voice, speed, hear)

    async def steps(scene):
        async with asyncio.timeout(10):
            while "begun" not in scene.teller.heard:
                await asyncio.sleep(0)
        scene.reading.next("paragraph")
        await scene.until_played("Four.")

    scenario(steps, teller=Slow())


def test_moves_before_the_first_sound_count():
    async def steps():
        scene = Moving(TEXT, Teller(), {})
        await asyncio.sleep(0)
        for _ in range(2):
            scene.reading.next("sentence")
        await scene.until_played("Three.")
        assert scene.teller.heard[0] == "Three."
        scene.task.cancel()
        await asyncio.wait([scene.task])

    asyncio.run(steps())


def test_after_a_move_the_text_is_read_to_its_end():
    async def steps(scene):
        scene.reading.previous("sentence")
        scene.reading.next("paragraph")
        await scene.until_played("Four.")
        while not scene.task.done():
            await scene.player.hear(1)
        assert scene.player.played[-1].decode().split() == ["Four.", "Five.", "Six.", "Seven."]
        assert scene.player.ended

    scenario(steps)


def test_going_back_from_what_cannot_be_read_plays_what_was_heard():
    class Failing(Teller):
        async def say(self, text, voice, speed, hear):
            if text == "Three.":
                raise BackendError("No more.")
            await super().say(text, voice, speed, hear)

    async def steps(scene):
        await scene.hear_sentences(1)
        assert scene.player.sentences() == ["One.", "Two."]
        scene.reading.previous("sentence")
        await scene.until_played("One.")
        assert scene.errors == ["No more."]

    scenario(steps, teller=Failing())


def test_what_is_kept_is_bounded_by_its_size_and_by_its_number(monkeypatch):
    async def steps(scene):
        await scene.hear_sentences(5)
        for _ in range(6):
            scene.reading.previous("sentence")
        await scene.until_played("Four.")

    monkeypatch.setattr(clips, "KEPT_PIECES", 2)
    scenario(steps)
    monkeypatch.setattr(clips, "KEPT_PIECES", 100)
    monkeypatch.setattr(clips, "KEPT_BYTES", 2 * LENGTH)
    scenario(steps)


def test_a_sentence_in_several_pieces_is_one_step():
    async def steps(scene):
        await scene.player.hear(LENGTH)
        assert len(scene.player.sentences()) > 2
        scene.reading.repeat()
        async with asyncio.timeout(10):
            while not scene.player.played[-1].startswith(b"This"):
                await asyncio.sleep(0)
        scene.reading.next("sentence")
        await scene.until_played("Short.")

    async def play():
        scene = Moving("This goes on" + ", and on" * 100 + ". Short.", Teller(), {})
        async with asyncio.timeout(10):
            while not scene.player.sentences():
                await asyncio.sleep(0)
        await steps(scene)
        scene.task.cancel()
        await asyncio.wait([scene.task])

    asyncio.run(play())


def test_faster_and_slower_go_by_the_menus_speeds():
    header = (FOLDER.parent / "src/menu/MenuController.h").read_text("utf-8")
    (listed,) = re.findall(r"std::array speeds\{(.*?)\};", header)
    assert tuple(map(float, listed.split(","))) == SPEEDS
