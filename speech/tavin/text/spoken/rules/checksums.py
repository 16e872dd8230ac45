"""Of a checksum, a key or another endless number only the beginning is said, and how long it is."""

import re

KEY = re.compile(
    r"(?<![\w-])(?=[0-9a-fA-F-]{0,40}\d)(?=[0-9a-fA-F-]{0,40}[a-fA-F])[0-9a-fA-F]{7,}(?:-[0-9a-fA-F]{4,}){0,8}"
    r"(?![\w-])"
    r"|(?<![\w+/=-])(?=[\w+/-]{0,60}\d)(?=[\w+/-]{0,60}[a-z])(?=[\w+/-]{0,60}[A-Z])[A-Za-z0-9+/_-]{24,}={0,2}"
    r"(?![\w+/=-])"
)
# A file in letters, as of a certificate: whole lines, and the last one.
LINE = "[A-Za-z0-9+/]{60,76}"
LINES = re.compile(
    rf"(?<![\w+/=-])(?=[A-Z\d+/]{{0,60}}[a-z])(?=[a-z\d+/]{{0,60}}[A-Z]){LINE}(?:\s{LINE})+"
    r"(?:\s(?:[A-Za-z0-9+/]{2,75}={1,2}|(?=\S{0,60}\d)(?=\S{0,60}[a-z])(?=\S{0,60}[A-Z])[A-Za-z0-9+/]{8,75}))?"
    r"(?![\w+/=-])"
)
TAX_NUMBER = re.compile(r"(?:DE|EE)\d{9}|BE\d{10}")  # of a firm; every figure counts
SAID = 4
RUN = re.compile(r"[A-Z]?[a-z]+|[A-Z]+(?![a-z])|\d+")
RANDOM = 2.75  # letters or digits in a run, at most, in the middle; words have more
HEXADECIMAL = re.compile(r"[0-9a-fA-F-]+")
LONG_NUMBER = re.compile(r"(?<![\w.,])\d{13,}(?![\w.,]*\d)")


def say(sentence, words):
    sentence = LINES.sub(lambda lines: of_file(lines[0], words), sentence)
    sentence = KEY.sub(lambda key: spoken(key[0], words) if is_random(key[0]) else key[0], sentence)
    return LONG_NUMBER.sub(lambda number: " ".join(number[0]), sentence)


def of_file(lines, words):
    """Not two paths below each other."""
    letters = "".join(lines.split())
    return spoken(letters, words) if is_random(letters) else lines


def is_random(key):
    """Not "Quarterly_Report_2024_Final_Version", "testUserCanLogin2"."""
    if TAX_NUMBER.fullmatch(key):
        return False
    runs = RUN.findall(key)
    return HEXADECIMAL.fullmatch(key) or sum(map(len, runs)) < RANDOM * len(runs)


def spoken(key, words):
    if len(key) <= 2 * SAID:
        return " ".join(key)
    return words.more.format(" ".join(key[:SAID]), count=len(key) - SAID)
