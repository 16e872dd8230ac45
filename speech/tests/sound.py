"""A private sound server with one silent sink, and a recorder of what is played there."""

import array
import os
import subprocess
import threading
import time

from sound_server import WITH_US, start_sound_server, until  # noqa: F401: of use to all tests

RATE = 22050
LOUD = 200  # speech is far above, rounding far below


def start_server(folder):
    return start_sound_server(folder, "test", RATE)


class Recorder:
    """Records the sink from the moment of its making until `end`."""

    def __init__(self, server, sink="test", rate=RATE):
        self._rate = rate
        self._process = subprocess.Popen(
            [
                *("parec", "--raw", f"--device={sink}.monitor", "--latency-msec=10"),
                "--property=node.dont-reconnect=true",  # else PipeWire's follows the default sink
                *("--format=s16le", f"--rate={rate}", "--channels=1"),
            ],
            env=server.environment,
            stdout=subprocess.PIPE,
        )
        self.samples = array.array("h")
        self.last_loud = None  # when the latest loud sample arrived, at the latest
        self.first_loud = None
        threading.Thread(target=self._take, daemon=True).start()
        until(lambda: len(self.samples) > 0, 10, "the recording runs")

    def loud_for(self, seconds):
        """Wait until so much sound was heard from now on."""
        begin = len(self.samples)
        until(lambda: self._loud_count(begin) > seconds * self._rate / 4, seconds + 10, "sound")

    def quiet_for(self, seconds, within=20):
        """Wait until it has been quiet for so long."""
        begin = time.monotonic()
        until(
            lambda: time.monotonic() - max(self.last_loud or 0, begin) > seconds,
            within,
            "quiet",
        )

    def end(self):
        self._process.kill()
        self._process.wait()

    def _loud_count(self, begin):
        return sum(1 for sample in self.samples[begin:] if abs(sample) > LOUD)

    def _take(self):
        left = b""
        while data := os.read(self._process.stdout.fileno(), 65536):
            arrived = time.monotonic()
            data = left + data
            whole = len(data) & ~1
            left = data[whole:]
            fresh = array.array("h", data[:whole])
            if fresh and max(max(fresh), -min(fresh)) > LOUD:
                self.last_loud = arrived
                self.first_loud = self.first_loud or arrived
            self.samples.extend(fresh)
