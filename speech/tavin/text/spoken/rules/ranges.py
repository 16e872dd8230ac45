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
    if dash == "-" and (len(first) == 3 and len(last) == 4 or size(first) >= size(last) or first.startswith("0")):
        return found[0]
    if len(first) == 4 and len(last) == 2:  # years of one century
        last = first[:2] + last
    sign, other = (sign, other) if other else ("", sign)  # "$5–10 million" are five to ten million dollars
    return f"{sign}{first}{unit} {words.to} {other}{last}"


def size(number):
    return float(number.replace(",", ".")) if number.count(",") + number.count(".") < 2 else 0.0
