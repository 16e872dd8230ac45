"""Initials of a name: a stop after each would be heard as a sentence's end."""

import re

# Two of them, one at the beginning, or one between names: "vitamin C. Then" is none of that.
SEVERAL = re.compile(r"(?<![\w.])(?:[A-ZÄÖÜÉ]\. ?){2,6}(?=[A-ZÄÖÜÉ][a-zà-ÿ])")
FIRST = re.compile(r"^([\"“„«(]?[A-ZÄÖÜÉ])\. (?=[A-ZÄÖÜÉ][a-zà-ÿ]{2})")
MIDDLE = re.compile(r"(?<=[a-zà-ÿ] )([A-ZÄÖÜÉ])\. (?=[A-ZÄÖÜÉ][a-zà-ÿ]{2})")
LONGEST_NAME = 40
NAME_BEFORE = re.compile(r"\b[A-ZÄÖÜÉ][a-zà-ÿ]+ $")


def say(sentence, words):
    sentence = SEVERAL.sub(lambda found: " ".join(found[0].replace(".", " ").split()) + " ", sentence)
    sentence = FIRST.sub(r"\1 ", sentence)
    return MIDDLE.sub(between_names, sentence)


def between_names(found):
    before = found.string[max(0, found.start() - LONGEST_NAME) : found.start()]
    return f"{found[1]} " if NAME_BEFORE.search(before) else found[0]
