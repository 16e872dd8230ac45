"""The messages between the engine and its helper processes.

A frame is a kind (one byte), a number (which request or stream it belongs to),
a length and that many bytes. Both ends are ours, so a malformed frame is a bug.
"""

import os
import struct

HEADER = struct.Struct(">cII")

# To a worker, and its answers.
ABANDON = b"x"  # the request with this number is not wanted any more
SAY = b"s"  # JSON: text, voice, speed; key, where the back-end takes one
VOICES = b"v"  # JSON: rate, voices; the worker's first frame. Asked for again: JSON: key
MISSING = b"m"  # text: why the worker cannot work; in place of VOICES
AUDIO = b"a"  # 16-bit mono samples, native byte order; to the player as well
DONE = b"d"  # the request is finished
PROGRESS = b"P"  # decimal fraction, from the set-up's process

# To the player, and its answers.
OPEN = b"o"  # JSON: rate, paused
END = b"e"  # no more audio for this stream
PAUSE = b"p"
RESUME = b"r"
CLOSE = b"c"
READY = b"R"  # the player's first frame, unless it is MISSING
NEED = b"n"  # decimal number: bytes of audio that can be taken
STARTED = b"S"  # sound goes out
SUSPENDED = b"u"  # 1 or 0: whether the device takes no sound for now
ENDED = b"E"  # all audio was heard
FAILED = b"f"  # text for the user: why the stream, or a worker's request, ended early
CLOSED = b"C"  # answer to CLOSE: silence


def pack(kind, number=0, payload=b""):
    return HEADER.pack(kind, number, len(payload)) + payload


def write(fd, kind, number=0, payload=b""):
    """Write one frame to a blocking file descriptor."""
    data = memoryview(pack(kind, number, payload))
    while data:
        data = data[os.write(fd, data) :]


def read(stream):
    """Read one frame from a blocking stream; None at its end."""
    header = stream.read(HEADER.size)
    if len(header) < HEADER.size:
        return None
    kind, number, length = HEADER.unpack(header)
    return kind, number, stream.read(length)


async def receive(reader):
    """Read one frame from an asyncio stream; IncompleteReadError at its end."""
    kind, number, length = HEADER.unpack(await reader.readexactly(HEADER.size))
    return kind, number, await reader.readexactly(length)


class Parser:
    """Cuts bytes that come in any portions into frames."""

    def __init__(self):
        self._buffer = bytearray()

    def feed(self, data):
        self._buffer += data
        while len(self._buffer) >= HEADER.size:
            kind, number, length = HEADER.unpack_from(self._buffer)
            end = HEADER.size + length
            if len(self._buffer) < end:
                return
            payload = bytes(self._buffer[HEADER.size : end])
            del self._buffer[:end]
            yield kind, number, payload
