"""Initials of a name: a stop after each would be heard as a sentence's end."""

import re

# Two of them, one at the beginning, or one between names: "vitamin C. Then" is none of that.
SEVERAL = re.compile(r"(?<![\w.])(?:[A-ZÄÖÜÉ]\. ?){2,6}(?=[A-ZÄÖÜÉ][a-zà-ÿ])")
FIRST = re.compile(r"^([\"“„«(]?[A-ZÄÖÜÉ])\. (?=[A-ZÄÖÜÉ][a-zà-ÿ]{2})")
MIDDLE = re.compile(r"(?<=[a-zà-ÿ] )([A-ZÄÖÜÉ])\. (?=[A-ZÄÖÜÉ][a-zà-ÿ]{2})")
NAME_BEFORE = re.compile(r"\b[A-ZÄÖÜÉ][a-zà-ÿ]+ $")


def say(sentence, words):
    sentence = SEVERAL.sub(lambda found: " ".join(found[0].replace(".", " ").split()) + " ", sentence)
    sentence = FIRST.sub(r"\1 ", sentence)
    return MIDDLE.sub(lambda found: f"{found[1]} " if NAME_BEFORE.search(found.string[: found.start()][-40:]) else found[0], sentence)
