"""Days of the week from one to another, by their names: opening hours, and dates."""

import functools
import re

from tavin.text.spoken.languages import words_of_locale
from tavin.text.spoken.patterns import any_of
from tavin.text.spoken.rules.dates import months

# Words as well, which are days in a span, in a date, after the hours of another day, or after “on”.
ALSO_WORDS = {"So", "mar", "mer", "jeu", "Sun", "Sat", "Wed"}
HOUR = r"\d{1,2}(?:[:.]\d\d)?"
SPAN = rf"{HOUR} ?[-–] ?{HOUR}"
# Not "3-4 times", "10-15 years".
OPEN = rf"(?=,? (?:(?:{SPAN}|{HOUR}) ?(?:Uhr|h|[ap]\.?m)\b|\d{{1,2}}:\d\d|{SPAN}(?=[,;)|\n]|\.?\s*$)))"
# Beside a month's name, or in figures: "20.10.", "10/16".
DAY_OF_MONTH = r"(?:\d{1,2}(?:st|nd|rd|th|er)?\.? (?:de |of )?)?"
DAY_AND_MONTH = r"\d{1,2}(?:\. ?\d{1,2}\.|/\d{1,2}\b)"


def say(sentence, words):
    if not words.weekdays:
        return sentence
    span, *others = patterns(tuple(words.weekdays), words.locale)
    sentence = span.sub(lambda found: f"{words.weekdays[found[1]]} {words.to} {words.weekdays[found[2]]}", sentence)
    for one in others:
        sentence = one.sub(lambda found: words.weekdays[found[found.lastindex]], sentence)
    return sentence


@functools.cache
def patterns(names, locale):
    """For two days with a dash between them, one before an hour ("Sa 9–13 Uhr", "sam. 9h"), and one of a date."""
    short = words_of_locale(locale).short_months
    day, alone = (rf"({any_of(some)})\b" for some in (names, set(names) - ALSO_WORDS))
    return (
        re.compile(rf"(?<![\w.-]){day}\.? ?[-–] ?{day}\.?(?![\w-])"),
        re.compile(rf"(?<![\w.-]){alone}\.?,?{OPEN}"),
        re.compile(rf"(?:(?<=[\dhm][,;] )|(?<=Uhr[,;] )|(?<=\b[Oo]n )){day}\.?,?{OPEN}"),
        re.compile(rf"(?<![\w.-]){day}\.(?= \d{{1,2}}(?:er)? (?:de )?(?:{any_of(months(locale))})\b)"),
        re.compile(rf"(?<![\w.-]){day}\.?(?=,? {DAY_OF_MONTH}(?:{any_of([*months(locale), *short])})\b)"),
        re.compile(rf"(?<![\w.-])(?:{alone}|{day}(?=\.?,))\.?(?=,? {DAY_AND_MONTH})"),
    )
