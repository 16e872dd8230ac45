"""Roman numerals, where a name or a word before them says that they are some."""

import functools
import re

from tavin.text.spoken.patterns import any_of
from tavin.text.spoken.rules.numbers import spelled

NUMERAL = r"(?=[IVX])X{0,3}(?:IX|IV|V?I{0,3})"
LONG_NUMERAL = r"(?![CL]\b)(?=[IVXLC])C{0,3}(?:XC|XL|L?X{0,3})(?:IX|IV|V?I{0,3})"  # alone these are letters: "type C"
VALUES = {"I": 1, "V": 5, "X": 10, "L": 50, "C": 100, "D": 500, "M": 1000}
YEAR = re.compile(r"\b(M{1,2}(?:CM|CD|D?C{0,3})(?:XC|XL|L?X{0,3})(?:IX|IV|V?I{0,3}))\b")
# After a word that may be a name or count, or after another one; two capitals may be letters as well: "an IV drip".
BEHIND = r"(?:(?=['’]s\b)|(?![\w.'’-]\w|\w| (?:drips?|fluids?|lines?|antibiotics?|infusions?|therapy|chromosomes?|pairs?)\b))"
UNNUMBERED = (
    "the|an?|this|that|these|those|two|three|four|no|some|any|each|his|her|their|my|your|our|its|with|from|for|in|on|of|by"
    "|via|to|and|or|as|at|is|are|was|were|les?|la|des?|du|une?|et|ou|en|d[ae]s|de[nmr]|die|eine?n?|und|oder|mit|von|el|los|las"
    "|una|con|por|start|give|begin|stop|continue|administer"
)
ALONE = re.compile(
    rf"(?<![\w'’-])(?!(?i:{UNNUMBERED}) )([^\W\d_](?:[\w'’-]{{0,30}}[a-zß-öø-ÿ])) (?!XXX\b)({NUMERAL}){BEHIND}"
)
ANOTHER = re.compile(
    rf"(?<=\d )((?:and|or|to|und|oder|bis|et|ou|à|y|o|a)(?: (?:the|el|la|le))?) ({NUMERAL}){BEHIND}"
)
ITEM = re.compile(rf"^\s*(?=\w\w)({NUMERAL})(?=\.\s*$)")  # of a list, or before a heading
FRENCH_CENTURY = re.compile(rf"\b({NUMERAL})(e|ᵉ|ème|er|re|n?de)(s?)\b(?:( s)\.(?=(\s*$)?))?")
SPANISH_ORDINAL = re.compile(rf"\b({NUMERAL}) (?=Guerra Mundial|República|Internacional)")
GERMAN_CENTURY = re.compile(rf"\b({NUMERAL})\. (?=Jahrhundert|Jh|Weltkrieg)")
# What shows that an English "I" is no pronoun: "part I.", not "the part I like"; "Mary I was", not "the book I was".
FIRST = re.compile(r"[.;:)!?\]\"”–—]|$| [A-Z(–—]| (?:of|(?:and|or|to) [IVX]+|errors?|diabetes)\b")
# Several: "Wars I and II", "Vols. I–III"; behind a hyphen one letter may be a part's: "IV-C".
ONE = rf"{LONG_NUMERAL}\b"
JOINT = r"(?:(?:, | – |–)| ?,? (?:and|or|to|und|u\.|oder|bis|et|ou|à|y|o|a) |, (?:and|or) |-(?=[IVXLC]{2}))(?!I\b)"
NOT_GLUED = rf"({LONG_NUMERAL})(?:(?=['’]s\b)|(?![\w'’]|-(?![A-Z]\b)))"
FIRST_OF_NAME = re.compile(r",|['’]s\b| (?:and|or|was|is|to|in|by|at|from|who|as|died|ruled|reigned|became|began|ended)\b")


def say(sentence, words):
    if not words.numerals:
        return sentence
    sentence = ITEM.sub(lambda item: str(value(item[1])), sentence)
    if words.before_numeral:
        sentence = shortened(tuple(words.before_numeral)).sub(
            lambda found: f"{words.before_numeral[found[1]]} ", sentence
        )
    sentence = several(words.numerals, tuple(words.before_number)).sub(
        lambda found: found[1] + re.sub(ONE, lambda one: str(value(one[0])), found[2]), sentence
    )
    sentence = YEAR.sub(lambda year: str(value(year[1])) if len(year[1]) > 4 else year[0], sentence)
    if words.language == "fr":
        sentence = FRENCH_CENTURY.sub(lambda found: french(found, words), sentence)
    if words.language == "es":
        sentence = SPANISH_ORDINAL.sub(
            lambda found: f"{spelled(value(found[1]), '%spellout-ordinal-feminine', words)} ", sentence
        )
    if words.language == "de":
        sentence = GERMAN_CENTURY.sub(lambda found: f"{value(found[1])}. ", sentence)
    sentence = counted(words.numerals).sub(
        lambda found: found[0] if is_pronoun(found, words) else f"{found[1]} {value(found[2])}", sentence
    )
    for pattern in (ALONE, ANOTHER):
        sentence = pattern.sub(lambda found: f"{found[1]} {value(found[2])}" if len(found[2]) > 1 else found[0], sentence)
    return sentence


@functools.cache
def shortened(texts):
    """Those before a numeral that is no initial."""
    return re.compile(rf"(?<![\w.’'-])({any_of(texts)}) ?(?={NUMERAL}(?!\w|\.\s*\w))")


@functools.cache
def several(counting, short):
    """Numerals behind a plural, or two with a dash between them or of which the second is no letter."""
    word = rf"\b(?:{counting}|{any_of(short)})(?:e?s)? "
    return re.compile(
        rf"({word})((?:(?<=s )|(?<=s\. )){ONE}(?:{JOINT}{ONE}){{1,20}}"
        rf"|{ONE}(?:–(?!I\b)|{JOINT}(?=[IVXLC]{{2}})){ONE})(?![\w'’]|-\w)"
    )


@functools.cache
def counted(counting):
    capitals = rf"(?=[A-ZÀ-Þ -]+ )(?i:{counting})"
    return re.compile(rf"\b((?:{counting})s?|{capitals}) {NOT_GLUED}")


def is_pronoun(found, words):
    if found[2] != "I" or words.language != "en" or found[1].lower().startswith("world war"):
        return False
    after = found.string, found.end(2)
    return not (FIRST.match(*after) or found[1][0].isupper() and FIRST_OF_NAME.match(*after))


def french(found, words):
    kind = "feminine" if found[2] == "re" else "masculine"
    century = f" siècle{'.' if found[5] is not None else ''}" if found[4] else ""
    return spelled(value(found[1]), f"%spellout-ordinal-{kind}", words) + found[3] + century


def value(numeral):
    sizes = [VALUES[letter] for letter in numeral]
    return sum(-size if size < max(sizes[index:]) else size for index, size in enumerate(sizes))
