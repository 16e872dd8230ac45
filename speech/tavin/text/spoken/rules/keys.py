"""Of a checksum, a key or another endless number only the beginning is said, and how long it is."""

import re

KEY = re.compile(
    r"(?<![\w-])(?=[0-9a-fA-F-]{0,40}\d)(?=[0-9a-fA-F-]{0,40}[a-fA-F])[0-9a-fA-F]{7,}(?:-[0-9a-fA-F]{4,}){0,8}"
    r"(?![\w-])"
    r"|(?<![\w+/=-])(?=[\w+/-]{0,60}\d)(?=[\w+/-]{0,60}[a-z])(?=[\w+/-]{0,60}[A-Z])[A-Za-z0-9+/_-]{24,}={0,2}"
    r"(?![\w+/=-])"
)
SAID = 4
LONG_NUMBER = re.compile(r"(?<![\w.,])\d{13,}(?![\w.,]*\d)")


def say(sentence, words):
    sentence = KEY.sub(lambda key: spoken(key[0], words), sentence)
    return LONG_NUMBER.sub(lambda number: " ".join(number[0]), sentence)


def spoken(key, words):
    if len(key) <= 2 * SAID:
        return " ".join(key)
    return words.more.format(" ".join(key[:SAID]), count=len(key) - SAID)
