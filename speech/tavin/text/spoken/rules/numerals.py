"""Roman numerals, where a name or a word before them says that they are some."""

import functools
import re

from tavin.text.sentences import ENGLISH_BEGIN
from tavin.text.spoken.patterns import any_of
from tavin.text.spoken.rules.numbers import spelled

NUMERAL = r"(?=[IVX])X{0,3}(?:IX|IV|V?I{0,3})"
LONG_NUMERAL = r"(?![CL]\b)(?=[IVXLC])C{0,3}(?:XC|XL|L?X{0,3})(?:IX|IV|V?I{0,3})"  # alone these are letters: "type C"
VALUES = {"I": 1, "V": 5, "X": 10, "L": 50, "C": 100, "D": 500, "M": 1000}
YEAR = re.compile(r"\b(M{1,2}(?:CM|CD|D?C{0,3})(?:XC|XL|L?X{0,3})(?:IX|IV|V?I{0,3}))\b")
# After a word that may be a name or count, or after another one; two capitals may be letters as well: "an IV drip".
NUMBERED = r"(?:(?=['’]s\b)|(?![\w.'’-]\w|\w| (?:drips?|fluids?|lines?|antibiotics?|infusions?|therapy|chromosomes?|pairs?)\b))"
UNNUMBERED = (
    "the|an?|this|that|these|those|two|three|four|no|some|any|each|his|her|their|my|your|our|its|with|from|for|in|on|of|by"
    "|via|to|and|or|as|at|is|are|was|were|les?|la|des?|du|une?|et|ou|en|d[ae]s|de[nmr]|die|eine?n?|und|oder|mit|von|el|los|las"
    "|una|con|por|start|give|begin|stop|continue|administer"
)
ALONE = re.compile(
    rf"(?<![\w'’-])(?!(?i:{UNNUMBERED}) )([^\W\d_](?:[\w'’-]{{0,30}}[a-zß-öø-ÿ])) (?!XXX\b)({NUMERAL}){NUMBERED}"
)
ANOTHER = re.compile(
    rf"(?<=\d )((?:and|or|to|und|oder|bis|et|ou|à|y|o|a)(?: (?:the|el|la|le))?) ({NUMERAL}){NUMBERED}"
)
FRENCH_CENTURY = re.compile(rf"\b({NUMERAL})(e|ᵉ|ème|er|re)(s?)\b(?:( s)\.(?=(\s*$)?))?")
SPANISH_ORDINAL = re.compile(rf"\b({NUMERAL}) (?=Guerra Mundial|República|Internacional)")
GERMAN_CENTURY = re.compile(rf"\b({NUMERAL})\. (?=Jahrhundert|Jh|Weltkrieg)")
# What shows that an English "I" is no pronoun: "part I.", not "the part I like"; "Mary I was", not "the book I was".
FIRST = re.compile(r"[.;:)!?\]\"”–—]|$| [A-Z(–—]| (?:of|(?:and|or|to) [IVX]+|errors?|diabetes)\b")
# Of a name, "George V. Smith", but for where a word before it shows that it is a ruler's.
INITIAL = re.compile(rf"[IVX]\. (?!{ENGLISH_BEGIN.pattern})[A-Z][a-z]+(?:[.,;:?!)'’\"”]|$| [a-z(])")
RULING = re.compile(r"\b(?:[Kk]ing|[Qq]ueen|Pope|Emperor|Tsar|of|under) (?:[A-Z][a-z]+ )?$")
# Several: "Wars I and II", "Vols. I–III"; behind a hyphen one letter may be a part's: "IV-C".
ONE = rf"{LONG_NUMERAL}\b"
JOINT = r"(?:(?:, | – |–)| ?,? (?:and|or|to|und|oder|bis|et|ou|à|y|o|a) |, (?:and|or) |-(?=[IVXLC]{2}))(?!I\b)"
FIRST_OF_NAME = re.compile(r",|['’]s\b| (?:and|or|was|is|to|in|by|at|from|who|as|died|ruled|reigned|became|began|ended)\b")
GERMAN_DATIVE = re.compile(r"\b(?:[Uu]nter|[Vv]on|[Mm]it|[Bb]ei|[Nn]ach|[Zz]u|[Aa]us|[Ss]eit) (?:[A-ZÄÖÜ][a-zäöüß]+ ){0,2}$")
LONGEST_BEFORE = 40


