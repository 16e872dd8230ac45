"""Turns text into the phonemes that the neural voice was trained with, by eSpeak NG.

eSpeak NG drops punctuation, which the model needs for its melody: a text is
taken apart at its punctuation, and put together again around the phonemes.
For one thread; loaded in the worker process only.
"""

import ctypes
import re

AUDIO_OUTPUT_SYNCHRONOUS = 2
DONT_EXIT = 0x8000
CHARACTERS_UTF8 = 1
IPA = 0x02

# A mark that stands in a number or a word is part of it.
MARK = re.compile(r'((?:^|(?<=\s))[("“«¡¿]+|[,;:.!?…)"”»—、，；：。！？]+(?=\s|$)|[、，；：。！？…—]+)')
ASCII_MARKS = {ord(mark): plain + " " for mark, plain in zip("、，；：。！？", ",,;:.!?")}
LANGUAGE_SWITCH = re.compile(r"\([a-z-]+\)")


class Phonemizer:
    def __init__(self, library, data):
        """RuntimeError when the library or its data cannot be used."""
        try:
            self._library = ctypes.CDLL(library)
        except OSError as failure:
            raise RuntimeError(f"eSpeak NG cannot be loaded: {failure}") from None
        data = str(data).encode()
        if self._library.espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, data, DONT_EXIT) <= 0:
            raise RuntimeError("eSpeak NG's data cannot be loaded.")
        self._library.espeak_TextToPhonemes.restype = ctypes.c_char_p
        self._library.espeak_TextToPhonemes.argtypes = [
            ctypes.POINTER(ctypes.c_char_p),
            ctypes.c_int,
            ctypes.c_int,
        ]
        self._language = None

    def phonemes(self, text, language):
        if language != self._language:
            self._library.espeak_SetVoiceByName(language.encode())
            self._language = language
        parts = MARK.split(text)
        for index, part in enumerate(parts):
            # Every second part is a mark; the blanks around it separate words.
            parts[index] = part.translate(ASCII_MARKS) if index % 2 else self._spoken(part)
        return " ".join("".join(parts).split())

    def _spoken(self, text):
        words = text.strip()
        if not words:
            return text
        begin, end = (" " if text[at].isspace() else "" for at in (0, -1))
        return begin + " ".join(self._clauses(words)) + end

    def _clauses(self, text):
        rest = ctypes.c_char_p(text.encode() + b"\0")
        while rest.value is not None:
            clause = self._library.espeak_TextToPhonemes(ctypes.byref(rest), CHARACTERS_UTF8, IPA)
            yield LANGUAGE_SWITCH.sub("", (clause or b"").decode(errors="replace"))
