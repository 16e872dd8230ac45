"""A date in numbers: with the month's name, and the day as one says it."""

import functools
import re

import icu

from tavin.text.spoken.rules.numbers import spelled

ISO = re.compile(r"(?<![\w.,/-])(\d{4})-(0[1-9]|1[0-2])-(0[1-9]|[12]\d|3[01])(?=T?\d\d:|\b(?![-/]))(?:T(?=\d\d:))?")
POINTS = re.compile(
    r"(?<![\w.,/-])(0?[1-9]|[12]\d|3[01])\. ?(0?[1-9]|1[0-2])\.(?: ?(\d{4}|\d{2})(?![\w.,]*\d))?(?!\d)"
)
SLASHES = re.compile(r"(?<![\w.,/-])(\d{1,2})([/-])(\d{1,2})\2(\d{4})(?![\w/-])")
# In German before a month or where an article or the like says that it is one.
GERMAN_DAY = re.compile(
    r"(?:\b(am|vom|zum|im|dem|den|des|beim|ab|bis|seit|einem|einen|der|die|das|Der|Die|Das|Am|Im|Zum|Vom|Den|Ab"
    r"|Bis|Seit) )?(?<![\w.,])(\d{1,3})\. (?=("
    r"Januar|Jänner|Februar|März|April|Mai|Juni|Juli|August|September|Oktober|November|Dezember|Jan\.|Feb\."
    r"|Aug\.|Sept\.|Okt\.|Nov\.|Dez\.|Jahrhundert|Jh\.|Weltkrieg)|[a-zäöü]{3}|[A-ZÄÖÜ][a-zäöüß]{2})"
)
NOMINATIVE = ("der", "die", "das")


def say(sentence, words):
    if not any(map(str.isdigit, sentence)):
        return sentence
    language = words.locale[:2]
    if words.signs:  # of the languages whose order of day and month is known here
        sentence = ISO.sub(lambda date: from_iso(date, words), sentence)
        sentence = SLASHES.sub(lambda date: from_numbers(date, words), sentence)
    if language == "de":
        sentence = POINTS.sub(lambda date: spoken(date[1], date[2], full_year(date[3]), words), sentence)
        sentence = GERMAN_DAY.sub(lambda day: german(day, words), sentence)
    return sentence


def from_iso(date, words):
    """And a pause before the time, where that follows."""
    return spoken(date[3], date[2], date[1], words) + (", " if date[0].endswith("T") else "")


def from_numbers(date, words):
    one, other = int(date[1]), int(date[3])
    day, month = (other, one) if words.month_first and one <= 12 or other > 12 else (one, other)
    return spoken(day, month, date[4], words) if 1 <= month <= 12 and 1 <= day <= 31 else date[0]


def spoken(day, month, year, words):
    day, month = str(int(day)), months(words.locale)[int(month) - 1]
    if words.month_first:
        return f"{month} {day}, {year} ".rstrip() if year else f"{month} {day}"
    if words.locale == "de":
        day = f"{day}."
    if words.first and day == "1":
        day = words.first
    return words.of_date.join(part for part in (day, month, year) if part)


def full_year(year):
    """Of two digits those of our time."""
    return year if not year or len(year) == 4 else ("20" if int(year) < 50 else "19") + year


@functools.cache
def months(locale):
    return icu.DateFormatSymbols(icu.Locale(locale)).getMonths()


def german(day, words):
    before, number, month = day[1], int(day[2]), day[3]
    if not before and not month:
        return day[0]
    ending = "" if before and before.lower() in NOMINATIVE else "-n" if before else "-r"
    said = spelled(number, f"%spellout-ordinal{ending}", words)
    return f"{before} {said} " if before else f"{said} "
