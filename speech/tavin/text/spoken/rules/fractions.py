"""Fractions."""

import re
import unicodedata

from tavin.text.spoken.rules.numbers import decimal_sign

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
OF_UNIT = re.compile(r"(?<![\w.,/:+-])(?<!\d )([1-3])/([234]) (l|kg|lb)\b")
UNIT = r"(?:l|L|ml|cl|dl|g|kg|mg|m|km|cm|mm|h|lbs?|oz)\b"  # "ein halb l" is said by nobody
ONE = r"([1-9])/([234568]|10)"
FIGURES = re.compile(rf"(?<![\w.,/:+-]){ON}(?:(\d{{1,3}}) )?{ONE}(?![\w/]|[.,:/-]\d| ?{UNIT})")
SPAN = re.compile(rf"(?<![\w.,/:+-])((?:\d{{1,3}} )?{ONE}) ?[-–] ?(?={ONE}(?![\w/-]|[.,:]\d))")
WITH_HYPHEN = re.compile(rf"(?<![\w.,/:+-])(\d{{1,2}})-(?={ONE}(?![\w/-]|[.,:]\d))")  # as in "1-1/2 cups"
# With a unit behind it the whole is said as a decimal.
MIXED = re.compile(rf"(?<![\w.,/:+-])(\d{{1,3}})(?: ?([½¼¾⅛⅜⅝⅞])| (1/2|[13]/4|[1357]/8)) ?(?=(?:[Tt]b?sps?|{UNIT})(?!\w))")
METER = re.compile(  # of music; "works 3/4 time" and "3/4 meter of cloth" are something else
    r"(?<![\w.,/:+-])(?:(?<=\b[Ii]n )(?=\S{3,5} time\b)|(?=\S{3,5} (?:time signature|rhythm)\b))([2-9]|12)/([248]|16) "
)
# Which one of several it is: "part 2/5", "[PATCH 2/5]".
PART = re.compile(
    r"(?:\b(?:[Pp]art|[Pp]age|[Ss]tep|[Ss]lide|[Ee]pisode|Teil|Seite|Schritt|Folie|Folge|[Pp]artie|[ÉEé]tape"
    r"|[Pp]arte|[Pp]ágina|[Pp]aso|[Ee]pisodio) |(\[)(?:[^\[\]]{0,12}PATCH|v\d{1,2})[^\[\]]{0,6} )$"
)
# Not "step 1/2 mile"; whether "part 1/2 of the way" is one of two nobody knows.
MEASURED = re.compile(rf" (?:{LENGTH}|heures?|horas?|Stunden?|cups?)\b")
OF = re.compile(r" (?:of|der|des|de|del|du)\b| d['’]")
LONGEST_BEFORE = 22


def say(sentence, words):
    if not words.denominators:
        return sentence
    sentence = MIXED.sub(lambda found: decimal(found, words), sentence)
    sentence = SIGN.sub(lambda found: spoken(found[1], *parts(found[2]), words) + (" " if found[3] else ""), sentence)
    if words.with_fractions:
        sentence = OF_UNIT.sub(lambda found: of_unit(found, words), sentence)
    if words.language == "en":
        sentence = METER.sub(r"\1 \2 ", WITH_HYPHEN.sub(r"\1 ", sentence))
        sentence = SPAN.sub(rf"\1 {words.to} ", sentence)  # elsewhere they are dates: "2/8-5/8"
    sentence = MARK.sub(lambda found: marked(found, words), sentence)
    return FIGURES.sub(lambda found: from_figures(found, words), sentence)


def of_unit(found, words):
    above, below, unit = int(found[1]), int(found[2]), found[3]
    if above >= below or unit not in words.with_fractions:
        return found[0]
    half, behind = words.with_fractions[unit]
    return half if (above, below) == (1, 2) else f"{spoken(None, above, below, words)} {behind}"


def marked(found, words):
    """No date: "12/10"."""
    is_mark = found[1] != "1" and float(found[1].replace(",", ".")) < int(found[2]) and not is_file(found, words)
    return f"{found[1]} {words.out_of} {found[2]}" if is_mark else found[0]


def is_file(found, words):
    return words.language == "de" and GERMAN_FILE.search(found.string, max(0, found.start() - LONGEST_FILE), found.start())


def parts(sign):
    above, below = unicodedata.normalize("NFKD", sign).split("\u2044")
    return int(above), int(below)


def decimal(found, words):
    above, below = parts(found[2]) if found[2] else map(int, found[3].split("/"))
    return f"{found[1]}{decimal_sign(words)}{str(above / below).removeprefix('0.')} "


def is_part(found):
    before = PART.search(found.string, max(0, found.start() - LONGEST_BEFORE), found.start())
    return bool(before) and (not before[1] or found.string.startswith("]", found.end()))


def from_figures(found, words):
    above, below = int(found[2]), int(found[3])
    if not found[1] and is_part(found) and not MEASURED.match(found.string, found.end()):
        return found[0] if OF.match(found.string, found.end()) else f"{above} {words.out_of} {below}"
    return spoken(found[1], above, below, words) if above < below and not is_file(found, words) else found[0]


def spoken(whole, above, below, words):
    if (above, below) == (1, 2):
        return words.and_a_half.format(whole) if whole else words.half
    one, many = words.denominators[below]
    said = f"{words.one} {one}" if above == 1 else f"{above} {many}"
    return words.mixed.format(whole, said) if whole else said
