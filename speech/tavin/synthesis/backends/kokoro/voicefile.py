"""The voices in the neural voice's file, an archive of one array for each voice.

A voice's name tells its language and sex by two letters: "bf_emma" is a British
woman. Only the archive's table of contents is read.
"""

import re
import zipfile

# The languages by the name's first letter, for eSpeak NG, which makes the phonemes. Not Japanese and Chinese, whose
# voices the file has as well: eSpeak NG names their signs ("Chinese letter") or drops their tones.
LANGUAGES = {
    "a": "en-us",
    "b": "en-gb",
    "e": "es",
    "f": "fr-fr",
    "h": "hi",
    "i": "it",
    "p": "pt-br",
}
# Those with the best grades of their makers.
BEST = {"af_heart", "bf_emma", "ef_dora", "ff_siwis", "hf_alpha", "if_sara", "pf_dora"}
SEXES = {"f": "female", "m": "male"}
NAME = re.compile(f"([{''.join(LANGUAGES)}])([{''.join(SEXES)}])_(.+)")


def language_of(voice):
    return LANGUAGES[voice[0]]


def voices_in(path):
    """The voices as `Synthesizer.voices` tells them; none when the file cannot be read."""
    try:
        with zipfile.ZipFile(path) as archive:
            names = [NAME.fullmatch(name.removesuffix(".npy")) for name in archive.namelist()]
    except (OSError, zipfile.BadZipFile):
        return []
    return [voice_of(name) for name in names if name]


def voice_of(match):
    """ "bf_emma" is Emma, a woman who speaks British English."""
    _, sex, name = match.groups()
    return {
        "id": match[0],
        "name": name.replace("_", " ").title(),
        "language": language_of(match[0]),
        "traits": SEXES[sex],
        "best": match[0] in BEST,
    }
