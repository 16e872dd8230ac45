"""eSpeak NG through its C library. Loaded in a worker process only."""

import ctypes

OUTPUT_SYNCHRONOUS = 2  # samples to the callback, espeak_Synth returns at the end
DONT_EXIT = 0x8000  # a missing data folder is an error code, not exit()
BUFFER_MS = 60
RATE_PARAMETER = 1
CHARACTERS_UTF8 = 1  # and neither the SSML nor the phoneme flag: text is only text
NORMAL_WORDS_PER_MINUTE = 175
LIBRARY = "libespeak-ng.so.1"


class VoiceRecord(ctypes.Structure):
    _fields_ = [
        ("name", ctypes.c_char_p),
        ("languages", ctypes.c_void_p),  # pairs of a priority byte and a string
        ("identifier", ctypes.c_char_p),
        ("gender", ctypes.c_ubyte),
        ("age", ctypes.c_ubyte),
        ("variant", ctypes.c_ubyte),
        ("private", ctypes.c_ubyte),
        ("score", ctypes.c_int),
        ("spare", ctypes.c_void_p),
    ]


SynthCallback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_int, ctypes.c_void_p)


def load_library():
    try:
        library = ctypes.CDLL(LIBRARY)
    except OSError:
        raise RuntimeError("eSpeak NG is not installed (package libespeak-ng1).") from None
    library.espeak_ListVoices.restype = ctypes.POINTER(ctypes.POINTER(VoiceRecord))
    library.espeak_Synth.argtypes = [
        ctypes.c_char_p,
        ctypes.c_size_t,
        ctypes.c_uint,
        ctypes.c_int,
        ctypes.c_uint,
        ctypes.c_uint,
        ctypes.c_void_p,
        ctypes.c_void_p,
    ]
    return library


class Synthesizer:
    def __init__(self):
        self._library = load_library()
        self.rate = self._library.espeak_Initialize(OUTPUT_SYNCHRONOUS, BUFFER_MS, None, DONT_EXIT)
        if self.rate <= 0:
            raise RuntimeError("eSpeak NG's data is missing (package espeak-ng-data).")
        self._emit = None
        self._callback = SynthCallback(self._take)  # kept: the library holds only a pointer
        self._library.espeak_SetSynthCallback(self._callback)
        self._voice = None

    def voices(self):
        records = self._library.espeak_ListVoices(None)
        found = []
        index = 0
        while records[index]:
            found.append(self._voice_of(records[index].contents))
            index += 1
        # MBROLA voices are listed whether or not their data is there.
        return [voice for voice in found if not voice["id"].startswith("mb/")]

    @staticmethod
    def _voice_of(record):
        language = ctypes.string_at(record.languages + 1) if record.languages else b""
        name = record.name.decode(errors="replace").replace("_", " ").strip()
        return {
            "id": record.identifier.decode(errors="replace"),
            "name": name,
            "language": language.decode(errors="replace").lower(),
            "detail": name.partition("(")[2].removesuffix(")"),
        }

    def say(self, text, voice, speed, emit):
        if voice != self._voice:
            self._library.espeak_SetVoiceByName(voice.encode())
            self._voice = voice
        # From 450 words a minute on the library speeds the finished sound up.
        words_per_minute = round(NORMAL_WORDS_PER_MINUTE * speed)
        self._library.espeak_SetParameter(RATE_PARAMETER, words_per_minute, 0)
        self._emit = emit
        data = text.encode() + b"\0"
        self._library.espeak_Synth(data, len(data), 0, 1, 0, CHARACTERS_UTF8, None, None)

    def _take(self, samples, count, _events):
        if samples and count > 0:
            self._emit(ctypes.string_at(samples, 2 * count))
        return 0
