"""The player process as the engine sees it: one stream of sound at a time.

Runs on the event loop. A sound server that does not answer cannot hold the
engine up: every wait here has a deadline, and a player that misses it is ended,
which silences it for certain.
"""

import asyncio
import json

from tavin.log import log
from tavin.process import frames
from tavin.process.child import Child
from tavin.sound.stream import OutputError, Stream

START_SECONDS = 15.0
SILENCE_SECONDS = 0.5


class Output:
    def __init__(self):
        self._child = None
        self._ready = None
        self._starting = asyncio.Lock()
        self._stream = None
        self._number = 0
        self._closing = {}  # stream number -> timer that ends a player which stays loud
        self._silent = asyncio.Event()
        self._silent.set()

    async def start(self):
        """Have a player running; OutputError when that cannot be."""
        async with self._starting:
            try:
                if not (self._child and self._child.alive):
                    await self._launch()
                async with asyncio.timeout(START_SECONDS):
                    await asyncio.shield(self._ready)
            except (OSError, TimeoutError):
                self.kill()
                raise OutputError("The sound output could not be started.") from None

    async def open(self, rate, paused, on_started):
        """Open a stream, once the one before is silent."""
        await self._silent.wait()
        await self.start()
        self._number = (self._number + 1) % 2**32
        self._stream = Stream(self._child, self._number, paused, on_started, self._close)
        request = json.dumps({"rate": rate, "paused": paused})
        self._child.send(frames.OPEN, self._number, request.encode())
        return self._stream

    def kill(self):
        if self._child:
            self._child.kill()

    async def _launch(self):
        self._ready = asyncio.get_running_loop().create_future()
        self._child = await Child.start("tavin.sound.player", on_frame=self._frame, on_death=self._death)

    def _close(self, stream):
        self._stream = None
        self._child.send(frames.CLOSE, stream.number)
        timer = asyncio.get_running_loop().call_later(SILENCE_SECONDS, self.kill)
        self._closing[stream.number] = timer
        self._silent.clear()

    def _closed(self, number):
        timer = self._closing.pop(number, None)
        if timer:
            timer.cancel()
        if not self._closing:
            self._silent.set()

    def _frame(self, kind, number, payload):
        if kind == frames.READY:
            if not self._ready.done():
                self._ready.set_result(None)
        elif kind == frames.MISSING:
            self._refuse(payload.decode(errors="replace"))
        elif kind == frames.CLOSED:
            self._closed(number)
        elif self._stream and self._stream.number == number:
            self._stream.frame(kind, payload)
            if not self._stream.open:
                self._stream = None

    def _death(self, how):
        log.info("the player ended (%s)", how)
        self._refuse(f"The sound output could not be started ({how}).")
        for number in list(self._closing):
            self._closed(number)
        if self._stream:
            self._stream.fail(f"The sound output stopped unexpectedly ({how}).")
            self._stream = None

    def _refuse(self, text):
        if not self._ready.done():
            self._ready.set_exception(OutputError(text))
            self._ready.exception()  # looked at, so that an unawaited one is not logged