def say(sentence, words):
    if not words.numerals:
        return sentence
    if words.before_numeral:
        sentence = shortened(tuple(words.before_numeral)).sub(
            lambda found: f"{words.before_numeral[found[1]]} ", sentence
        )
    counted, ruling = patterns(words.numerals, words.rulers, words.language == "de")
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
    for pattern, number in ((ruling, ruler), (counted, counted_as)):
        sentence = pattern.sub(lambda found: spoken(found, number, words), sentence)
    for pattern in (ALONE, ANOTHER):
        sentence = pattern.sub(lambda found: f"{found[1]} {value(found[2])}" if len(found[2]) > 1 else found[0], sentence)
    return sentence


@functools.cache
def shortened(texts):
    """Those before a numeral that is no initial."""
    return re.compile(rf"(?<![\w.’'-])({any_of(texts)}) ?(?={NUMERAL}(?!\w|\.\s*\w))")


@functools.cache
def several(counting, short):
    """Numerals behind a plural, or with a dash between them."""
    word = rf"\b(?:{counting}|{any_of(short)})(?:e?s)? "
    return re.compile(
        rf"({word})((?:(?<=s )|(?<=s\. )){ONE}(?:{JOINT}{ONE}){{1,20}}|{ONE}–(?!I\b){ONE})(?![\w'’]|-\w)"
    )


@functools.cache
def patterns(counting, ruling, german):
    """For what is counted and for rulers; a German ordinal has a point."""
    point = r"(\.)?" if german else "()"
    numbered = rf"({LONG_NUMERAL})(?:(?=['’]s\b)|(?![\w'’]|-(?![A-Z]\b)))"
    capitals = rf"(?=[A-ZÀ-Þ -]+ )(?i:{counting})"
    names = rf"(?:{ruling})s?" if german else ruling
    return (
        re.compile(rf"\b((?:{counting})s?|{capitals}) {numbered}"),
        re.compile(rf"\b({names}) {numbered}{point}(?=\s*(\S)?)"),
    )


def spoken(found, number, words):
    is_none = is_pronoun(found, words) or number is ruler and is_initial(found, words)
    return found[0] if is_none else f"{found[1]} {number(found, words)}"


def counted_as(found, _words):
    return value(found[2])


def is_pronoun(found, words):
    if found[2] != "I" or words.language != "en" or found[1].lower().startswith("world war"):
        return False
    after = found.string, found.end(2)
    return not (FIRST.match(*after) or found[1][0].isupper() and FIRST_OF_NAME.match(*after))


def is_initial(found, words):
    before = found.string[max(0, found.start() - LONGEST_BEFORE) : found.start()]
    return words.language == "en" and INITIAL.match(found.string, found.start(2)) and not RULING.search(before)


def ruler(found, words):
    number = value(found[2])
    if number >= words.rulers_from:
        return str(number)
    if words.language == "de" and (declined := german_case(found, words)):
        return declined + point(found)
    queen = words.queens and re.fullmatch(words.queens, found[1])
    first, rules = (words.queen_first, words.queen_set) if queen else (words.ruler_first, words.ruler_set)
    said = first if number == 1 and first else spelled(number, rules, words)
    return (words.queen if queen else words.ruler).format(said) + point(found)


def point(found):
    """That of a German ordinal ends the sentence as well, at its end."""
    return "." if found[3] and found[4] is None else ""


def german_case(found, words):
    """ "Ludwigs II." is "des zweiten", "unter Ludwig II." is "dem zweiten"; of other words none is sure."""
    genitive = not re.fullmatch(words.rulers, found[1])
    before = found.string[max(0, found.start() - LONGEST_BEFORE) : found.start()]
    if not genitive and not GERMAN_DATIVE.search(before):
        return ""
    queen = re.fullmatch(rf"(?:{words.queens})s?", found[1])
    article = "der" if queen else "des" if genitive else "dem"
    return f"{article} {spelled(value(found[2]), '%spellout-ordinal-n', words)}"


def french(found, words):
    kind = "feminine" if found[2] == "re" else "masculine"
    century = f" siècle{'.' if found[5] is not None else ''}" if found[4] else ""
    return spelled(value(found[1]), f"%spellout-ordinal-{kind}", words) + found[3] + century


def value(numeral):
    sizes = [VALUES[letter] for letter in numeral]
    return sum(-size if size < max(sizes[index:]) else size for index, size in enumerate(sizes))
