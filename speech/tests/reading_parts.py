"""What a reading is given: a synthesiser and a player that note what they are given."""

import asyncio

from tavin.pace import Pace
from tavin.process import frames
from tavin.sound.stream import Stream
from tavin.synthesis.backends import BACKENDS


class Player:
    """Takes all sound at once."""

    def __init__(self):
        self.opened = 0
        self.played = 0
        self.first = b""

    async def open(self, rate, paused, on_started):
        self.opened += 1
        self._stream = Stream(self, self.opened, paused, on_started, lambda stream: None)
        self._stream.frame(frames.NEED, b"10000")
        return self._stream

    def send(self, kind, number, payload=b""):
        if kind == frames.AUDIO:
            self.first = self.first or payload
            self.played += len(payload)
            asyncio.get_running_loop().call_soon(self._stream.frame, frames.NEED, str(len(payload)).encode())
        elif kind == frames.END:
            self._stream.frame(frames.ENDED, b"")


SOUND = b"\0\1" * 1000


class Synthesizer:
    """Makes a second of sound of whatever it is given."""

    backend = BACKENDS["espeak"]
    rate = 1000

    def __init__(self):
        self.heard = []
        self.pace = Pace()

    async def start(self):
        pass

    async def say(self, text, voice, speed, hear):
        self.heard.append(len(text))
        hear(SOUND)
