"""One text being read, without a server around it."""

import asyncio
import gc
import os
import signal
import weakref
from functools import partial

import pytest
from reading_parts import SOUND, Player, Synthesizer
from tavin.engine import Engine
from tavin.pace import Pace
from tavin.reading import Reading
from tavin.settings import Settings
from tavin.text.pieces import pieces

LONG = "The quick brown fox jumps over the lazy dog, again and again and again. " * 20


class Text(str):
    """Can be watched."""


async def finish(condition, what):
    deadline = asyncio.get_running_loop().time() + 15
    while not condition():
        assert asyncio.get_running_loop().time() < deadline, what
        await asyncio.sleep(0.01)


async def let_go(engine, text, end):
    """Have a text read and ended; it must be gone without the help of the garbage collector."""
    watched = weakref.ref(text)
    engine.speak(text)
    del text
    await end(engine)
    await finish(lambda: engine.status()["state"] == "idle", "idle")
    await finish(lambda: watched() is None, f"let go of after {end.__name__}")


async def the_end(_):
    pass


async def a_stop_at_once(engine):
    engine.stop()


async def a_stop(engine):
    await finish(lambda: engine.status()["state"] == "speaking", "speaking")
    engine.stop()


async def a_pause_and_a_stop(engine):
    await finish(lambda: engine.status()["state"] == "speaking", "speaking")
    engine.toggle_pause()
    engine.stop()


async def a_new_voice_and_a_stop(engine):
    await finish(lambda: engine.status()["state"] == "speaking", "speaking")
    await engine.configure({"speed": 2})
    engine.stop()


async def a_failure(engine):
    await finish(lambda: engine.status()["state"] == "speaking", "speaking")
    os.kill(engine._output._child.pid, signal.SIGKILL)


def test_a_text_is_let_go_of_when_it_is_over(sound_server, monkeypatch, tmp_path):
    for name, value in sound_server.environment.items():
        monkeypatch.setenv(name, value)

    async def scenario():
        engine = Engine(Settings(tmp_path / "engine.json"))
        await engine.know_voices()
        await let_go(engine, Text("Hello."), the_end)
        await let_go(engine, Text("."), the_end)
        await let_go(engine, Text(""), the_end)
        for end in (a_stop_at_once, a_stop, a_pause_and_a_stop, a_new_voice_and_a_stop, a_failure):
            await let_go(engine, Text(LONG), end)
        engine.end()
        await finish(lambda: not engine._output._child.alive and not engine._choice.synth()._child.alive, "all ended")

    gc.disable()
    try:
        asyncio.run(scenario())
    finally:
        gc.enable()


def read(text, pace=None):
    """The synthesizer and the player that read a text to its end."""
    player, synthesizer = Player(), Synthesizer()
    synthesizer.pace = pace or synthesizer.pace

    async def choose(_):
        return synthesizer, "voice", 1.0

    def on_error(error):
        raise AssertionError(error)

    async def scenario():
        backend = synthesizer.backend
        find = partial(pieces, text, "en-us", backend.longest_piece, backend.first_piece)
        reading = Reading(find, choose, synthesizer, player, on_error)
        async with asyncio.timeout(120):
            await reading.run()

    asyncio.run(scenario())
    return synthesizer, player


@pytest.mark.parametrize("text", ["", " \n\t", "\u200b" * 5000])
def test_where_there_is_nothing_to_say_no_sound_is_opened(text):
    synthesizer, player = read(text)
    assert (synthesizer.heard, player.opened) == ([], 0)


class Noting(Pace):
    """Keeps what it was told."""

    def __init__(self):
        self.notes = []
        super().__init__()

    def note(self, voice, speed, length, seconds, sound):
        self.notes.append((voice, speed, length, sound))
        assert 0 <= seconds < 60


def test_how_long_pieces_take_and_last_is_noted():
    pace = Noting()
    read("One sentence. Another one. The third.", pace)
    assert pace.notes == [("voice", 1.0, 13, 1.0), ("voice", 1.0, 12, 1.0), ("voice", 1.0, 10, 1.0)]


@pytest.mark.parametrize("silence", [0, 264, 1000])
def test_the_synthesisers_silence_before_the_first_word_is_not_waited_for(monkeypatch, silence):
    async def say(self, text, voice, speed, hear):
        self.heard.append(len(text))
        hear(bytes(2 * silence))
        hear(bytes(2) + SOUND)

    monkeypatch.setattr(Synthesizer, "say", say)
    synthesizer, player = read("One sentence. Another one.")
    assert player.first.startswith(SOUND[:100])
    pauses = (len(synthesizer.heard) - 1) * 2 * (silence + 1)
    assert player.played == len(synthesizer.heard) * len(SOUND) + pauses, "pauses within are kept"


def resident():
    with open("/proc/self/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def test_ten_megabytes_are_read_to_their_end_in_constant_memory(monkeypatch):
    sentence = "This sentence goes on and on and on" + ", and on" * 60 + ". "
    sizes = []

    async def say(self, text, voice, speed, hear):
        self.heard.append(len(text))
        if len(self.heard) % 1000 == 0:
            sizes.append(resident())
        hear(SOUND)

    monkeypatch.setattr(Synthesizer, "say", say)
    count = 10_000_000 // len(sentence)
    synthesizer, player = read(sentence * count)
    assert sum(synthesizer.heard) == count * len(sentence.strip())
    assert player.played == len(synthesizer.heard) * 2000
    assert sizes[-1] - sizes[0] < 4_000_000
