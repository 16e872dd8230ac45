"""One text being read aloud: sentences are synthesised ahead while earlier ones play.

Runs on the event loop. Little is handed to the player in advance, so that a
pause or a stop acts at once and a change of back-end, voice or speed acts from
the next sentence on: what was synthesised ahead is then made anew. A move in the
text is a new stream: what the old one has not played is lost.
"""

import asyncio
import time
from itertools import takewhile

from tavin.clips import Clips
from tavin.synthesis.voice_choice import UnspeakableError
from tavin.synthesis.synthesis import BackendError, SynthesisError
from tavin.text.pieces import Piece, cut

AHEAD_SENTENCES = 32  # the bound for sentences that make no sound
FAILURES_IN_A_ROW = 5  # then the text is given up


def without_silence(samples):
    """Without the zeros that a synthesiser begins with (eSpeak NG: 12 ms), which a user waits for."""
    silence = len(samples) - len(samples.lstrip(b"\0"))
    return samples[silence // 2 * 2 :]


class Reading:
    def __init__(self, find, choose, synthesis, output, on_error):
        """`find(in_time=...)` gives the text's pieces. `choose(sentence)` waits for the synthesis, the voice and the
        speed to speak it with; `synthesis` is what it is likely to be at first."""
        self._choose = choose
        self._output = output
        self._on_error = on_error
        self._find = find
        self._pieces = iter(())
        self._clips = Clips()
        self._exhausted = False  # the text, not what was found in it
        self._given_up = False
        self._begun = False  # whether there is sound of the text yet
        self._making = None  # the task, and what it makes
        self._made = None
        self._playing = None
        self._failure = None  # the last
        self._synthesis = synthesis
        self._changed = asyncio.Event()
        self._stream = None
        self._rate = None
        self.paused = False
        self.sounding = False
        self.on_place = lambda: None  # another sentence is heard
        self._told = None

    async def run(self):
        """Read to the end; the caller cancels it to stop."""
        self._pieces, self._find = self._find(in_time=self.longest_in_time), None
        try:
            if sentence := await self._find_first():
                self._rate = await self._first_rate(sentence)
                await self._synthesise_and_play()
        finally:
            self.silence()
            # Both may be long, and what went wrong may hold on to this.
            self._pieces, self._clips = iter(()), Clips()

    async def _find_first(self):
        """The first sentence; without one no sound server is needed."""
        for piece in self._pieces:
            if piece:
                self._clips.add(piece)
                return piece.sentence
            await asyncio.sleep(0)
        return None

    async def _first_rate(self, sentence):
        """Of the sound to come first; where nobody speaks it, of what comes soon after."""
        try:
            synthesis, _, _ = await self._choose(sentence)
        except UnspeakableError:
            synthesis, _, _ = await self._choose("")
        await synthesis.start()
        return synthesis.rate

    async def _synthesise_and_play(self):
        synthesise = asyncio.create_task(self._synthesise())
        self._playing = playing = asyncio.create_task(self._play())
        try:
            while not synthesise.done():
                await asyncio.wait([synthesise, playing], return_when=asyncio.FIRST_COMPLETED)
                if playing is not self._playing:
                    playing = self._playing  # of another place
                elif playing.done():
                    return playing.result()
            synthesise.result()
        finally:
            synthesise.cancel()
            self._playing.cancel()

    def silence(self):
        """Stop the sound now; `run` may end later."""
        if self._stream:
            self._stream.close()

    def pause(self, paused):
        self.paused = paused
        if self._stream:
            self._stream.pause(paused)

    def place(self):
        """The sentence that is heard; None before the first."""
        return self._clips.place(self._stream.unheard() if self._stream else 0)

    def _tell_place(self):
        place = self.place()
        if place != self._told:
            self._told = place
            self.on_place()

    def next(self, by):
        """Go on with the next sentence or paragraph; after the last the text is over."""
        self._move(lambda unheard: self._clips.next(by, unheard))

    def previous(self, by):
        """Go back to the sentence before, or to where this or, from there, the paragraph before begins."""
        self._move(lambda unheard: self._clips.previous(by, unheard))

    def repeat(self):
        """Begin this sentence again."""
        self._move(self._clips.repeat)

    def _move(self, step):
        step(self._stream.unheard() if self._stream else 0)
        self.silence()
        self._stream = None
        self.sounding = False
        if self._made and (self._made is not self._clips.incomplete() or self._made.choice is None):
            self._leave()  # another one is wanted sooner
        if self._playing:
            self._playing.cancel()
            self._playing = asyncio.create_task(self._play())
        self._changed.set()
        self._tell_place()

    def voice_changed(self):
        """Have the sentences that nobody has heard of made anew."""
        self._clips.choose_anew()
        if self._made and self._made.choice is None:
            self._leave()  # it may be what the user turns away from
        self._given_up = False
        self._changed.set()

    def _leave(self):
        """What is being made is not wanted, or not now."""
        self._made.forget()
        self._making.cancel()

    async def _open(self, rate):
        paused = self.paused
        self._stream = await self._output.open(rate, paused, self._started)
        self._rate = rate
        if self.paused != paused:  # changed while the player was started
            self._stream.pause(self.paused)

    def _started(self):
        self.sounding = True

    async def _synthesise(self):
        """Never ends by itself: what is done may have to be made anew."""
        failures = 0
        while True:
            await self._until(self._wants_more)
            if clip := self._clips.incomplete():
                failures = 0 if await self._make(clip) else failures + 1
            else:
                await self._find_more()
            if failures >= FAILURES_IN_A_ROW:
                if isinstance(self._failure, UnspeakableError):
                    raise self._failure
                raise SynthesisError(f"{self._synthesis.backend.label} cannot read this text.")

    async def _find_more(self):
        """Look on in the text; others run meanwhile where nothing was found to make."""
        piece = next(self._pieces, None)
        if piece is None:
            self._exhausted = True
            self._changed.set()
        elif not piece or not self._clips.add(piece):
            await asyncio.sleep(0)

    async def _make(self, clip):
        """Whether the sentence was made, or need not be made any more."""
        clip.choice = self._clips.choice
        sound = clip.sound
        self._made = clip
        self._making = asyncio.create_task(self._say(clip))
        try:
            await asyncio.wait([self._making])
            if not self._making.cancelled():
                self._making.result()
            return True
        except SynthesisError as failure:
            self._failure = failure
            self._on_error(str(failure))
            if isinstance(failure, BackendError) and clip.choice == self._clips.choice:
                self._give_up(clip)
            return False
        finally:
            self._making.cancel()
            self._made = None
            clip.complete = clip.sound is sound
            self._changed.set()

    async def _say(self, clip):
        synthesis, voice, speed = await self._choose(clip.piece.sentence)
        await synthesis.start()
        self._synthesis = synthesis
        clip.rate = synthesis.rate
        sentence, place, sound = clip.piece.sentence, clip.place, clip.sound
        first, *rest = (Piece(part, sentence, place) for part in cut(clip.piece, synthesis.backend.longest_piece))
        clip.piece = first
        self._clips.insert(clip, rest)

        def hear(samples):
            nonlocal sound  # the clip may get another one
            if not self._begun:
                samples = without_silence(samples)
                self._begun = bool(samples)
            sound += samples
            self._changed.set()

        begin = time.monotonic()
        await synthesis.say(clip.piece, voice, speed, hear)
        synthesis.pace.note(voice, speed, len(first), time.monotonic() - begin, len(sound) / (2 * synthesis.rate))

    def longest_in_time(self):
        """Code points of a next piece that is made while what is ready is heard; None where that is not known."""
        if not self._rate:
            return None
        unheard = self._stream.unheard() if self._stream else 0
        left = sum(clip.waiting for clip in self._clips.ahead) + unheard
        return self._synthesis.pace.longest(left / (2 * self._rate))

    def _give_up(self, clip):
        """Play what there is and end, unless the user chooses something else by then."""
        if not clip.sent:
            clip.forget()
        self._given_up = True

    def _wants_more(self):
        clips = self._clips.ahead
        made = list(takewhile(lambda clip: clip.complete, clips))
        if self._given_up or len(made) >= AHEAD_SENTENCES or self._exhausted and len(made) == len(clips):
            return False
        waiting = sum(clip.waiting for clip in made)
        one_ready = any(not clip.sent for clip in made)
        # Always a sentence, and so much sound that a slow one is made while it is heard.
        return not one_ready or waiting < self._synthesis.backend.ahead * 2 * self._rate

    async def _play(self):
        if self._is_over():
            return
        if not self._stream:
            clips = self._clips.ahead
            await self._open(clips and clips[0].rate or self._rate)
        while True:
            most = await self._stream.room()
            self._tell_place()
            clip = await self._next_clip()
            if clip is None:
                break
            if clip.rate != self._rate:  # of another back-end
                await self._play_out()
                await self._open(clip.rate)
                continue
            self._stream.play(clip.take(most))
        await self._play_out()

    async def _play_out(self):
        if not self._stream.sent:  # a paused one would wait for its end
            self.silence()
            return
        self._stream.end()
        await self._stream.heard()

    async def _next_clip(self):
        """Wait for sound that is to be played; None when there will be none."""
        clips = self._clips.ahead
        while True:
            await self._until(lambda: self._has_next() or self._is_over())
            if not self._has_next():
                return None
            if clips[0].waiting:
                return clips[0]
            self._clips.pass_first()
            self._changed.set()

    def _has_next(self):
        clips = self._clips.ahead
        return bool(clips) and (clips[0].waiting or clips[0].complete)

    def _is_over(self):
        return not self._has_next() and (self._given_up or self._exhausted and not self._clips.ahead)

    async def _until(self, condition):
        while not condition():
            self._changed.clear()
            await self._changed.wait()
