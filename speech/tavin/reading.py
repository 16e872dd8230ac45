"""One text being read aloud: sentences are synthesised ahead while earlier ones play.

Runs on the event loop. Little is handed to the player in advance, so that a
pause or a stop acts at once and a change of voice or speed acts from the next
sentence on: what was synthesised ahead is then made anew.
"""

import asyncio
from collections import deque

from tavin.synthesis import SynthesisError
from tavin.text import pieces

AHEAD_SECONDS = 5.0  # sound kept ready, and always at least one sentence
AHEAD_SENTENCES = 32  # the bound for sentences that make no sound
FAILURES_IN_A_ROW = 5  # then the text is given up


class Clip:
    """A sentence and its sound."""

    def __init__(self, text):
        self.text = text
        self.sound = bytearray()
        self.complete = False
        self.started = False


class Reading:
    def __init__(self, text, voice_now, language, synthesis, output, on_error):
        """`voice_now()` gives the voice and speed for the next sentence."""
        self._voice_now = voice_now
        self._synthesis = synthesis
        self._output = output
        self._on_error = on_error
        self._pieces = pieces(text, language, synthesis.backend.longest_piece)
        self._again = deque()  # texts to be synthesised anew, before `_pieces`
        self._clips = deque()  # in the order of playing
        self._exhausted = False
        self._changed = asyncio.Event()
        self._stream = None
        self.paused = False
        self.sounding = False

    async def run(self):
        """Read to the end; the caller cancels it to stop."""
        await self._synthesis.start()
        paused = self.paused
        self._stream = await self._output.open(self._synthesis.rate, paused, self._started)
        if self.paused != paused:  # changed while the player was started
            self._stream.pause(self.paused)
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
            self.silence()

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
        while self._clips and not self._clips[-1].started:
            self._again.appendleft(self._clips.pop().text)
        self._exhausted = False
        self._changed.set()

    def _started(self):
        self.sounding = True

    async def _synthesise(self):
        """Never ends by itself: what is done may have to be made anew."""
        failures = 0
        while True:
            await self._until(self._wants_more)
            text = self._next_text()
            if text is None:
                self._exhausted = True
                self._changed.set()
            elif not text:
                await asyncio.sleep(0)
            else:
                failures = 0 if await self._make(Clip(text)) else failures + 1
            if failures >= FAILURES_IN_A_ROW:
                raise SynthesisError(f"{self._synthesis.backend.label} cannot read this text.")

    async def _make(self, clip):
        self._clips.append(clip)

        def hear(samples):
            clip.sound += samples
            self._changed.set()

        try:
            await self._synthesis.say(clip.text, *self._voice_now(), hear)
            return True
        except SynthesisError as failure:
            self._on_error(str(failure))
            return False
        finally:
            clip.complete = True
            self._changed.set()

    def _next_text(self):
        return self._again.popleft() if self._again else next(self._pieces, None)

    def _wants_more(self):
        if self._exhausted or len(self._clips) >= AHEAD_SENTENCES:
            return False
        waiting = sum(len(clip.sound) for clip in self._clips)
        one_ready = any(not clip.started for clip in self._clips)
        return not one_ready or waiting < AHEAD_SECONDS * self._bytes_per_second()

    def _bytes_per_second(self):
        return 2 * self._synthesis.rate

    async def _play(self):
        while True:
            samples = await self._next_samples(await self._stream.room())
            if samples is None:
                break
            self._stream.play(samples)
        self._stream.end()
        await self._stream.heard()

    async def _next_samples(self, most):
        while True:
            await self._until(self._has_next)
            if not self._clips:
                return None
            clip = self._clips[0]
            if clip.sound:
                clip.started = True
                samples = bytes(clip.sound[:most])
                del clip.sound[:most]
                return samples
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
