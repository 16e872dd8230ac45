"""One back-end's worker as the engine sees it: start it, have it speak, survive its death.

Runs on the event loop. Requests are answered in order; a cancelled one is
finished by the worker, which stays warm, and its sound is thrown away.
"""

import asyncio
import json

from tavin import frames
from tavin.child import Child
from tavin.log import log

START_SECONDS = 15.0


class SynthesisError(Exception):
    """Text for the user: why a sentence could not be turned into sound."""


class Synthesis:
    def __init__(self, backend):
        self.backend = backend
        self.rate = None
        self.voices = []  # dictionaries with id, name, language
        self.missing = None  # why the back-end cannot work, for the user
        self._child = None
        self._starting = asyncio.Lock()
        self._hello = None
        self._number = 0
        self._on_audio = None
        self._done = None
        self._heard_at = 0.0

    async def start(self):
        """Have a worker running; SynthesisError when that cannot be."""
        async with self._starting:
            try:
                if not (self._child and self._child.alive):
                    await self._launch()
                async with asyncio.timeout(START_SECONDS):
                    # Shielded: one caller that gives up must not end it for the next.
                    await asyncio.shield(self._hello)
            except (OSError, TimeoutError):
                self.kill()
                raise SynthesisError(f"{self.backend.label} could not be started.") from None

    async def _launch(self):
        self._hello = asyncio.get_running_loop().create_future()
        self._child = await Child.start(
            "tavin.worker",
            self.backend.name,
            on_frame=self._frame,
            on_death=self._death,
            quiet=True,  # libraries may print what they were given to say
        )

    async def say(self, text, voice, speed, on_audio):
        """Turn one piece of text into sound, handed to `on_audio` as it comes."""
        await self.start()
        self._number = (self._number + 1) % 2**32
        self._on_audio = on_audio
        loop = asyncio.get_running_loop()
        done = self._done = loop.create_future()
        request = {"text": text, "voice": voice, "speed": speed}
        self._child.send(frames.SAY, self._number, json.dumps(request).encode())
        self._heard_at = loop.time()
        try:
            await self._await_with_patience(done)
        finally:
            if self._done is done:
                self._on_audio = self._done = None

    def kill(self):
        if self._child:
            self._child.kill()

    async def _await_with_patience(self, done):
        loop = asyncio.get_running_loop()
        while not done.done():
            left = self._heard_at + self.backend.patience - loop.time()
            if left <= 0:
                self.kill()
                left = None  # its death ends the wait
            await asyncio.wait([done], timeout=left)
        done.result()

    def _frame(self, kind, number, payload):
        self._heard_at = asyncio.get_running_loop().time()
        if kind in (frames.VOICES, frames.MISSING):
            self._greet(kind, payload)
        elif number != self._number or self._done is None:
            return  # of a request that was given up
        elif kind == frames.AUDIO:
            self._on_audio(payload)
        elif kind == frames.DONE and not self._done.done():
            self._done.set_result(None)

    def _greet(self, kind, payload):
        if kind == frames.MISSING:
            self.missing = payload.decode(errors="replace")
            log.info("%s cannot work: %s", self.backend.name, self.missing)
            self._refuse(self._hello, self.missing)
            return
        hello = json.loads(payload)
        self.missing, self.rate, self.voices = None, hello["rate"], hello["voices"]
        if not self._hello.done():
            self._hello.set_result(None)

    def _death(self, how):
        log.info("the %s worker ended (%s)", self.backend.name, how)
        text = f"{self.backend.label} stopped unexpectedly ({how}) and was started again."
        self._refuse(self._hello, f"{self.backend.label} could not be started ({how}).")
        self._refuse(self._done, text)

    @staticmethod
    def _refuse(future, text):
        if future and not future.done():
            future.set_exception(SynthesisError(text))
            future.exception()  # looked at, so that an unawaited one is not logged
