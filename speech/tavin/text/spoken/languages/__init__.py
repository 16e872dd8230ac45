"""What the rules must know of a language; each has a file here. What is empty leaves a rule without work."""

import functools
import importlib
from dataclasses import dataclass, field

import icu

KNOWN = ("de", "en", "es", "fr")
FOR_ICU = {"cmn": "zh", "hak": "zh"}


@dataclass(frozen=True)
class Words:
    """Texts with `{}` take what they are about."""

    link: str = "{}"
    dot: str = "."
    at: str = " at "
    dash: str = "-"
    slash: str = "/"
    backslash: str = "\\"
    underscore: str = " "
    more: str = "{}"  # of a key: its beginning; `{count}` characters are left out
    code: str = ""
    done: str = ""  # an item of a list that is ticked
    open: str = ""  # one that is not
    signs: dict = field(default_factory=dict)  # sign -> words, between blanks or numbers
    operators: dict = field(default_factory=dict)  # in code
    number: str = ""  # for "#5"
    menus: str = ""  # a pattern: their names in programs
    hashtag: str = ""
    minus: str = ""
    to: str = ""  # of a range
    score: str = ""  # between what two sides have
    scored: str = ""  # a pattern for what makes "3-2" a score
    numbered: str = ""  # a pattern for what has a number, in which a dash may be: "order 1887-93"
    squared: str = ""
    cubed: str = ""
    power: str = ""
    money: dict = field(default_factory=dict)  # code -> one, many
    with_cents: str = "{} {}"  # the whole, the cents
    per: str = ""  # for the stroke in "€/kg"
    per_time: dict = field(default_factory=dict)  # before these: time -> what is said instead
    scales: dict = field(default_factory=dict)  # abbreviation -> one, many
    after_scale: str = " "  # between "millions" and what there are millions of; "’" goes on
    month_first: bool = False
    first: str = ""  # of a month, where the other days are plain numbers
    of_date: str = " "  # between day, month and year
    hour: str = ""  # for 9:00
    hour_and_minutes: str = ""  # for 9:05
    one_hour: str = ""  # where it is said in another way
    one_hour_and_minutes: str = ""
    minutes_below_ten: str = "{}"
    weekdays: dict = field(default_factory=dict)  # short -> name
    ordinal: str = ""  # a pattern: the number, its ending
    ordinal_sets: dict = field(default_factory=dict)  # ending -> ICU's rule set
    denominators: dict = field(default_factory=dict)  # -> one, many
    one: str = ""  # of a fraction
    half: str = ""
    and_a_half: str = ""  # 3½
    with_fractions: dict = field(default_factory=dict)  # unit -> half of it, how it stands behind "3/4"
    mixed: str = ""  # 3¾
    numerals: str = ""  # words that a Roman numeral counts
    rulers: str = ""  # names that one follows
    ruler: str = ""  # how it is said after such a name
    rulers_from: int = 0  # from there on a plain number is said
    ruler_set: str = ""
    ruler_first: str = ""
    queens: str = ""  # those of the names that are women's
    queen: str = ""
    queen_set: str = ""
    queen_first: str = ""
    abbreviations: dict = field(default_factory=dict)
    going_on: frozenset = frozenset()  # abbreviations that end no sentence
    before_number: dict = field(default_factory=dict)  # abbreviations only there
    after_number: dict = field(default_factory=dict)  # and those only behind one -> one, many
    before_year: dict = field(default_factory=dict)
    compounds: dict = field(default_factory=dict)  # endings of words: "Hauptstr."
    born: tuple = ()  # for "* 28. August 1749", and where no day follows
    died: tuple = ()  # for "†"
    by: str = ""  # for the sign in "1920×1080", where that is another word
    out_of: str = ""  # for the stroke in "8/10"
    books: str = ""  # a pattern: those of the Bible, where a colon parts chapter and verse
    books_alike: str = ""  # those that are called as people, places or other things are
    over: str = ""  # for the stroke in "120/80"
    pressures: str = ""  # a pattern for what makes that a blood pressure
    short_months: dict = field(default_factory=dict)  # without their stop, beside a day
    before_numeral: dict = field(default_factory=dict)  # and those only before a Roman one, with what precedes them
    acronyms: dict = field(default_factory=dict)  # read wrongly by synthesisers
    decades: bool = False
    locale: str = "en"
    names_units: bool = True  # whether ICU has the language's names of units and currencies

    @property
    def language(self):
        return self.locale.partition("_")[0]

    def icu(self):
        return icu.Locale(self.locale)


@functools.cache
def words_of(language):
    """`language` as eSpeak NG names it, such as "en-us"."""
    code = language.split("-")[0]
    if code not in KNOWN:
        locale = FOR_ICU.get(code) or language.replace("-", "_")
        return Words(locale=locale, names_units=icu.Locale(locale).getLanguage() in languages_of_icu())
    module = importlib.import_module(f"{__name__}.{code}")
    return module.british(module.WORDS) if code == "en" and language != "en-us" else module.WORDS


def words_of_locale(locale):
    """For what is cached by the locale: `Words` cannot be."""
    return words_of(locale.replace("_", "-").lower())


@functools.cache
def languages_of_icu():
    return frozenset(icu.Locale(name).getLanguage() for name in icu.Locale.getAvailableLocales())
