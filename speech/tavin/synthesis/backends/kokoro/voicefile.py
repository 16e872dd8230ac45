"""The voices in the neural voice's file, an archive of one array for each voice.

A voice's name tells its language and sex by two letters: "bf_emma" is a British
woman. Only the archive's table of contents is read.
"""

import zipfile

# The languages by the name's first letter, for eSpeak NG, which makes the phonemes.
LANGUAGES = {
    "a": "en-us",
    "b": "en-gb",
    "e": "es",
    "f": "fr-fr",
    "h": "hi",
    "i": "it",
    "j": "ja",
    "p": "pt-br",
    "z": "cmn",
}
# Those with the best grades of their makers.
BEST = {"af_heart", "bf_emma", "ef_dora", "ff_siwis", "hf_alpha", "if_sara", "jf_alpha", "pf_dora", "zf_xiaobei"}
SEXES = {"f": "female", "m": "male"}
OTHER = "en-us"


def language_of(voice):
    return LANGUAGES.get(voice[:1] if "_" in voice else "", OTHER)


def voices_in(path):
    """The voices as `Synthesizer.voices` tells them; none when the file cannot be read."""
    try:
        with zipfile.ZipFile(path) as archive:
            names = [name.removesuffix(".npy") for name in archive.namelist() if name.endswith(".npy")]
    except (OSError, zipfile.BadZipFile):
        return []
    return [voice_of(name) for name in names]


def voice_of(voice):
    """ "bf_emma" is Emma, a woman who speaks British English."""
    kind, _, name = voice.partition("_")
    known = name and kind[:1] in LANGUAGES and kind[1:] in SEXES
    return {
        "id": voice,
        "name": (name if known else voice).replace("_", " ").title(),
        "language": language_of(voice),
        "traits": SEXES[kind[1:]] if known else "",
        "best": voice in BEST,
    }
