"""Fractions."""

import re
import unicodedata

SIGNS = "½⅓⅔¼¾⅕⅖⅗⅘⅙⅚⅛⅜⅝⅞"
SIGN = re.compile(rf"(?:(\d{{1,4}}) ?)?([{SIGNS}])(?=([^\W\d_])?)")
# A mark, as in "8/10", is no part of something.
ON = r"(?!(?<=\b[Oo]n )\d{1,2}/\d{1,2}(?! of\b))"  # it may be a date
LENGTH = r"(?:miles?|inch(?:es)?|kilomet(?:er|re)s?|met(?:er|re)s?|acres?|seconds?|degrees?|points?|percent|cents?)"
MARK = re.compile(
    rf"(?<![\w.,/:+-]){ON}(\d{{1,2}}(?:[.,]\d{{1,2}})?)/(10|20|100)"
    rf"(?![\w/]|[.,:/-]\d| (?:of|der|des|de|del|{LENGTH})\b| d['’])"
)
GERMAN_FILE = re.compile(r"(?<![\w.,])(?:\d{1,3}|[IVX]{1,4}) [A-Z][A-Za-z]{0,3} $")  # of a court: "3 StR 12/20"
LONGEST_FILE = 12
OF_UNIT = re.compile(r"(?<![\w.,/:+-])([1-3])/([234]) (l|kg|lb)\b")
UNIT = r"(?:l|L|ml|cl|dl|g|kg|mg|m|km|cm|mm|h|lbs?|oz)\b"  # "ein halb l" is said by nobody
FIGURES = re.compile(rf"(?<![\w.,/:+-]){ON}(?:(\d{{1,3}}) )?([1-9])/([234568]|10)(?![\w/]|[.,:/]\d| ?{UNIT})")


def say(sentence, words):
    if not words.denominators:
        return sentence
    sentence = SIGN.sub(lambda found: spoken(found[1], *parts(found[2]), words) + (" " if found[3] else ""), sentence)
    if words.with_fractions:
        sentence = OF_UNIT.sub(lambda found: of_unit(found, words), sentence)
    sentence = MARK.sub(lambda found: marked(found, words), sentence)
    return FIGURES.sub(lambda found: from_figures(found, words), sentence)


def of_unit(found, words):
    above, below, unit = int(found[1]), int(found[2]), found[3]
    if above >= below or unit not in words.with_fractions:
        return found[0]
    half, behind = words.with_fractions[unit]
    return half if (above, below) == (1, 2) else f"{spoken(None, above, below, words)} {behind}"


def marked(found, words):
    return found[0] if is_file(found, words) or found[1] in ("1", found[2]) else f"{found[1]} {words.out_of} {found[2]}"


def is_file(found, words):
    return words.language == "de" and GERMAN_FILE.search(found.string, max(0, found.start() - LONGEST_FILE), found.start())


def parts(sign):
    above, below = unicodedata.normalize("NFKD", sign).split("\u2044")
    return int(above), int(below)


def from_figures(found, words):
    above, below = int(found[2]), int(found[3])
    return spoken(found[1], above, below, words) if above < below and not is_file(found, words) else found[0]


def spoken(whole, above, below, words):
    if (above, below) == (1, 2):
        return words.and_a_half.format(whole) if whole else words.half
    one, many = words.denominators[below]
    said = f"{words.one} {one}" if above == 1 else f"{above} {many}"
    return words.mixed.format(whole, said) if whole else said
