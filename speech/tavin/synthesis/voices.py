"""Puts a back-end's voices into the order in which a person looks for them."""

import os

# Where a locale's language has another name among the voices.
VOICE_LANGUAGE = {"zh": "cmn", "no": "nb", "nn": "nb", "iw": "he", "in": "id"}
WITHOUT_LANGUAGE = "en-us"
REGIONS = {"en": "en-us", "fr": "fr-fr"}


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
    """The user's language first and in it the best voices, then all others by name."""
    return sorted(voices, key=place(language))


def place(language):
    def key(voice):
        far = distance(voice["language"], language)
        return far, far == FOREIGN or not voice.get("best"), voice["name"].casefold()

    return key


def default(voices, language):
    """The voice for a user who has not chosen one; None when there is no voice."""
    for wanted in (language, WITHOUT_LANGUAGE):
        if voice := of_language(voices, wanted, language):
            return voice
    return min(voices, key=place(WITHOUT_LANGUAGE))["id"] if voices else None


def of_language(voices, wanted, users):
    """The best voice for a language, if need be for another region's; None when there is none.

    Where the region is open, it is the user's, else the best known one.
    """
    if wanted == users.split("-")[0]:
        wanted = users
    best = min(voices, key=place(REGIONS.get(wanted, wanted)), default=None)
    return best["id"] if best and distance(best["language"], wanted) < FOREIGN else None


FOREIGN = 3


def distance(voice, language):
    """0: the same; 1: the voice is for the language in general; 2: for another region."""
    if voice == language:
        return 0
    if language.startswith(voice + "-"):
        return 1
    return 2 if voice.split("-")[0] == language.split("-")[0] else FOREIGN
