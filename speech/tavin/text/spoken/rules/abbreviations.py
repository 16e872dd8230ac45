"""Abbreviations in full: a stop within a sentence is heard as its end."""

import re

PATTERNS = {}
STREET = re.compile(r"(?<=[a-z\d] )St\.(?=,|$| (?:[a-z]|[NSEW]\b))")
SAINT = re.compile(r"\bSt\. (?=[A-Z])")


def say(sentence, words):
    if not words.abbreviations:
        return sentence
    everywhere, before_number = patterns(words)
    if words.locale.startswith("en"):
        sentence = SAINT.sub("Saint ", STREET.sub("Street", sentence))
    sentence = before_number.sub(lambda found: words.before_number[found[1]], sentence)
    return everywhere.sub(lambda found: spoken(found, words), sentence)


def patterns(words):
    if words.locale not in PATTERNS:
        PATTERNS[words.locale] = (
            re.compile(rf"(?<![\w.’'-])({alternatives(words.abbreviations)})(?!\w)(?=(\s*[\"”»’')]*\s*$)?)"),
            re.compile(rf"(?<![\w.’'-])({alternatives(words.before_number)})(?= ?\d| ?[IVX]+\b)"),
        )
    return PATTERNS[words.locale]


def alternatives(table):
    return "|".join(sorted(map(re.escape, table), key=len, reverse=True)) or "(?!)"


def spoken(found, words):
    """One that ends a sentence leaves its stop there."""
    ends = found[2] is not None and found[1].endswith(".")
    return words.abbreviations[found[1]] + ("." if ends else "")
