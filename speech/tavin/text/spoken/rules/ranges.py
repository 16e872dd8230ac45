"""From one number to another, and what two sides have scored."""

import re

from tavin.text.spoken.rules.dates import months
from tavin.text.spoken.rules.times import DURATION

RANGE = re.compile(
    r"(?<![\w.,:/+–-])([$€£]?)(\d{1,9}(?:[.,]\d{1,9})?) ?([%°]?)(–| – |-)([$€£]?)(\d{1,9}(?:[.,]\d{1,9})?)"
    r"(?![\w–-]*[\d–-]|[.,:/]\d)"
)
BOTH_IN = re.compile(r"(?<=\d)([KkMBbm]|bn|mn| [mb]illion)(?: ?– ?|-)(?=[$€£]\d[\d.,]{0,12}\1(?!\w))")  # "$100K-$200K"
AIRLINER = re.compile(r"7\d7-[1-9]00")
YEAR = re.compile(r"(?:1[5-9]|20)\d\d")
LONGEST_WORD = 40
BEHIND_DAY = re.compile(r"\.? (?:de )?([^\W\d_]{3,20})")
FROM_YEAR = re.compile(r"\b(?:de|du|depuis|entre|desde) $", re.IGNORECASE)
RATIO = re.compile(rf"(?<![\w.,:/<-])(\d{{1,3}}):(\d{{1,3}})(?![\w:]*\d|[.,/<-]\d| ?{DURATION})")
SCALE = re.compile(rf"(?<![\w.,:/-])(1):(\d{{2,6}}(?:[.,]000)?)(?![\w:]*\d| ?{DURATION})")


def say(sentence, words):
    if not words.to:
        return sentence
    scored = bool(re.search(words.scored, sentence, re.IGNORECASE))
    sentence = BOTH_IN.sub(rf"\1 {words.to} ", sentence)
    sentence = RANGE.sub(lambda found: spoken(found, scored, words), sentence)
    sentence = RATIO.sub(lambda found: f"{found[1]} {words.score} {found[2]}", sentence)
    return SCALE.sub(lambda found: f"{found[1]} {words.score} {found[2]}", sentence)


def spoken(found, scored, words):
    sign, first, unit, dash, other, last = found.groups()
    if scored and len(first) < 3 and len(last) < 3 and not sign and not unit:
        return f"{first} {words.score} {last}"
    if dash == "-" and ("." in first) != ("." in last):  # of a version
        return found[0]
    if not sign and not unit and (said := years(found, words)):
        return said
    before = found.string[max(0, found.start() - LONGEST_WORD) : found.start()]
    is_far = size(last) > 2 * size(first) > 1998 and not first.endswith("00")  # for a range: "order 1234-5678"
    if is_far and has_number(before, words) or AIRLINER.fullmatch(found[0]):
        return found[0]
    if dash == "-" and (len(first) == 3 and len(last) == 4 or size(first) >= size(last) or first.startswith("0")):
        return found[0]
    if len(first) == 4 and first.isdigit() and len(last) == 2:  # years of one century
        last = first[:2] + last
    sign, other = (sign, other) if other else ("", sign)  # "$5–10 million" are five to ten million dollars
    return f"{sign}{first}{unit} {words.to} {other}{last}"


def years(found, words):
    """Those of one century, "1914-18", unless it may be a month of one; in French and Spanish a season, "2023-2024"."""
    first, dash, last = found.group(2, 4, 6)
    before = found.string[max(0, found.start() - LONGEST_WORD) : found.start()]
    if not YEAR.fullmatch(first) or not last.isdigit() or has_number(before, words):
        return None
    if is_day(found, words):
        return f"{first} {words.to} {last}"
    if len(last) == 2 and int(last) > max(12, int(first[2:])):
        return f"{first} {words.to} {first[:2]}{last}"
    is_season = words.language in ("fr", "es") and int(last) == int(first) + 1 and " " not in dash
    return f"{first} {last}" if is_season and not FROM_YEAR.search(before) else None


def is_day(found, words):
    """Behind a whole date, as of a life: "5 May 1815 – 27 November 1852"."""
    month = BEHIND_DAY.match(found.string, found.end())
    return bool(month) and month[1] in (*months(words.locale), *words.short_months)


def has_number(before, words):
    """Whether it is one that things are told apart by."""
    return bool(re.search(rf"(?:#|(?<!\w)(?:{words.numbered})(?:[.:]| is| was| ist| war)? ?)$", before, re.IGNORECASE))


def size(number):
    return float(number.replace(",", ".")) if number.count(",") + number.count(".") < 2 else 0.0
