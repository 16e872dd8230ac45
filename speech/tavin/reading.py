"""One text being read aloud: sentences are synthesised ahead while earlier ones play.

Runs on the event loop. Little is handed to the player in advance, so that a
pause or a stop acts at once and a change of back-end, voice or speed acts from
the next sentence on: what was synthesised ahead is then made anew.
"""

import asyncio
from collections import deque

from tavin.synthesis.choice import UnspeakableError
from tavin.synthesis.synthesis import BackendError, SynthesisError
from tavin.text.pieces import Piece, cut

AHEAD_SENTENCES = 32  # the bound for sentences that make no sound
FAILURES_IN_A_ROW = 5  # then the text is given up


class Clip:
    """A piece of the text and its sound."""

    def __init__(self, piece):
        self.piece = piece
        self.sound = bytearray()
        self.rate = None
        self.complete = False
        self.started = False


def without_silence(samples):
    """Without the zeros that a synthesiser begins with (eSpeak NG: 12 ms), which a user waits for."""
    silence = len(samples) - len(samples.lstrip(b"\0"))
    return samples[silence // 2 * 2 :]


class Reading:
    def __init__(self, found, choose, backend, output, on_error):
        """`found`: the text's pieces. `choose(sentence)` waits for the synthesis, the voice and the
        speed to speak it with."""
        self._choose = choose
        self._output = output
        self._on_error = on_error
        self._pieces = found
        self._again = deque()  # pieces to be synthesised anew, before `_pieces`
        self._clips = deque()  # in the order of playing
        self._exhausted = False
        self._begun = False  # whether there is sound of the text yet
        self._choices = 0  # how often the user chose something else
        self._making = None
        self._failure = None  # the last
        self._backend = backend
        self._changed = asyncio.Event()
        self._stream = None
        self._rate = None
        self.paused = False
        self.sounding = False

    async def run(self):
        """Read to the end; the caller cancels it to stop."""
        try:
            if await self._find_first():
                await self._open(await self._first_rate())
                await self._synthesise_and_play()
        finally:
            self.silence()
            self._pieces = iter(())  # the text may be long, and what went wrong may hold on to this

    async def _find_first(self):
        """Whether there is anything to say; if not, no sound server is needed."""
        for piece in self._pieces:
            if piece:
                self._again.append(piece)
                return True
            await asyncio.sleep(0)
        return False

    async def _first_rate(self):
        """Of the sound to come first; where nobody speaks it, of what comes soon after."""
        try:
            synthesis, _, _ = await self._choose(self._again[0].sentence)
        except UnspeakableError:
            synthesis, _, _ = await self._choose("")
        await synthesis.start()
        return synthesis.rate

    async def _synthesise_and_play(self):
        synthesise = asyncio.create_task(self._synthesise())
        play = asyncio.create_task(self._play())
        try:
            await asyncio.wait([synthesise, play], return_when=asyncio.FIRST_COMPLETED)
            for task in (synthesise, play):
                if task.done():
                    task.result()
        finally:
            synthesise.cancel()
            play.cancel()

    def silence(self):
        """Stop the sound now; `run` may end later."""
        if self._stream:
            self._stream.close()

    def pause(self, paused):
        self.paused = paused
        if self._stream:
            self._stream.pause(paused)

    def voice_changed(self):
        """Have the sentences that nobody has heard of made anew."""
        self._choices += 1
        while self._clips and not self._clips[-1].started:
            if not self._clips[-1].complete:
                self._making.cancel()  # it may be what the user turns away from
            self._again.appendleft(self._clips.pop().piece)
        self._exhausted = False
        self._changed.set()

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
            piece = self._next_piece()
            if piece is None:
                self._exhausted = True
                self._changed.set()
            elif not piece:
                await asyncio.sleep(0)
            else:
                failures = 0 if await self._make(Clip(piece)) else failures + 1
            if failures >= FAILURES_IN_A_ROW:
                if isinstance(self._failure, UnspeakableError):
                    raise self._failure
                raise SynthesisError(f"{self._backend.label} cannot read this text.")

    async def _make(self, clip):
        """Whether the sentence was made, or need not be made any more."""
        self._clips.append(clip)
        choices = self._choices
        self._making = asyncio.create_task(self._say(clip))
        try:
            await asyncio.wait([self._making])
            if not self._making.cancelled():
                self._making.result()
            return True
        except SynthesisError as failure:
            self._failure = failure
            self._on_error(str(failure))
            if isinstance(failure, BackendError) and choices == self._choices:
                self._give_up(clip)
            return False
        finally:
            self._making.cancel()
            clip.complete = True
            self._changed.set()

    async def _say(self, clip):
        synthesis, voice, speed = await self._choose(clip.piece.sentence)
        await synthesis.start()
        self._backend = synthesis.backend
        clip.rate = synthesis.rate
        first, *rest = (Piece(part, clip.piece.sentence) for part in cut(clip.piece, synthesis.backend.longest_piece))
        clip.piece = first
        self._again.extendleft(reversed(rest))

        def hear(samples):
            if not self._begun:
                samples = without_silence(samples)
                self._begun = bool(samples)
            clip.sound += samples
            self._changed.set()

        await synthesis.say(clip.piece, voice, speed, hear)

    def _give_up(self, clip):
        """Play what there is and end, unless the user chooses something else by then."""
        if not clip.started:
            self._clips.remove(clip)
            self._again.appendleft(clip.piece)
        self._exhausted = True

    def _next_piece(self):
        return self._again.popleft() if self._again else next(self._pieces, None)

    def _wants_more(self):
        if self._exhausted or len(self._clips) >= AHEAD_SENTENCES:
            return False
        waiting = sum(len(clip.sound) for clip in self._clips)
        one_ready = any(not clip.started for clip in self._clips)
        # Always a sentence, and so much sound that a slow one is made while it is heard.
        return not one_ready or waiting < self._backend.ahead * 2 * self._rate

    async def _play(self):
        while True:
            most = await self._stream.room()
            clip = await self._next_clip()
            if clip is None:
                break
            if clip.rate != self._rate:  # of another back-end
                await self._play_out()
                await self._open(clip.rate)
                continue
            clip.started = True
            self._stream.play(bytes(clip.sound[:most]))
            del clip.sound[:most]
        await self._play_out()

    async def _play_out(self):
        self._stream.end()
        await self._stream.heard()

    async def _next_clip(self):
        """Wait for sound that is to be played; None when there will be none."""
        while True:
            await self._until(self._has_next)
            if not self._clips:
                return None
            if self._clips[0].sound:
                return self._clips[0]
            self._clips.popleft()
            self._changed.set()

    def _has_next(self):
        if not self._clips:
            return self._exhausted
        return bool(self._clips[0].sound) or self._clips[0].complete

    async def _until(self, condition):
        while not condition():
            self._changed.clear()
            await self._changed.wait()
