"""A date in numbers: with the month's name, and the day as one says it."""

import functools
import re

import icu

from tavin.text.spoken.languages import words_of_locale
from tavin.text.spoken.patterns import any_of
from tavin.text.spoken.rules.numbers import spelled

ISO = re.compile(r"(?<![\w.,/-])(\d{4})-(0[1-9]|1[0-2])-(0[1-9]|[12]\d|3[01])(?=T?\d\d:|\b(?![-/]))(?:T(?=\d\d:))?")
DAY_AND_MONTH = r"(?<![\w.,/-])(0?[1-9]|[12]\d|3[01])\. ?(0?[1-9]|1[0-2])\."
POINTS = re.compile(rf"(?<!Version ){DAY_AND_MONTH} ?(\d{{4}})(?![\w.,]*\d)")
# Without a whole year it may be a chapter or a version as well, but for where this shows that it is none.
SHORT_POINTS = re.compile(
    rf"(?:(?<=tag, )|(?<=woch, )|(?<=\b[Aa]m )|(?<=\b[Aa]b )|(?<=\b(?:[Vv]om|[Zz]um|[Bb]is|[Dd]er|[Dd]en|[Dd]em) )|(?<=\b[Ss]eit )"
    rf"|(?<=\beinen )|^(?=[\d. ]{{4,9}}(?: ist| war|[,:]))){DAY_AND_MONTH}"
    rf"(?: ?(\d{{2}})(?![\w.,]*\d))?(?!\d)(?=(\s*[\"”»’')]*\s*$)?)"
)
SLASHES = re.compile(r"(?<![\w.,/-])(\d{1,2})([/-])(\d{1,2})\2(\d{4})(?![\w/-])")
# In German before a month or where an article or the like says that it is one.
GERMAN_DAY = re.compile(
    r"(?:\b((?:am|vom|zum|im|dem|den|des|beim|Beim|ab|bis|spätestens|seit|einem|einen|der|die|das|Der|Die|Das|Am|Im|Zum|Vom|Den|Ab"
    r"|Bis|Seit)(?: (?:\w{2,7}tag|Mittwoch|Sonnabend),?)?) )?(?<![\w.,/])(\d{1,3})\. (?=("
    r"Januar|Jänner|Februar|März|April|Mai|Juni|Juli|August|September|Oktober|November|Dezember|Jan\.|Feb\."
    r"|Aug\.|Sept\.|Okt\.|Nov\.|Dez\.|Jahrhundert|Jh\.|Weltkrieg)|[a-zäöü]{3}|[A-ZÄÖÜ][a-zäöüß]{2}|[A-ZÄÖÜ]{2})"
)
GERMAN_DAYS = re.compile(
    r"(?:\b([Vv]om|[Aa]m|[Zz]um|[Dd]en|[Dd]em) )?(?<![\w.,/])(\d{1,2})\. ?[-–] ?(\d{1,2})\. "
    r"(?=Jan|Jän|Feb|März|Apr|Mai|Jun|Jul|Aug|Sept|Okt|Nov|Dez)"
)
# The day of a second one, as in "im 19. und 20. Jahrhundert".
SECOND = re.compile(r"\b(?:[IiAa]m|[VvZz][ou]m|[Dd]e[smn]) \d{1,2}\. (?:bzw\.|und|oder|bis|/) $")
# The day first, but for where what stands before shows that it is one, and it is no part of something.
DAY_SLASH = re.compile(
    r"(?:(?<=\b(?:[Ll]e|[Aa]u|[Ee]l|[Aa]l) )|(?<=\b[Dd]u )(?=[\d/]{3,5} au \d{1,2}/)|(?<=\b[Dd]el )(?=[\d/]{3,5} al \d{1,2}/))"
    r"(?!1/[2-5]\b|2/[35]\b|3/[458]\b)(\d{1,2})/(\d{1,2})(?![\w/]|[.,-]\d| d(?:e|u|es|el)\b| d['’])"
)
WEEKDAY_SLASH = re.compile(
    r"(?:(?<=(?:Mon|Sun|Fri)day )|(?<=Tuesday )|(?<=Wednesday )|(?<=Thursday )|(?<=Saturday ))"
    r"(\d{1,2})/(\d{1,2})(?![\w/]|[.,-]\d)"
)
LIVED = re.compile(r"(?:(?<=[(])|(?<=[;,] ))([*†]) ?(?=(?:um |ca\. |c\. |v\. |h\. )?(?:\d{3,4}\b|(\d{1,2}\.? (?:de )?[^\W\d_]{3})))")
FROM = re.compile(  # no version "3.12.1"
    r"(?:(?<![\w.] )(?<![\w.])|(?<=[^\W\d_]{2} )|(?<=[a-zß]{2}\. )|(?<=\d ))v\. (?=\d{1,2}\. ?(?:\d{1,2}\.(?!\d(?!\d))|[A-ZÄÖÜ]))"
)
COUNTED = "(?:years?|months?|weeks?|days?|hours?|minutes?|times|people|percent|points?)"  # "Jan" is a name as well
WEEKDAY = re.compile(r"(?:tag|woch|abend),?$")
ACCUSATIVE = ("bis", "den", "einen")
NOMINATIVE = ("der", "die", "das")
CENTURY = ("Jahrhundert", "Jh.")
DATIVE = re.compile(r"\b(?:in|an|auf|mit|bei|nach|vor|von|zu|aus|seit|unter|hinter|neben|zwischen|ab) $", re.IGNORECASE)


