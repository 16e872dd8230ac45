"""A worker process: turns sentences into sound for one back-end.

Run as `python3 -m tavin.worker BACK-END PARENT-PID`. Texts come by standard
input, so no process list ever shows them. A text that makes the synthesiser
abort takes down this process only.
"""

import importlib
import json
import sys

from tavin import frames, lifetime
from tavin.backends import Failure


def main():
    name, parent = sys.argv[1], int(sys.argv[2])
    lifetime.end_with_parent(parent)
    lifetime.ignore_terminal_signals()
    output = lifetime.claim_output()
    try:
        synthesizer = importlib.import_module(f"tavin.backends.{name}").Synthesizer()
    except Exception as failure:
        frames.write(output, frames.MISSING, 0, str(failure).encode())
        return
    hello = {"rate": synthesizer.rate, "voices": synthesizer.voices()}
    frames.write(output, frames.VOICES, 0, json.dumps(hello).encode())
    while frame := frames.read(sys.stdin.buffer):
        kind, number, payload = frame
        try:
            answer(synthesizer, kind, number, json.loads(payload), output)
        except Failure as failure:
            frames.write(output, frames.FAILED, number, str(failure).encode())


def answer(synthesizer, kind, number, request, output):
    if kind == frames.VOICES:
        frames.write(output, frames.VOICES, number, json.dumps(synthesizer.voices(**request)).encode())
        return
    synthesizer.say(**request, emit=lambda samples: frames.write(output, frames.AUDIO, number, samples))
    frames.write(output, frames.DONE, number)


if __name__ == "__main__":
    try:
        main()
    except BrokenPipeError:
        pass  # the engine is gone
