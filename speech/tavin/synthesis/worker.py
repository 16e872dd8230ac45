"""A worker process: turns sentences into sound for one back-end.

Run as `python3 -m tavin.synthesis.worker BACK-END PARENT-PID`. Texts come by standard
input, so no process list ever shows them. A text that makes the synthesiser
abort takes down this process only.
"""

import importlib
import json
import queue
import sys
import threading

from tavin.process import frames, lifetime, memory
from tavin.synthesis.backend import Failure


def main():
    name, parent = sys.argv[1], int(sys.argv[2])
    lifetime.end_with_parent(parent)
    lifetime.ignore_terminal_signals()
    output = lifetime.claim_output()
    memory.give_back()
    try:
        synthesizer = importlib.import_module(f"tavin.synthesis.backends.{name}.synthesizer").Synthesizer()
    except Exception as failure:
        frames.write(output, frames.MISSING, 0, str(failure).encode())
        return
    hello = {"rate": synthesizer.rate, "voices": synthesizer.voices()}
    frames.write(output, frames.VOICES, 0, json.dumps(hello).encode())
    inbox = Inbox(getattr(synthesizer, "abandon", lambda now: None))
    while frame := inbox.next():
        kind, number, payload = frame
        try:
            answer(synthesizer, kind, number, json.loads(payload), output)
        except Failure as failure:
            frames.write(output, frames.FAILED, number, str(failure).encode())


class Inbox:
    """Reads requests on a thread of its own, to hear at once that one is not wanted any more."""

    def __init__(self, abandon):
        self._abandon = abandon
        self._waiting = queue.SimpleQueue()
        self._lock = threading.Lock()
        self._current = None
        self._last = 0
        self._unwanted = set()
        threading.Thread(target=self._read, daemon=True).start()

    def next(self):
        """Wait for the next request; None at the end."""
        with self._lock:
            self._current = None
            self._abandon(False)
        while frame := self._waiting.get():
            with self._lock:
                self._last = frame[1]
                if self._last not in self._unwanted:
                    self._current = self._last
                    return frame
                self._unwanted.discard(self._last)
        return None

    def _read(self):
        while frame := frames.read(sys.stdin.buffer):
            if frame[0] == frames.ABANDON:
                self._forget(frame[1])
            else:
                self._waiting.put(frame)
        self._waiting.put(None)

    def _forget(self, number):
        with self._lock:
            if number > self._last:
                self._unwanted.add(number)
            elif number == self._current:
                self._abandon(True)


def answer(synthesizer, kind, number, request, output):
    if kind == frames.VOICES:
        frames.write(output, frames.VOICES, number, json.dumps(synthesizer.fetch_voices(**request)).encode())
        return
    synthesizer.say(**request, emit=lambda samples: frames.write(output, frames.AUDIO, number, samples))
    frames.write(output, frames.DONE, number)


if __name__ == "__main__":
    try:
        main()
    except BrokenPipeError:
        pass  # the engine is gone
