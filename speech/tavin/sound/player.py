"""The player process: plays streams of samples on the desktop's default output.

Run as `python3 -m tavin.sound.player PARENT-PID`. The sound server's library is
loaded at the start, but a connection exists only between OPEN and the stream's
end. One thread, asleep in the library's main loop; nothing here blocks.
"""

import ctypes
import json
import os
import sys

from tavin.process import frames, lifetime
from tavin.sound import pulse
from tavin.sound.playback import Playback


class Player:
    """Carries out the engine's frames; at most one stream at a time."""

    def __init__(self, library, api, output):
        self._library = library
        self._api = api
        self._output = output
        self._parser = frames.Parser()
        self._playback = None
        self._number = 0

    def input_ready(self, *_):
        data = os.read(0, 65536)
        if not data:
            os._exit(0)  # the engine is gone, and the sound with this process
        for kind, number, payload in self._parser.feed(data):
            self._carry_out(kind, number, payload)

    def report(self, kind, number=0, payload=b""):
        frames.write(self._output, kind, number, payload)

    def _carry_out(self, kind, number, payload):
        if kind == frames.OPEN:
            self._open(number, **json.loads(payload))
        elif self._playback and number == self._number:
            self._steer(kind, payload)
        if kind == frames.CLOSE:
            self.report(frames.CLOSED, number)

    def _open(self, number, rate, paused):
        if self._playback:
            self._playback.close()
        self._number = number
        self._playback = Playback(
            self._library,
            self._api,
            rate,
            paused,
            lambda kind, payload=b"": self.report(kind, number, payload),
        )

    def _steer(self, kind, payload):
        if kind == frames.AUDIO:
            self._playback.play(payload)
        elif kind == frames.END:
            self._playback.end()
        elif kind in (frames.PAUSE, frames.RESUME):
            self._playback.pause(kind == frames.PAUSE)
        elif kind == frames.CLOSE:
            self._playback.close()
            self._playback = None


def main():
    lifetime.end_with_parent(int(sys.argv[1]))
    lifetime.ignore_terminal_signals()
    output = lifetime.claim_output()
    try:
        library = pulse.load()
    except RuntimeError as failure:
        frames.write(output, frames.MISSING, 0, str(failure).encode())
        return
    loop = library.pa_mainloop_new()
    api = library.pa_mainloop_get_api(loop)
    player = Player(library, api, output)
    callback = pulse.IoCallback(player.input_ready)
    api.contents.io_new(ctypes.cast(api, ctypes.c_void_p), 0, pulse.IO_INPUT | pulse.IO_HANGUP, callback, None)
    player.report(frames.READY)
    library.pa_mainloop_run(loop, None)


if __name__ == "__main__":
    main()
