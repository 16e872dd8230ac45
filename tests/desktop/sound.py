"""What is heard in a session, and whether it is speech."""

import array
import math
import statistics
import wave

from session import wait_until

FRAME_SECONDS = 0.02
AUDIBLE = 200  # RMS of 16-bit samples; a null sink's silence is exactly 0


def levels(path):
    """The loudness of each 20 ms of a 16-bit recording."""
    with wave.open(path, "rb") as recording:
        if recording.getsampwidth() != 2:
            raise ValueError("not a 16-bit recording")
        count = int(recording.getframerate() * FRAME_SECONDS)
        result = []
        while data := recording.readframes(count):
            samples = array.array("h", data)
            result.append(math.sqrt(sum(s * s for s in samples) / len(samples)))
        return result


def speech_seconds(path):
    """How long the recording sounds like speech: audible, and rising and falling as syllables do.
    A steady tone or noise counts as nothing."""
    audible = [level for level in levels(path) if level > AUDIBLE]
    if len(audible) < 2 or statistics.pstdev(audible) < 0.25 * statistics.fmean(audible):
        return 0.0
    return len(audible) * FRAME_SECONDS


def start_recorder(desktop, path):
    """A program that records what a session's sound server plays; to be stopped."""
    recorder = desktop.start(["parec", "-d", "tavin.monitor", "--file-format=wav", "--channels=1",
                              "--rate=22050", "--format=s16le", "--latency-msec=50", path])
    wait_until(lambda: "parec" in desktop.session.run(["pactl", "list", "source-outputs"]), 10,
               "recorder")
    return recorder
