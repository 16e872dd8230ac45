"""What a text must sound like: made by the engine's own pieces."""

import array
import os
import subprocess
import sys

from engine_process import FOLDER

SCRIPT = """
import importlib, sys
from tavin.synthesis.backends import BACKENDS
from tavin.text.pieces import pieces
from tavin.text.spoken.say import say
name, voice, speed = sys.argv[1:]
backend = BACKENDS[name]
synthesizer = importlib.import_module(f"tavin.synthesis.backends.{name}.synthesizer").Synthesizer()
for piece in pieces(sys.stdin.read(), "en-us", backend.longest_piece, backend.first_piece, say=lambda part: say(part, "en-us")):
    if piece:
        synthesizer.say(piece, voice, float(speed), sys.stdout.buffer.write)
"""


def expected(
    text,
    voice="gmw/en-US",
    speed=1.0,
    backend="espeak",
    tree=FOLDER,
    environment=None,
    python=sys.executable,
):
    """The samples; a process of its own, because what was said before changes them a little."""
    command = [python, "-c", SCRIPT, backend, voice, str(speed)]
    environment = {**os.environ, **(environment or {})}
    done = subprocess.run(
        command, cwd=tree, env=environment, input=text.encode(), capture_output=True, check=True
    )
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


def difference_in_speech(heard, wanted):
    """The same without all silence: on a loaded machine the sound may stop and go on."""
    return first_difference(without_silence(heard), without_silence(wanted))


def common_length(one, other):
    pairs = zip(one, other)
    return next((index for index, (a, b) in enumerate(pairs) if a != b), min(len(one), len(other)))


def longest_gap(heard, wanted):
    """The longest silence, in samples, that is in one sound and not in the other, otherwise the same."""
    heard, wanted = trimmed(heard), trimmed(wanted)
    longest = at = 0
    for sample in wanted:
        begin = at
        while heard[at] != sample and heard[at] == 0:
            at += 1
        longest = max(longest, at - begin)
        assert heard[at] == sample, f"other sound at sample {at} of {len(heard)}"
        at += 1
    assert at == len(heard), "more was heard"
    return longest
