"""One text's sound on its way to the player: what may be sent, and what became of it."""

import asyncio

from tavin.process import frames

CONNECT_SECONDS = 2.0  # for the sound server to want sound at all
ANSWER_SECONDS = 2.5  # to take the next piece of it


class OutputError(Exception):
    """Text for the user: why nothing can be heard."""


class Stream:
    """Made by Output. Open until it ended, failed or was closed."""

    def __init__(self, child, number, paused, on_started, close):
        self.number = number
        self._child = child
        self._paused = paused
        self._on_started = on_started
        self._close = close
        self.open = True
        self._suspended = False
        self.sent = 0  # bytes
        self._room = 0
        self._holds = 0  # what the player can have that was not heard yet
        self._patience = CONNECT_SECONDS
        self._failure = None
        self._changed = asyncio.Event()

    async def room(self):
        """Wait until the player wants sound: how many bytes. OutputError when it never will."""
        await self._until(lambda: self._room > 0)
        return self._room

    async def heard(self):
        """After `end`: wait until all of the sound was heard."""
        await self._until(lambda: not self.open)

    def play(self, samples):
        self._room -= len(samples)
        self.sent += len(samples)
        self._child.send(frames.AUDIO, self.number, samples)

    def unheard(self):
        """How many bytes of what was sent are still to be heard, the device's own delay aside."""
        return max(0, self._holds - self._room)

    def end(self):
        self._child.send(frames.END, self.number)

    def pause(self, paused):
        self._paused = paused
        self._child.send(frames.PAUSE if paused else frames.RESUME, self.number)
        self._changed.set()  # a pause lasts as long as the user likes

    def close(self):
        """Silence at once."""
        if self.open:
            self._over()
            self._close(self)

    def frame(self, kind, payload):
        if kind == frames.NEED:
            self._room += int(payload)
            self._holds = self._holds or self._room
            self._patience = ANSWER_SECONDS
        elif kind == frames.STARTED and self.open:
            self._on_started()
        elif kind == frames.SUSPENDED:
            self._suspended = payload == b"1"
        elif kind == frames.ENDED:
            self._over()
        elif kind == frames.FAILED:
            self.fail(payload.decode(errors="replace"))
        self._changed.set()

    def fail(self, text):
        if self.open:
            self._over()
            self._failure = text
            self._changed.set()

    def _over(self):
        self.open = False
        self._on_started = None  # it holds on to the reader, and so to the text

    async def _until(self, condition):
        while True:
            if self._failure:
                raise OutputError(self._failure)
            if condition():
                return
            self._changed.clear()
            try:
                patient = self._paused or self._suspended
                async with asyncio.timeout(None if patient else self._patience):
                    await self._changed.wait()
            except TimeoutError:
                self.close()
                raise OutputError("The sound server does not answer.") from None
