"""Fractions."""

import re
import unicodedata

SIGNS = "½⅓⅔¼¾⅕⅖⅗⅘⅙⅚⅛⅜⅝⅞"
SIGN = re.compile(rf"(?:(\d{{1,4}}) ?)?([{SIGNS}])")
UNIT = r"(?:l|L|ml|cl|dl|g|kg|mg|m|km|cm|mm|h|lbs?|oz)\b"  # "ein halb l" is said by nobody
FIGURES = re.compile(rf"(?<![\w.,/:+-])(?:(\d{{1,3}}) )?([1-9])/([234568]|10)(?![\w/]|[.,:/]\d| ?{UNIT})")


def say(sentence, words):
    if not words.denominators:
        return sentence
    sentence = SIGN.sub(lambda found: spoken(found[1], *parts(found[2]), words), sentence)
    return FIGURES.sub(lambda found: from_figures(found, words), sentence)


def parts(sign):
    above, below = unicodedata.normalize("NFKD", sign).split("\u2044")
    return int(above), int(below)


def from_figures(found, words):
    above, below = int(found[2]), int(found[3])
    return spoken(found[1], above, below, words) if above < below else found[0]


def spoken(whole, above, below, words):
    if (above, below) == (1, 2):
        return words.and_a_half.format(whole) if whole else words.half
    one, many = words.denominators[below]
    said = f"{words.one} {one}" if above == 1 else f"{above} {many}"
    return words.mixed.format(whole, said) if whole else said
