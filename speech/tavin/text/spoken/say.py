"""Makes of a sentence what is said. The rules are loaded when they are first needed: their patterns take 20 ms."""

import functools

from tavin.text.spoken.bounds import fits
from tavin.text.spoken.languages import words_of
from tavin.text.spoken.marks import without_marks


def say(sentence, language, pronounce=lambda sentence, language: sentence):
    """`pronounce` are the user's own rules, which come first."""
    sentence = pronounce(sentence, language)
    words = words_of(language)
    said = sentence
    for rule in rules():
        said = rule.say(said, words)
    said = without_marks(said)
    return said if says_something(said, sentence) and fits(said, sentence) else without_marks(sentence)


@functools.cache
def rules():
    from tavin.text.spoken.rules import RULES

    return RULES


def says_something(said, sentence):
    """If the sentence does."""
    return any(map(str.isalnum, said)) or not any(map(str.isalnum, sentence))
