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
FALLBACK = "en-us"

# A mark that stands in a number or a word is part of it, and a stop within a sentence belongs to an
# abbreviation.
OPENING = r'(?:^|(?<=\s))[("“«¡¿]+'
CLOSING = r'(?!\.\s+\S)[,;:.!?…)"”»—、，；：。！？]+(?=\s|$)'
ANYWHERE = r"[、，；：。！？…—]+"
MARK = re.compile(f"({OPENING}|{CLOSING}|{ANYWHERE})")
ASCII_MARKS = {ord(mark): plain + " " for mark, plain in zip("、，；：。！？", ",,;:.!?")}
LANGUAGE_SWITCH = re.compile(r"\([a-z-]+\)")


class Wish(ctypes.Structure):
    """What a voice must be like; the rest of the library's record is left open."""

    _fields_ = [
        ("name", ctypes.c_char_p),
        ("languages", ctypes.c_char_p),
        ("identifier", ctypes.c_char_p),
        ("others", ctypes.c_ubyte * 24),
    ]


class Phonemizer:
    def __init__(self, library, data=None):
        """`data` is its folder, where the library does not know it; RuntimeError without either."""
        try:
            self._library = ctypes.CDLL(library)
        except OSError as failure:
            raise RuntimeError(f"eSpeak NG cannot be loaded: {failure}") from None
        data = str(data).encode() if data else None
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
        self._speak_as(language)
        parts = MARK.split(text)
        for index, part in enumerate(parts):
            # Every second part is a mark; the blanks around it separate words.
            parts[index] = part.translate(ASCII_MARKS) if index % 2 else self._spoken(part)
        return " ".join("".join(parts).split())

    def _speak_as(self, language):
        """Without a voice the library would crash at the first text."""
        if language == self._language:
            return
        for name in (language, FALLBACK):
            wish = Wish(languages=name.encode())
            if self._library.espeak_SetVoiceByProperties(ctypes.byref(wish)) == 0:
                self._language = language
                return
        raise RuntimeError("eSpeak NG has no voices.")

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
