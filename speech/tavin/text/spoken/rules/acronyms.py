"""Acronyms that synthesisers read as words and people as letters, and the other way about."""

import re

PATTERNS = {}
LOWER = re.compile(r"[a-zß-öø-ÿ]")


def say(sentence, words):
    if not words.acronyms or not LOWER.search(sentence):  # all in capitals, they may be words
        return sentence
    if words.locale not in PATTERNS:
        known = "|".join(sorted(map(re.escape, words.acronyms), key=len, reverse=True))
        PATTERNS[words.locale] = re.compile(rf"(?<![\w.@/-])({known})(?!\w)(?![\w]*[./@]\w)")
    return PATTERNS[words.locale].sub(lambda found: words.acronyms[found[1]], sentence)
