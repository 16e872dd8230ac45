"""Tells in which language a text is written, as far as that is certain.

By the script, and in Latin script by the words that every text of a language is
full of. Where that leaves a doubt, it is the language that was expected.
"""

import re
import unicodedata
from collections import Counter

SAMPLE = 2000  # code points looked at
# Per script, as Unicode names it: its languages as eSpeak NG names them, the most likely first.
LANGUAGES_OF_SCRIPT = {
    "ARABIC": ("ar", "fa", "ur", "ug", "sd"),
    "ARMENIAN": ("hy", "hyw"),
    "BENGALI": ("bn", "as"),
    "BOPOMOFO": ("cmn", "yue"),
    "CJK": ("cmn", "yue", "ja", "hak", "zh"),
    "CYRILLIC": ("ru", "uk", "bg", "be", "sr", "mk", "kk", "ky", "tt", "ba", "cv"),
    "DEVANAGARI": ("hi", "mr", "ne", "kok"),
    "ETHIOPIC": ("am",),
    "GEORGIAN": ("ka",),
    "GREEK": ("el", "grc"),
    "GUJARATI": ("gu",),
    "GURMUKHI": ("pa",),
    "HANGUL": ("ko",),
    "HEBREW": ("he",),
    "HIRAGANA": ("ja",),
    "KANNADA": ("kn",),
    "KATAKANA": ("ja",),
    "MALAYALAM": ("ml",),
    "MYANMAR": ("my",),
    "ORIYA": ("or",),
    "SINHALA": ("si",),
    "TAMIL": ("ta",),
    "TELUGU": ("te",),
    "THAI": ("th",),
}
FREQUENT = {
    "en": "the of and to in is that it for was with as on are this be have from by not you which",
    "de": "der die und das ist nicht ein eine zu den mit von sich auf für des im dem auch es ich sie",
    "fr": "le la les des et est une un que dans pour pas qui sur au ce plus avec du je il elle nous",
    "es": "el la los las de que y en un una es por con para no se del lo su al como más pero",
    "it": "il la di che e un una è per non con del della sono le gli si in dei nel più anche",
    "pt": "o a os as de que e um uma não para com do da em por se no na dos mais é",
    "nl": "de het een en van is dat niet op te zijn voor met die in aan er ook maar ik",
    "sv": "och att det som en är på av för med inte den till ett om har jag de",
    "da": "og at det er en af på for med ikke den til der et som jeg de har",
    "nb": "og å det er en av på for med ikke den til et som jeg de har fra",
    "fi": "ja on ei se että oli hän mutta kun joka ovat myös tai kuin",
    "pl": "i w nie na się z do to że jest jak o ale po od przez są",
    "cs": "a se na je v že to s z do i o pro jako ale by jsou není",
    "hu": "a az és hogy nem egy is ez van meg de csak már mint",
    "ro": "și de în la cu nu este o un care pe din mai sunt pentru",
    "tr": "ve bir bu da de için ile olarak daha çok değil ama gibi var",
}
WORDS = {language: set(words.split()) for language, words in FREQUENT.items()}
FEWEST = 3  # different frequent words
SHARE = 0.15  # of all words
LEAD = 1.4  # over the next language


class Written:
    """The language of a text, sentence by sentence."""

    def __init__(self, text):
        self._sample = text[:SAMPLE]
        self._known = {}

    def of(self, sentence, expected):
        if expected not in self._known:
            self._known[expected] = of_text(self._sample, expected)
        return of_script(sentence, self._known[expected])


def of_text(text, expected):
    """The language of the text's beginning."""
    sample = text[:SAMPLE]
    by_script = of_script(sample, expected)
    return of_words(sample, expected) if by_script == expected else by_script


def of_script(text, expected):
    """The language by the script alone; good for single sentences."""
    script = script_of(text)
    languages = LANGUAGES_OF_SCRIPT.get(script, ())
    if not languages or primary(expected) in languages:
        return expected
    return languages[0]


def of_words(text, expected):
    if script_of(text) != "LATIN":
        return expected
    words = Counter(re.findall(r"[^\W\d_]+", text.lower()))
    found = {language: hits(words, known) for language, known in WORDS.items()}
    ranked = sorted(found, key=found.get, reverse=True)
    best = ranked[0]
    distinct = len(WORDS[best] & words.keys())
    certain = (
        distinct >= FEWEST
        and found[best] >= SHARE * words.total()
        and all(found[best] >= LEAD * found[other] for other in ranked[1:])
    )
    return best if certain and best != primary(expected) else expected


def hits(words, known):
    return sum(count for word, count in words.items() if word in known)


def script_of(text):
    """The script of most letters, as Unicode names it; Japanese is told by its syllables."""
    scripts = Counter(
        unicodedata.name(letter, "").split(" ")[0].split("-")[0] for letter in text if letter.isalpha()
    )
    kana = scripts["HIRAGANA"] + scripts["KATAKANA"]
    if kana > 0.1 * (kana + scripts["CJK"]):
        scripts["HIRAGANA"] = kana + scripts.pop("CJK", 0)
    return max(scripts, key=scripts.get, default=None)


def primary(language):
    return language.split("-")[0]
