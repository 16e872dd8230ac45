"""Kokoro, the local neural voice, on onnxruntime. Loaded in a worker process only.

The worker runs in the libraries' own virtual environment; the model's files were
verified before it is started.
"""

import os

os.environ.setdefault("OPENBLAS_NUM_THREADS", "1")  # numpy's threads would only wait

try:
    import espeakng_loader
    import kokoro_onnx
    import numpy

    from tavin.synthesis.backends.onnx import Session, run_options
except ImportError as failure:
    raise RuntimeError(f"Kokoro's libraries cannot be loaded ({failure}). Choose Kokoro again.") from None

from tavin.synthesis.backends.kokoro import needs  # noqa: E402
from tavin.synthesis.backends.kokoro.phonemes import Phonemizer  # noqa: E402
from tavin.synthesis.backends.kokoro.tempo import faster  # noqa: E402
from tavin.synthesis.backends.kokoro.voicefile import language_of, voices_in  # noqa: E402
from tavin.text.pieces import GOES_ON, cut  # noqa: E402

MOST_PHONEMES = 95  # at once, at normal speed: memory grows by 20 MB with each second of sound
FASTEST = 2.0  # what the model can be asked for
STRETCH = 1.5  # the sound is sped up by so much, before the model is asked to hurry: it swallows syllables then
# The silence that the model leaves at a piece's end is cut off: one more even takes its place.
PAUSES = {".": 0.3, "!": 0.3, "?": 0.3, "…": 0.3, ",": 0.12, ";": 0.2, ":": 0.2, "—": 0.12}
TRIAL = "Hello."  # spoken to nobody: shows that the files fit, and makes the first text faster
PAUSE_AT_END = 0.2  # a heading or the like
PAUSE_WITHIN = 0.02  # between words that were too many to be said at once


class Synthesizer:
    rate = 24000

    def __init__(self):
        model_file, voice_file = needs.files()
        self._voice_file = voice_file.path
        self._options = run_options()
        self._phonemizer = Phonemizer(espeakng_loader.get_library_path(), espeakng_loader.get_data_path())
        try:
            session = Session(model_file.path, self._options)
            self._kokoro = kokoro_onnx.Kokoro.from_session(session, str(voice_file.path))
            voice = self.voices()[0]["id"]
            self._sound(self._phonemizer.phonemes(TRIAL, language_of(voice)), voice, 1.0)
        except Exception as failure:
            raise RuntimeError(f"Choose Kokoro again: its files cannot be loaded ({failure}).") from None

    def voices(self):
        return voices_in(self._voice_file)

    def abandon(self, now):
        """On another thread: have `say` return."""
        self._options.terminate = now

    def say(self, text, voice, speed, emit):
        most = int(MOST_PHONEMES * min(speed, 1.0))
        *cut_off, last = cut(self._phonemizer.phonemes(text, language_of(voice)), most)
        pauses = [PAUSE_WITHIN] * len(cut_off) + [PAUSE_WITHIN if text.endswith(GOES_ON) else PAUSE_AT_END]
        try:
            for part, pause in zip([*cut_off, last], pauses):
                if any(letter.isalpha() for letter in self._kokoro.tokenizer.known(part)):
                    emit(self._sound(part, voice, speed, pause))
        except Exception:
            if not self._options.terminate:
                raise

    def _sound(self, phonemes, voice, speed, unmarked_pause=PAUSE_AT_END):
        own_speed = min(speed, max(1.0, speed / STRETCH), FASTEST)
        samples, _ = self._kokoro.create(phonemes, voice, own_speed, is_phonemes=True)
        samples = faster(samples, speed / own_speed, self.rate)
        pause = PAUSES.get(phonemes.rstrip()[-1], unmarked_pause) / speed
        silence = numpy.zeros(round(pause * self.rate), numpy.int16)
        loud = (numpy.clip(samples, -1.0, 1.0) * 32767).astype(numpy.int16)
        return numpy.concatenate([loud, silence]).tobytes()
