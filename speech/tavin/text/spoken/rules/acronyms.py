"""Acronyms that synthesisers read as words and people as letters, and the other way about."""

import functools
import re

from tavin.text.spoken.patterns import any_of

LOWER = re.compile(r"[a-zß-öø-ÿ]")


def say(sentence, words):
    if not words.acronyms or not LOWER.search(sentence):  # all in capitals, they may be words
        return sentence
    return pattern(tuple(words.acronyms)).sub(lambda found: words.acronyms[found[1]], sentence)


@functools.cache
def pattern(known):
    return re.compile(rf"(?<![\w.@/-])({any_of(known)})(?!\w)(?![\w]*[./@]\w)")
