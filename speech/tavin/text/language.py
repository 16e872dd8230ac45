"""Tells in which language a text is written, sentence by sentence.

The script narrows it down, CLD2 decides. Where that leaves a doubt, it is the
language that was expected. Languages are named as eSpeak NG names them.
"""

import re
import unicodedata
from collections import Counter

from tavin.text.cld2 import detector
from tavin.text.spoken.marks import CODE

SAMPLE = 2000  # code points looked at
# Per script, as Unicode names it: its languages, the most likely first. Latin has too many.
LANGUAGES_OF_SCRIPT = {
    "ARABIC": ("ar", "fa", "ur", "ug", "sd", "ps", "ku", "ckb", "ks"),
    "ARMENIAN": ("hy", "hyw"),
    "BENGALI": ("bn", "as", "bpy"),
    "BOPOMOFO": ("cmn", "yue"),
    "CHEROKEE": ("chr",),
    "CJK": ("cmn", "yue", "ja", "hak", "zh"),
    "CYRILLIC": (
        *("ru", "uk", "bg", "be", "sr", "mk", "kk", "ky", "tt", "ba", "cv"),
        *("mn", "tg", "uz", "az", "tk", "nog", "os", "ab"),
    ),
    "DEVANAGARI": ("hi", "mr", "ne", "kok", "bh", "sa"),
    "ETHIOPIC": ("am", "ti"),
    "GEORGIAN": ("ka",),
    "GREEK": ("el", "grc"),
    "GUJARATI": ("gu",),
    "GURMUKHI": ("pa",),
    "HANGUL": ("ko",),
    "HEBREW": ("he", "yi"),
    "HIRAGANA": ("ja",),
    "KANNADA": ("kn",),
    "KATAKANA": ("ja",),
    "KHMER": ("km",),
    "LAO": ("lo",),
    "MALAYALAM": ("ml",),
    "MYANMAR": ("my", "shn"),
    "ORIYA": ("or",),
    "SINHALA": ("si",),
    "TAMIL": ("ta",),
    "TELUGU": ("te",),
    "THAANA": ("dv",),
    "THAI": ("th",),
    "TIBETAN": ("bo", "dz"),
}
# One written language under several names: the expected name is right.
ALIKE = ({"bs", "hr", "sr"}, {"cmn", "yue", "hak", "zh"})
# What a sentence is too short to tell apart: the rest of the text decides, or the expectation.
NEAR = ({"da", "nb"}, {"id", "ms"}, {"bg", "mk", "sr"}, {"cs", "sk"}, {"cmn", "ja"})
FEWEST_WORDS = 3  # of a whole text: what is shorter may be a name
FEWEST_WORDS_BETWEEN_NEAR = 20
FEWEST_WORDS_OF_SENTENCE = 4  # a foreign phrase is no sentence yet
LETTERS_OF_WORD = 4  # where words have no blanks between them
WORD = re.compile(r"[^\W\d_]+(?:['’][^\W\d_]+)*")


class Written:
    """The languages of one text."""

    def __init__(self, text):
        self._text = text[:SAMPLE]
        self._whole = {}  # by what was expected
        self._met = set()

    def whole(self, expected):
        """The language of the text's beginning."""
        if expected not in self._whole:
            self._whole[expected] = of_text(self._text, expected)
        return self._whole[expected]

    def of(self, sentence, expected):
        """The language of a sentence, or of a part of one."""
        whole = self.whole(expected)
        if sentence.startswith(CODE):  # its words are of no language
            return whole
        told = tell(sentence, whole)
        if told != whole and is_of_script(sentence, whole):
            if words(sentence) < FEWEST_WORDS_OF_SENTENCE and told not in self._met:
                return whole
            if together(told, whole, NEAR):
                return whole
        self._met.add(told)
        return expected if primary(told) == primary(expected) else told


def of_text(text, expected):
    """The language of a text's beginning by itself."""
    text = text[:SAMPLE]
    told = tell(text, expected)
    fewest = FEWEST_WORDS_BETWEEN_NEAR if together(told, expected, NEAR) else FEWEST_WORDS
    return expected if words(text) < fewest and is_of_script(text, expected) else told


def tell(text, expected):
    """The language, however short the text is."""
    languages = LANGUAGES_OF_SCRIPT.get(script_of(text), ())
    own = primary(expected)
    told = detector() and detector().tell(text, own)
    if languages and own not in languages:
        return told if told in languages else languages[0]
    # One that the library does not know would lose every comparison.
    is_in_doubt = not told or told == own or together(told, own, ALIKE) or not is_known(own)
    return expected if is_in_doubt else told


def is_of_script(text, language):
    """Whether a voice of the language can read the text's letters."""
    languages = LANGUAGES_OF_SCRIPT.get(script_of(text), ())
    return not languages or primary(language) in languages


def is_known(language):
    return detector().knows(language) or any(language in group for group in ALIKE)


def together(one, other, groups):
    return any(primary(one) in group and primary(other) in group for group in groups)


def words(text):
    """How many different ones there are, about: "no no no" says no more than "no"."""
    found = set(WORD.findall(text.lower()))
    return sum(1 if has_blanks(word) else -(-len(word) // LETTERS_OF_WORD) for word in found)


def has_blanks(word):
    """Whether it is written in a script that parts words by blanks."""
    return script_of(word[:1]) not in ("CJK", "HIRAGANA", "KATAKANA", "THAI", "LAO", "KHMER", "MYANMAR", "TIBETAN")


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
