"""Sound that is sped up: shorter, of the same pitch, without clicks."""

import sys

import neural_models
import pytest

sys.path.insert(0, neural_models.packages("kokoro"))

import numpy  # noqa: E402
from tavin.synthesis.backends.kokoro.tempo import faster  # noqa: E402

RATE = 24000


def tone(frequency, seconds):
    return numpy.sin(2 * numpy.pi * frequency * numpy.arange(int(seconds * RATE)) / RATE).astype(numpy.float32)


def loudest_frequency(samples):
    return numpy.argmax(abs(numpy.fft.rfft(samples))) * RATE / len(samples)


@pytest.mark.parametrize("factor", [1.05, 1.25, 1.5])
@pytest.mark.parametrize("frequency", [110, 440, 3000])
def test_a_tone_stays_what_it_is(frequency, factor):
    made = faster(tone(frequency, 2), factor, RATE)
    assert len(made) == pytest.approx(2 * RATE / factor, rel=0.03)
    assert loudest_frequency(made) == pytest.approx(frequency, abs=2)
    steepest = 2 * numpy.pi * frequency / RATE
    assert abs(numpy.diff(made)).max() < 1.3 * steepest + 0.01
    middle = made[RATE // 10 : -RATE // 10]
    assert abs(middle).max() == pytest.approx(1, abs=0.1)


@pytest.mark.parametrize("length", [0, 1, 100, 1919, 3840, 5000])
def test_short_sounds(length):
    made = faster(tone(440, 1)[:length], 1.5, RATE)
    assert len(made) <= length
    assert numpy.isfinite(made).all()


def test_nothing_to_do():
    samples = tone(440, 1)
    assert faster(samples, 1, RATE) is samples
