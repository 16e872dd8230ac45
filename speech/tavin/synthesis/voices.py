"""Puts a back-end's voices into the order in which a person looks for them, and names them."""

import os
import re
from collections import Counter

import icu

# Where a locale's language has another name among the voices.
VOICE_LANGUAGE = {"zh": "cmn", "no": "nb", "nn": "nb", "iw": "he", "in": "id"}
LOCALE_LANGUAGE = {"cmn": "zh"}  # where the names of languages have another one
WITHOUT_LANGUAGE = "en-us"
REGION = re.compile("[a-z]{2}|[0-9]{3}")
REGIONS = {"en": "en-us", "fr": "fr-fr"}


def user_languages():
    """The user's languages as the environment tells them, such as "en-us", the preferred one first."""
    for name in ("LC_ALL", "LC_MESSAGES", "LANG"):
        locale = os.environ.get(name)
        if locale:
            break
    first = language_of_locale(locale or "")
    if not first:
        return [WITHOUT_LANGUAGE]
    others = [language_of_locale(other) for other in os.environ.get("LANGUAGE", "").split(":")]
    return list(dict.fromkeys([first, *filter(None, others)]))


def language_of_locale(locale):
    language = locale.split(".")[0].split("@")[0].replace("_", "-").lower()
    if language in ("", "c", "posix"):
        return None
    primary, _, region = language.partition("-")
    primary = VOICE_LANGUAGE.get(primary, primary)
    return f"{primary}-{region}" if region else primary


def listed(voices, first):
    """For a menu: those of the first languages in their order, the best before others, then all by name."""
    titles = titles_of(voices)
    ranks = {}
    for language in first:
        ranks.setdefault(language.split("-")[0], len(ranks))
    collator = icu.Collator.createInstance(icu.Locale.getRoot())

    def place(voice):
        own = voice["language"]
        rank = ranks.get(own.split("-")[0], len(ranks))
        near = min((distance(own, language) for language in first), default=FOREIGN)
        alphabet = collator.getSortKey(own_name(own) or voice["name"] if near == FOREIGN else "")
        return rank, near, alphabet, not voice.get("best"), collator.getSortKey(titles[voice["id"]])

    return [{"id": voice["id"], "name": titles[voice["id"]]} for voice in sorted(voices, key=place)]


def titles_of(voices):
    """What the voices are called, by id: a voice that is named for its language has that name in the
    language itself, others have it behind theirs."""
    titles = {voice["id"]: title(voice) for voice in voices}
    count = Counter(titles.values())
    for voice in voices:
        if count[titles[voice["id"]]] > 1 and voice.get("detail"):
            titles[voice["id"]] += f" ({voice['detail']})"
    return titles


def title(voice):
    language = own_name(voice["language"])
    if "detail" in voice:
        primary, *more = voice["language"].split("-")
        if all(REGION.fullmatch(part) for part in more):
            return language or voice["name"]
        return " ".join(filter(None, (own_name(primary), voice["detail"] and f"({voice['detail']})")))
    about = ", ".join(part for part in (language, voice.get("traits")) if part)
    return f"{voice['name']} – {about}" if about else voice["name"]


def own_name(language):
    """What a language is called by those who speak it; "" where that is not known."""
    if not language:
        return ""
    primary, *more = language.split("-")
    locale = icu.Locale.createCanonical("-".join([LOCALE_LANGUAGE.get(primary, primary), *more]))
    name = locale.getDisplayName(locale)
    return name[:1].title() + name[1:] if locale.getDisplayLanguage(locale) != primary else ""


def default(voices, language):
    """The voice for a user who has not chosen one; None when there is no voice."""
    for wanted in (language, WITHOUT_LANGUAGE):
        if voice := of_language(voices, wanted, language):
            return voice
    return min(voices, key=fitness(WITHOUT_LANGUAGE))["id"] if voices else None


def of_language(voices, wanted, users):
    """The best voice for a language, if need be for another region's; None when there is none.

    Where the region is open, it is the user's, else the best known one.
    """
    if wanted == users.split("-")[0]:
        wanted = users
    best = min(voices, key=fitness(REGIONS.get(wanted, wanted)), default=None)
    return best["id"] if best and distance(best["language"], wanted) < FOREIGN else None


def fitness(language):
    def key(voice):
        far = distance(voice["language"], language)
        return far, far == FOREIGN or not voice.get("best"), voice["name"].casefold()

    return key


FOREIGN = 3


def distance(voice, language):
    """0: the same; 1: the voice is for the language in general; 2: for another region."""
    if voice == language:
        return 0
    if language.startswith(voice + "-"):
        return 1
    return 2 if voice.split("-")[0] == language.split("-")[0] else FOREIGN
