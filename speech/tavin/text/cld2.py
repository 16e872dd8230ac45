"""CLD2, the library that tells languages, by its exported symbols.

Debian has no Python module of it, and a shim of ours would be the engine's only
compiled part. Its interface has been the same since 2015; whether it still is
shows when it is loaded: the symbol names the arguments' types, and one known
sentence must be told. Without the library nothing is told.

For one thread at a time. Texts of a few thousand characters take less than a millisecond.
"""

import ctypes
import functools

from tavin.log import log

LIBRARY = "libcld2.so.0"
# The same tables for twice as many languages. Loaded first, they take the place of the library's own.
TABLES = "libcld2_full.so.0"
DETECT = (
    "_ZN4CLD224ExtDetectLanguageSummaryEPKcibPKNS_8CLDHintsEiPNS_8LanguageEPiPd"
    "PSt6vectorINS_11ResultChunkESaISA_EES7_Pb"
)
CODE = "_ZN4CLD212LanguageCodeENS_8LanguageE"
BY_NAME = "_ZN4CLD219GetLanguageFromNameEPKc"
BEST_EFFORT = 0x4000  # tells short texts as well
NO_ENCODING = 23
NO_LANGUAGE = 26
SENTENCE = "Tous les êtres humains naissent libres et égaux."
OWN_CODES = {"he": "iw", "nb": "no", "cmn": "zh"}  # where it has another one
CODES = {own: code for code, own in OWN_CODES.items()} | {"nn": "nb", "zh-Hant": "cmn", "jw": "jv", "tl": "fil"}


class Hints(ctypes.Structure):
    _fields_ = [
        ("content_language", ctypes.c_char_p),
        ("top_level_domain", ctypes.c_char_p),
        ("encoding", ctypes.c_int),
        ("language", ctypes.c_int),
    ]


class Detector:
    def __init__(self):
        """OSError or AttributeError without a library that has what is needed."""
        try:
            ctypes.CDLL(TABLES, mode=ctypes.RTLD_GLOBAL)
        except OSError:
            log.info("%s is missing: fewer languages are told", TABLES)
        library = ctypes.CDLL(LIBRARY)
        numbers = ctypes.POINTER(ctypes.c_int)
        self._detect = getattr(library, DETECT)
        self._detect.argtypes = [
            *(ctypes.c_char_p, ctypes.c_int, ctypes.c_bool, ctypes.POINTER(Hints), ctypes.c_int),
            *(numbers, numbers, ctypes.POINTER(ctypes.c_double), ctypes.c_void_p),
            *(numbers, ctypes.POINTER(ctypes.c_bool)),
        ]
        self._code = getattr(library, CODE)
        self._code.argtypes, self._code.restype = [ctypes.c_int], ctypes.c_char_p
        self._by_name = getattr(library, BY_NAME)
        self._by_name.argtypes = [ctypes.c_char_p]

    def tell(self, text, expected):
        """The language of most of the text, None where that is in doubt. `expected` wins a tie."""
        data = text.encode(errors="replace")
        hints = Hints(OWN_CODES.get(expected, expected).encode(), None, NO_ENCODING, NO_LANGUAGE)
        three = ctypes.c_int * 3
        reliable = ctypes.c_bool()
        told = self._detect(
            *(data, len(data), True, ctypes.byref(hints), BEST_EFFORT),
            *(three(), three(), (ctypes.c_double * 3)(), None),
            *(ctypes.byref(ctypes.c_int()), ctypes.byref(reliable)),
        )
        code = self._code(told).decode()
        return CODES.get(code, code) if reliable and told != NO_LANGUAGE else None

    def knows(self, language):
        return self._by_name(OWN_CODES.get(language, language).encode()) != NO_LANGUAGE


@functools.cache
def detector():
    """The one of this process; None where there is no library."""
    try:
        found = Detector()
        if found.tell(SENTENCE, "en") == "fr":
            return found
        reason = "it tells French for something else"
    except (OSError, AttributeError) as failure:
        reason = failure
    log.info("languages are told by their scripts only (package libcld2-0): %s", reason)
    return None
