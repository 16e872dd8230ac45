"""A worker process: turns sentences into sound for one back-end.

Run as `python3 -m tavin.worker BACK-END PARENT-PID`. Texts come by standard
input, so no process list ever shows them. A text that makes the synthesiser
abort takes down this process only.
"""

import importlib
import json
import sys

from tavin import frames, lifetime


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
        _, number, payload = frame
        request = json.loads(payload)
        synthesizer.say(
            request["text"],
            request["voice"],
            request["speed"],
            lambda samples, number=number: frames.write(output, frames.AUDIO, number, samples),
        )
        frames.write(output, frames.DONE, number)


if __name__ == "__main__":
    try:
        main()
    except BrokenPipeError:
        pass  # the engine is gone
