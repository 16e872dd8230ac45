"""What a text must sound like: made by the engine's own pieces."""

import array

import subprocess
import sys

from engine_process import FOLDER

SCRIPT = """
import sys
from tavin.backends.espeak import Synthesizer
from tavin.text import pieces
synthesizer = Synthesizer()
for piece in pieces(sys.stdin.read(), "en-us", 600):
    if piece:
        synthesizer.say(piece, sys.argv[1], float(sys.argv[2]), sys.stdout.buffer.write)
"""


def expected(text, voice="gmw/en-US", speed=1.0):
    """The samples; a process of its own, because what was said before changes them a little."""
    command = [sys.executable, "-c", SCRIPT, voice, str(speed)]
    done = subprocess.run(command, cwd=FOLDER, input=text.encode(), capture_output=True, check=True)
    return array.array("h", done.stdout)


def without_silence(samples):
    return array.array("h", (sample for sample in samples if sample))


def trimmed(samples):
    loud = [index for index, sample in enumerate(samples) if sample]
    return samples[loud[0] : loud[-1] + 1] if loud else samples[:0]


def first_difference(heard, wanted):
    """Where two sounds differ, silence around them aside; None when they are equal."""
    heard, wanted = trimmed(heard), trimmed(wanted)
    assert wanted, "nothing to compare with"
    if heard == wanted:
        return None
    same_begin = common_length(heard, wanted)
    same_end = common_length(heard[::-1], wanted[::-1])
    return (
        f"{len(heard)} samples instead of {len(wanted)}; "
        f"equal: the first {same_begin} and the last {same_end}"
    )


def common_length(one, other):
    pairs = zip(one, other)
    return next((index for index, (a, b) in enumerate(pairs) if a != b), min(len(one), len(other)))
