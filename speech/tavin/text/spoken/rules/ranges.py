"""From one number to another, and what two sides have scored."""

import re

from tavin.text.spoken.rules.times import DURATION

RANGE = re.compile(
    r"(?<![\w.,:/+–-])([$€£]?)(\d{1,9}(?:[.,]\d{1,9})?) ?([%°]?)(–| – |-)([$€£]?)(\d{1,9}(?:[.,]\d{1,9})?)"
    r"(?![\w–-]*[\d–-]|[.,:/]\d)"
)
RATIO = re.compile(rf"(?<![\w.,:/-])(\d{{1,3}}):(\d{{1,3}})(?![\w:]*\d|[.,/-]\d| ?{DURATION})")
SCALE = re.compile(rf"(?<![\w.,:/-])(1):(\d{{2,6}}(?:[.,]000)?)(?![\w:]*\d| ?{DURATION})")


def say(sentence, words):
    if not words.to:
        return sentence
    scored = bool(re.search(words.scored, sentence, re.IGNORECASE))
    sentence = RANGE.sub(lambda found: spoken(found, scored, words), sentence)
    sentence = RATIO.sub(lambda found: f"{found[1]} {words.score} {found[2]}", sentence)
    return SCALE.sub(lambda found: f"{found[1]} {words.score} {found[2]}", sentence)


def spoken(found, scored, words):
    sign, first, unit, dash, other, last = found.groups()
    if scored and len(first) < 3 and len(last) < 3 and not sign and not unit:
        return f"{first} {words.score} {last}"
    if dash == "-" and ("." in first) != ("." in last):  # of a version
        return found[0]
    if not sign and not unit and (said := years(first, last, words)):
        return said
    if dash == "-" and (len(first) == 3 and len(last) == 4 or size(first) >= size(last) or first.startswith("0")):
        return found[0]
    if len(first) == 4 and len(last) == 2:  # years of one century
        last = first[:2] + last
    sign, other = (sign, other) if other else ("", sign)  # "$5–10 million" are five to ten million dollars
    return f"{sign}{first}{unit} {words.to} {other}{last}"


def years(first, last, words):
    """Those of one century, "1914-18", unless it may be a month of one; in French and Spanish a season, "2023-2024"."""
    if not (first + last).isdigit() or len(first) != 4:
        return None
    if len(last) == 2 and first[0] in "12" and int(last) > max(12, int(first[2:])):
        return f"{first} {words.to} {first[:2]}{last}"
    if words.language in ("fr", "es") and int(last) == int(first) + 1:
        return f"{first} {last}"
    return None


def size(number):
    return float(number.replace(",", ".")) if number.count(",") + number.count(".") < 2 else 0.0
