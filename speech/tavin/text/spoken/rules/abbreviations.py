"""Abbreviations in full: a stop within a sentence is heard as its end."""

import functools
import re

from tavin.text.spoken.patterns import any_of
from tavin.text.spoken.rules.numerals import NUMERAL, value

STREET = re.compile(r"(?<=[a-z\d] )St\.(?=,|(\s*$)| (?:[a-z]|[NSEW]\b))")
WOMAN = re.compile(r"(?<!bis )(?<![\w.-])Fr\. (?=[A-ZÄÖÜ])")  # no Friday
CORDIALLY = re.compile(r"(?:^|(?<=[Bb]ien )|(?<=[.!,] ))Cdt(?=,|[.!]?\s*$)", re.MULTILINE)  # no commander
ONE_HOUR = re.compile(r"(?:(?<![\w.,:/½¼¾-])1|\b(?:[Ee]ine[nr]?|[Pp]ro|[Jj]ede[rn]?)) ?$")
ANSWER = re.compile(r"\b(?:is|was|be|said|says?|answered) $")
SAINT = re.compile(r"\bSt\. (?=[A-Z])")


def say(sentence, words):
    if not words.abbreviations:
        return sentence
    everywhere, before_number = patterns(tuple(words.abbreviations), tuple(words.before_number))
    if words.language == "en":
        sentence = SAINT.sub("Saint ", STREET.sub(lambda found: "Street" if found[1] is None else "Street.", sentence))
    if words.language == "de":
        sentence = WOMAN.sub("Frau ", sentence)
    if words.language == "fr":
        sentence = CORDIALLY.sub("Cordialement", sentence)
    sentence = before_number.sub(lambda found: counting(found, words), sentence)
    return everywhere.sub(lambda found: spoken(found, words), sentence)


@functools.cache
def patterns(everywhere, before_number):
    begin = r"(?:(?<![\w.’'-])|(?<=\b[dl][’']))"  # French "l'art. 5"
    return (
        re.compile(rf"{begin}({any_of(everywhere)})(?!\w)(?=(\s*[\"”»’')]*\s*$)?)"),
        re.compile(rf"{begin}({any_of(before_number)}) ?(?:(?=\d|I\b)|({NUMERAL})\b)"),
    )


def counting(found, words):
    """Not "The answer is no." before a sentence that begins with a number."""
    if found[1] == "no." and ANSWER.search(found.string, max(0, found.start() - 10), found.start()):
        return found[0]
    return f"{words.before_number[found[1]]} {value(found[2]) if found[2] else ''}"


def spoken(found, words):
    """One that ends a sentence leaves its stop there."""
    ends = found[2] is not None and found[1].endswith(".")
    one = found[1] == "Std." and ONE_HOUR.search(found.string, max(0, found.start() - 10), found.start())
    return ("Stunde" if one else words.abbreviations[found[1]]) + ("." if ends else "")
