"""Piper on onnxruntime. Loaded in a worker process only, which runs in the libraries' environment.

One voice is loaded at a time; its files were verified before it is asked for.
"""

import os
import re

os.environ.setdefault("OPENBLAS_NUM_THREADS", "1")  # numpy's threads would only wait

try:
    import numpy
    from piper.config import PiperConfig, SynthesisConfig
    from piper.voice import PiperVoice

    from tavin.synthesis.backends.onnx import Session, run_options
except ImportError as failure:
    raise RuntimeError(f"Piper's libraries cannot be loaded ({failure}). Choose Piper again.") from None

import json  # noqa: E402

from tavin.synthesis.backend import Failure  # noqa: E402
from tavin.synthesis.backends.piper import needs  # noqa: E402
from tavin.text.pieces import GOES_ON  # noqa: E402

RATE = 22050  # of nearly all voices; the others' sound is brought to it
BRACKETS = re.compile(r"\[\[|\]\]")  # between them the library would take phonemes
QUIET = 0.01  # of the loudest sample: below there is nothing to hear
PAUSE_AT_MARK, PAUSE_WITHIN = 0.25, 0.03  # seconds; in place of the silence that the model leaves


class Synthesizer:
    rate = RATE

    def __init__(self):
        self._name = None
        self._voice = None
        self._options = run_options()

    def voices(self):
        return needs.voices()

    def abandon(self, now):
        """On another thread: have `say` return."""
        self._options.terminate = now

    def say(self, text, voice, speed, emit):
        self._load(voice)
        scale = self._voice.config.length_scale / speed
        within_clause = text.endswith(GOES_ON) and text.rstrip()[-1:].isalnum()
        pause = (PAUSE_WITHIN if within_clause else PAUSE_AT_MARK) / speed
        try:
            for chunk in self._voice.synthesize(BRACKETS.sub(" ", text), SynthesisConfig(length_scale=scale)):
                emit(sound(chunk.audio_float_array, chunk.sample_rate, pause))
        except Exception:
            if not self._options.terminate:
                raise

    def _load(self, name):
        if name == self._name:
            return
        self._name = self._voice = None
        files = needs.files(name)
        try:
            config = json.loads(files[1].path.read_text("utf-8"))
            session = Session(files[0].path, self._options)
            self._voice = PiperVoice(session=session, config=PiperConfig.from_dict(config))
        except Exception as failure:
            raise Failure(f"Choose this voice of Piper again: it cannot be loaded ({failure}).") from None
        self._name = name


def sound(samples, rate, pause):
    """16-bit samples at RATE, without the silence around them and with a pause behind."""
    loud = numpy.flatnonzero(numpy.abs(samples) > QUIET)
    samples = samples[loud[0] : loud[-1] + 1] if len(loud) else samples[:0]
    if rate != RATE and len(samples):
        places = numpy.arange(0, len(samples), rate / RATE)
        samples = numpy.interp(places, numpy.arange(len(samples)), samples)
    silence = numpy.zeros(round(pause * RATE), numpy.int16)
    return numpy.concatenate([(samples * 32767).astype(numpy.int16), silence]).tobytes()
