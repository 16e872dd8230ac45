"""The check that a recording holds speech."""

import array
import math
import random
import subprocess
import wave

import pytest
from sound import speech_seconds

RATE = 22050


def write(path, samples):
    with wave.open(str(path), "wb") as f:
        f.setnchannels(1)
        f.setsampwidth(2)
        f.setframerate(RATE)
        f.writeframes(array.array("h", samples).tobytes())
    return str(path)


def test_silence_is_no_speech(tmp_path):
    assert speech_seconds(write(tmp_path / "silence.wav", [0] * RATE * 2)) == 0


def test_a_steady_tone_is_no_speech(tmp_path):
    tone = [int(9000 * math.sin(n * 0.1)) for n in range(RATE * 2)]
    assert speech_seconds(write(tmp_path / "tone.wav", tone)) == 0


def test_noise_is_no_speech(tmp_path):
    noise = random.Random(1)
    samples = [noise.randint(-9000, 9000) for _ in range(RATE * 2)]
    assert speech_seconds(write(tmp_path / "noise.wav", samples)) == 0


def test_an_empty_recording_is_no_speech(tmp_path):
    assert speech_seconds(write(tmp_path / "empty.wav", [])) == 0


def test_a_spoken_sentence_is_speech(tmp_path):
    path = str(tmp_path / "speech.wav")
    subprocess.run(["espeak-ng", "-w", path, "Tavin reads aloud the text that is selected."],
                   check=True, timeout=30)
    assert 1.5 < speech_seconds(path) < 6


@pytest.mark.parametrize("data", [b"", b"RIFF", b"no recording"])
def test_a_broken_recording_is_an_error(tmp_path, data):
    (tmp_path / "broken.wav").write_bytes(data)
    with pytest.raises((wave.Error, EOFError)):
        speech_seconds(str(tmp_path / "broken.wav"))
