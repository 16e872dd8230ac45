"""Years that are not said as other numbers are."""

import re

from tavin.text.spoken.rules.numbers import spelled

# In German, where a word before it says that it is one.
GERMAN = re.compile(
    r"\b(Jahre?n?|[Ss]eit|[Vv]on|[Bb]is|um|[Aa]nno|Januar|Februar|März|April|Mai|Juni|Juli|August|September"
    r"|Oktober|November"
    r"|Dezember|Sommer|Winter|Herbst|Frühjahr|Frühling) (1[1-9]\d\d)\b"
    r"(?![.,:/–-]?\d| ?[€%$°]| (?:Euro|Mark|Menschen|Personen|Meter|Kilometer|Kilo|Stück|Tonnen)\b)"
)
GERMAN_FIRST = re.compile(r"(?<![\w.,/])(1[1-9]\d\d)(?= bis (?:1[1-9]|20)\d\d\b(?! ?[€%$°]| (?:Euro|Mark|Meter|Personen)))")
YEAR_SET = "%spellout-numbering-year"
# Two figures alone may be seconds: "30s".
DECADE = re.compile(
    r"(?:\b(?P<of>the|his|her|their|my|our|early|mid|late|low|upper)[ -])?(?<![\w'’])(?P<mark>['’])?"
    r"(?P<century>\d\d)?(?P<ten>\d0)(?P<plural>['’])?(?-i:s)\b(?! (?:timeout|delay|limit|pause|mark|interval)\b)",
    re.IGNORECASE,
)
# As in "the thirties and 40s": the first is said by then.
ANOTHER = re.compile(r"\b((?:twen|thir|for|fif|six|seven|eigh|nine)ties)(,? (?:and|or|to)) '?([1-9]0)s\b")


def say(sentence, words):
    if words.language == "de":
        sentence = GERMAN_FIRST.sub(lambda year: spelled(int(year[1]), YEAR_SET, words), sentence)
        return GERMAN.sub(lambda year: f"{year[1]} {spelled(int(year[2]), YEAR_SET, words)}", sentence)
    if not words.decades:
        return sentence
    sentence = DECADE.sub(lambda years: decade(years, words), sentence)
    return ANOTHER.sub(lambda years: f"{years[1]}{years[2]} {tens(int(years[3]), words)}", sentence)


def decade(years, words):
    """ "1990s" is "nineteen nineties", "'90s" is "nineties"."""
    if not any(years.group("of", "mark", "century", "plural")):
        return years[0]
    before = years[0][: years.end("of") - years.start() + 1] if years["of"] else ""
    century, ten = years["century"], int(years["ten"])
    if not ten:
        return before + hundreds(int(century), words) if century else years[0]
    plural = tens(ten, words)
    return before + (f"{spelled(int(century), '%spellout-numbering', words)} {plural}" if century else plural)


def tens(ten, words):
    return spelled(ten, "%spellout-numbering", words).removesuffix("y") + "ies" if ten > 10 else "tens"


def hundreds(century, words):
    if century % 10 == 0:
        return spelled(century * 100, "%spellout-numbering", words) + "s"
    return spelled(century, "%spellout-numbering", words) + " hundreds"
