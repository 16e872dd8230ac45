"""Puts a back-end's voices into the order in which a person looks for them."""

import os

# Where a locale's language has another name among the voices.
VOICE_LANGUAGE = {"zh": "cmn", "no": "nb", "nn": "nb", "iw": "he", "in": "id"}
WITHOUT_LANGUAGE = "en-us"


def user_language():
    """The user's language as the environment tells it, such as "en-us"."""
    for name in ("LC_ALL", "LC_MESSAGES", "LANG"):
        locale = os.environ.get(name)
        if locale:
            break
    language = (locale or "").split(".")[0].split("@")[0].replace("_", "-").lower()
    if language in ("", "c", "posix"):
        return WITHOUT_LANGUAGE
    primary, _, region = language.partition("-")
    primary = VOICE_LANGUAGE.get(primary, primary)
    return f"{primary}-{region}" if region else primary


def ordered(voices, language):
    """The user's language first, then all others by name."""
    return sorted(voices, key=lambda voice: (distance(voice["language"], language), voice["name"].casefold()))


def default(voices, language):
    """The voice for a user who has not chosen one; None when there is no voice."""
    best = ordered(voices, language)
    if best and distance(best[0]["language"], language) < FOREIGN:
        return best[0]["id"]
    best = ordered(voices, WITHOUT_LANGUAGE)
    return best[0]["id"] if best else None


FOREIGN = 3


def distance(voice, language):
    """0: the same; 1: the voice is for the language in general; 2: for another region."""
    if voice == language:
        return 0
    if language.startswith(voice + "-"):
        return 1
    return 2 if voice.split("-")[0] == language.split("-")[0] else FOREIGN
