"""The voices in the neural voice's file, an archive of one array for each voice.

A voice's name tells its language and sex by two letters: "bf_emma" is a British
woman. Only the archive's table of contents is read.
"""

import zipfile

# The languages by the name's first letter: for eSpeak NG, which makes the phonemes, and for people.
LANGUAGES = {
    "a": ("en-us", "American English"),
    "b": ("en-gb", "British English"),
    "e": ("es", "Spanish"),
    "f": ("fr-fr", "French"),
    "h": ("hi", "Hindi"),
    "i": ("it", "Italian"),
    "j": ("ja", "Japanese"),
    "p": ("pt-br", "Brazilian Portuguese"),
    "z": ("cmn", "Mandarin Chinese"),
}
# Those with the best grades of their makers.
BEST = {"af_heart", "bf_emma", "ef_dora", "ff_siwis", "hf_alpha", "if_sara", "jf_alpha", "pf_dora", "zf_xiaobei"}
SEXES = {"f": "female", "m": "male"}
OTHER = ("en-us", None)


def language_of(voice):
    return LANGUAGES.get(voice[:1] if "_" in voice else "", OTHER)[0]


def voices_in(path):
    """The voices as `Synthesizer.voices` tells them; none when the file cannot be read."""
    try:
        with zipfile.ZipFile(path) as archive:
            names = [name.removesuffix(".npy") for name in archive.namelist() if name.endswith(".npy")]
    except (OSError, zipfile.BadZipFile):
        return []
    return [
        {"id": name, "name": readable(name), "language": language_of(name), "best": name in BEST}
        for name in names
    ]


def readable(voice):
    """ "Emma (British English, female)" of "bf_emma"."""
    kind, _, name = voice.partition("_")
    language = LANGUAGES.get(kind[:1], OTHER)[1]
    title = name.replace("_", " ").title()
    if not name or language is None or kind[1:] not in SEXES:
        return voice.replace("_", " ").title()
    return f"{title} ({language}, {SEXES[kind[1:]]})"