def say(sentence, words):
    if not any(map(str.isdigit, sentence)):
        return sentence
    sentence = LIVED.sub(lambda found: lived(found, words), sentence)
    if words.short_months:
        before, behind = short_months(words.locale)
        of = words.of_date.lstrip()
        sentence = behind.sub(lambda found: f"{of}{words.short_months[found[1]]}{words.of_date.rstrip()}", sentence)
        sentence = before.sub(lambda found: words.short_months[found[1]], sentence) if words.language == "en" else sentence
    if words.signs:  # of the languages whose order of day and month is known here
        sentence = ISO.sub(lambda date: from_iso(date, words), sentence)
        sentence = SLASHES.sub(lambda date: from_numbers(date, words), sentence)
        slash = {"en": WEEKDAY_SLASH, "fr": DAY_SLASH, "es": DAY_SLASH}.get(words.language)
        sentence = slash.sub(lambda date: without_year(date, words), sentence) if slash else sentence
    if words.language == "de":
        sentence = FROM.sub("vom ", sentence)
        sentence = POINTS.sub(lambda date: spoken(date[1], date[2], date[3], words), sentence)
        sentence = SHORT_POINTS.sub(lambda date: short(date, words), sentence)
        sentence = GERMAN_DAYS.sub(lambda days: german_days(days, words), sentence)
        sentence = GERMAN_DAY.sub(lambda day: german(day, words), sentence)
    return sentence


def from_iso(date, words):
    """And a pause before the time, where that follows."""
    return spoken(date[3], date[2], date[1], words) + (", " if date[0].endswith("T") else "")


def from_numbers(date, words):
    one, other = int(date[1]), int(date[3])
    day, month = (other, one) if words.month_first and one <= 12 or other > 12 else (one, other)
    return spoken_if_valid(date, day, month, date[4], words)


def without_year(date, words):
    day, month = (int(date[2]), int(date[1])) if words.month_first else (int(date[1]), int(date[2]))
    return spoken_if_valid(date, day, month, "", words)


def spoken_if_valid(date, day, month, year, words):
    return spoken(day, month, year, words) if 1 <= month <= 12 and 1 <= day <= 31 else date[0]


def lived(found, words):
    said = words.born if found[1] == "*" else words.died
    return f"{said[0 if found[2] else 1]} " if said else found[0]


@functools.cache
def short_months(locale):
    """Before a day, and behind one."""
    short = any_of(words_of_locale(locale).short_months)
    return (
        re.compile(rf"(?<![\w.-])({short})(?= \d{{1,2}}(?:st|nd|rd|th)?\b(?![:.]\d|%| {COUNTED}\b))"),
        re.compile(rf"(?<=\d )({short})\b\.?(?=,? \d{{4}}\b)"),
    )


def spoken(day, month, year, words):
    day, month = str(int(day)), months(words.locale)[int(month) - 1]
    if words.month_first:
        return f"{month} {day}, {year} ".rstrip() if year else f"{month} {day}"
    if words.language == "de":
        day = f"{day}."
    if words.first and day == "1":
        day = words.first
    return words.of_date.join(part for part in (day, month, year) if part)


def short(date, words):
    """The month's point ends the sentence as well, at its end. Of two digits for a year, those of our time."""
    year = date[3] and ("20" if int(date[3]) < 50 else "19") + date[3]
    return spoken(date[1], date[2], year, words) + ("." if date[4] is not None and not year else "")


@functools.cache
def months(locale):
    return icu.DateFormatSymbols(icu.Locale(locale)).getMonths()


def german_days(days, words):
    ending = "-n" if days[1] else "-r"
    first, last = (spelled(int(day), f"%spellout-ordinal{ending}", words) for day in days.group(2, 3))
    return f"{days[1]} {first} bis {last} " if days[1] else f"{first} bis {last} "


def german(day, words):
    before, number, month = day[1], int(day[2]), day[3]
    if not before and not month:
        return day[0]
    dative = before == "der" and DATIVE.search(day.string, max(0, day.start() - 10), day.start())
    nominative = before and before.split()[0].lower() in NOMINATIVE and not dative
    second = SECOND.search(day.string, max(0, day.start() - 20), day.start())
    if before and not nominative and WEEKDAY.search(before):
        before += " den" if before.split()[0].lower() in ACCUSATIVE else " dem"
    ending = "" if nominative else "-n" if before or second else "-s" if month in CENTURY else "-r"
    said = spelled(number, f"%spellout-ordinal{ending}", words)
    return f"{before} {said} " if before else f"{said} "
