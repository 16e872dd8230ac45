"""A time of the day."""

import re

DURATION = r"(?:Std|Stunden|[Mm]in|Minuten|Sek|mark|hours?|minutes?|seconds?|minutos|minutes)\b"
TIME = re.compile(
    rf"(?<![\w.,:/<-])([01]?\d|2[0-4]):([0-5]\d)(?::([0-5]\d))?(?![\w:]*\d|[.,]\d|<\d| ?{DURATION})(?: ?(Uhr|h|heures|horas?"
    r"|hrs)\b| ?([ap])\.?m\b(?:\.(?!\s*$))?|([ap])\b)?",
    re.IGNORECASE,
)
FRENCH = re.compile(r"(?<![\w.,:/])([01]?\d|2[0-4]) ?h(?: ?([0-5]\d))?(?![\w/])")
ENGLISH = re.compile(r"(?<![\w.,:/])(1[0-2]|[1-9]) ?([ap])\.?m\b(?:\.(?!\s*$))?", re.IGNORECASE)
BRITISH = re.compile(
    r"(?<![\w.,:/])(1[0-2]|0?[1-9])\.([0-5]\d)"
    r"(?=(?: ?[-–] ?| to )[\d.]{1,5} ?[ap]\.?m\b| ?[ap]\.?m\b)",
    re.IGNORECASE,
)
DAY_AND_NIGHT = re.compile(r"(?<![\w.,:/])(24) ?h ?/ ?24\b")
DURATIONS = ("hour", "minute")
LASTED = re.compile(r"(?<![\w.,:/])(\d{1,3}) ?h ([0-5]?\d) ?m(?:in)?\b(?!/)")
CLOCK = (
    r"(?:(?:[01]?\d|2[0-4]):[0-5]\d(?: ?[ap]\.?m\b\.?)?|(?:1[0-2]|[1-9]) ?[ap]\.?m\b\.?"
    r"|(?:[01]?\d|2[0-4]) ?h(?:[0-5]\d)?\b)"
)
FROM = re.compile(rf"(?<![\w.,:/-])({CLOCK}) ?[-–] ?(?={CLOCK}(?![\w:]))", re.IGNORECASE)
GERMAN_FROM = re.compile(r"(?<![\w.,:/-])(\d{1,2}\.[0-5]\d)(?: ?[-–] ?| bis )(?=\d{1,2}\.[0-5]\d Uhr)")
GERMAN_HOURS = re.compile(r"(?<![\w.,:/-])(\d{1,2}) - (?=\d{1,2} Uhr)")
GERMAN_H = re.compile(r"(?<=\b[Uu]m )([01]?\d|2[0-4]) ?h\b(?! (?:länger|kürzer|mehr|weniger))")
GERMAN = re.compile(r"(?<![\w.,:/])([01]?\d|2[0-4])\.([0-5]\d) Uhr\b")


def say(sentence, words):
    if not words.hour_and_minutes:
        return sentence
    if words.language == "en":
        sentence = BRITISH.sub(r"\1:\2", sentence)
    sentence = FROM.sub(lambda time: f"{time[1]} {words.to} ", sentence)
    if words.language == "de":
        sentence = GERMAN_HOURS.sub(lambda time: f"{time[1]} {words.to} ", sentence)
        sentence = GERMAN_FROM.sub(lambda time: f"{time[1]} Uhr {words.to} ", sentence)
    sentence = TIME.sub(lambda time: spoken(time, words), sentence)
    if words.language == "fr":
        sentence = DAY_AND_NIGHT.sub(r"\1 heures sur \1", sentence)
        sentence = FRENCH.sub(lambda time: said(time[1], time[2] or "00", words), sentence)
    if words.language == "de":
        sentence = GERMAN_H.sub(lambda time: said(time[1], "00", words), sentence)
        sentence = GERMAN.sub(lambda time: said(time[1], time[2], words), sentence)
    if words.language == "en":
        sentence = LASTED.sub(lasted, sentence)
        sentence = ENGLISH.sub(lambda time: f"{time[1]} {time[2].upper()} M", sentence)
    return sentence


def spoken(time, words):
    if half := time[5] or words.language == "en" and time[6]:
        return f"{time[1].lstrip('0') if time[2] == '00' else said(time[1], time[2], words)} {half.upper()} M"
    if time[6]:
        return time[0]
    if time[3] or time[1] == "0" and not time[4]:  # it may be a time taken as well
        return time[0]
    return said(time[1], time[2], words)


def lasted(time):
    """As long as that, and no time of the day."""
    return " ".join(f"{number} {unit}{'' if number == '1' else 's'}" for number, unit in zip(time.groups(), DURATIONS))


def said(hours, minutes, words):
    hours = hours.lstrip("0") or "0"
    if minutes == "00" and words.language == "en" and 12 < int(hours) < 24:
        return f"{int(hours) - 12} P M"
    if minutes == "00":
        return words.one_hour if hours == "1" and words.one_hour else words.hour.format(hours)
    if minutes[0] == "0":
        minutes = words.minutes_below_ten.format(minutes[1])
    if hours == "1" and words.one_hour_and_minutes:
        return words.one_hour_and_minutes.format(minutes)
    return words.hour_and_minutes.format(hours, minutes)
