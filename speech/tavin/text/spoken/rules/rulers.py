"""Rulers of one name are told apart by a Roman numeral, which is an ordinal or a number as the language has it."""

import functools
import re

from tavin.text.sentences import ENGLISH_BEGIN
from tavin.text.spoken.rules.numbers import spelled
from tavin.text.spoken.rules.numerals import JOINT, LONG_NUMERAL, NOT_GLUED, ONE, is_pronoun, value

# Of a name, "George V. Smith", but for where a word before it shows that it is a ruler's.
INITIAL = re.compile(rf"[IVX]\. (?!{ENGLISH_BEGIN.pattern})[A-Z][a-z]+(?:[.,;:?!)'’\"”]|$| [a-z(])")
RULING = re.compile(r"\b(?:[Kk]ing|[Qq]ueen|Pope|Emperor|Tsar|of|under) (?:[A-Z][a-z]+ )?$")
GERMAN_DATIVE = re.compile(r"\b(?:[Uu]nter|[Vv]on|[Mm]it|[Bb]ei|[Nn]ach|[Zz]u|[Aa]us|[Ss]eit) (?:[A-ZÄÖÜ][a-zäöüß]+ ){0,2}$")
LONGEST_BEFORE = 40


def say(sentence, words):
    if not words.rulers:
        return sentence
    several, one = patterns(f"(?:{words.rulers})", words.language == "de")
    sentence = several.sub(lambda found: with_namesakes(found, words), sentence)
    return one.sub(lambda found: spoken(found, words), sentence)


@functools.cache
def patterns(names, german):
    """For several of one name, "Louis XIV, XV and XVI", and for one; a German ordinal has a point."""
    point = r"(\.)?" if german else "()"
    several_points = r"(?:\.(?!\s*$))?" if german else ""
    one = rf"{names}s?" if german else names
    another = rf"{JOINT}{LONG_NUMERAL}\b{several_points}"
    return (
        re.compile(rf"\b({one}) ({LONG_NUMERAL})(er\b|re\b|\b{several_points})((?:{another}){{1,20}})(?![\w'’]|-\w)"),
        re.compile(rf"\b({one}) {NOT_GLUED}{point}(?=\s*(\S)?)"),
    )


def with_namesakes(found, words):
    """The others in words; the first is still to be told."""
    others = re.sub(rf"{ONE}\.?", lambda one: ordinal(found, value(one[0].rstrip(".")), words), found[4])
    return f"{found[1]} {found[2]}{found[3]}{others}"


def spoken(found, words):
    is_none = is_pronoun(found, words) or is_initial(found, words)
    return found[0] if is_none else f"{found[1]} {ordinal(found, value(found[2]), words)}{point(found, words)}"


def is_initial(found, words):
    before = found.string[max(0, found.start() - LONGEST_BEFORE) : found.start()]
    return words.language == "en" and INITIAL.match(found.string, found.start(2)) and not RULING.search(before)


def ordinal(found, number, words):
    """The first or another one of those that were found."""
    if number >= words.rulers_from:
        return str(number)
    if words.language == "de" and (declined := german_case(found, number, words)):
        return declined
    queen = words.queens and re.fullmatch(words.queens, found[1])
    first, rules = (words.queen_first, words.queen_set) if queen else (words.ruler_first, words.ruler_set)
    said = first if number == 1 and first else spelled(number, rules, words)
    return (words.queen if queen else words.ruler).format(said)


def point(found, words):
    """That of a German ordinal ends the sentence as well, at its end."""
    return "." if found[3] and found[4] is None and value(found[2]) < words.rulers_from else ""


def german_case(found, number, words):
    """ "Ludwigs II." is "des zweiten", "unter Ludwig II." is "dem zweiten"; of other words none is sure."""
    genitive = not re.fullmatch(words.rulers, found[1])
    before = found.string[max(0, found.start() - LONGEST_BEFORE) : found.start()]
    if not genitive and not GERMAN_DATIVE.search(before):
        return ""
    queen = re.fullmatch(rf"(?:{words.queens})s?", found[1])
    article = "der" if queen else "des" if genitive else "dem"
    return f"{article} {spelled(number, '%spellout-ordinal-n', words)}"
