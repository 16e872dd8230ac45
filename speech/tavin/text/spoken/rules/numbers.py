"""What the rules about numbers share. Synthesisers read a plain number well; what is around it they do not."""

import functools
import re

import icu

NUMBER = r"(?:\d{1,3}(?:[.,'’ ]\d{3}){1,6}(?!\d)(?:[.,]\d{1,9})?|\d{1,15}(?:[.,]\d{1,9})?)"
ATTRIBUTE = re.compile(r"\b[Aa]n? $")


def is_one(number):
    return number == "1"


def is_attribute(found, words):
    """English has no plural in "a 20 euro note"."""
    return words.language == "en" and ATTRIBUTE.search(found.string, max(0, found.start() - 3), found.start())


@functools.cache
def _format(locale):
    return icu.NumberFormatter.withLocale(icu.Locale(locale)).unitWidth(icu.UNumberUnitWidth.FULL_NAME)


def with_unit(number, unit, words, attribute=False):
    """The number as it was written, with the unit's name in the form that belongs to it."""
    value = 1.0 if attribute else value_of(number, words)
    plain = _format(words.locale).precision(icu.Precision.maxFraction(9))
    digits = plain.formatDouble(value)
    named = plain.unit(unit).formatDouble(value)
    return " ".join(named.replace(digits, number, 1).replace("⋅", "").split())  # "Terawatt⋅stunden"


def value_of(number, words):
    """About: which sign parts the decimals is the language's."""
    decimal = decimal_sign(words)
    whole, _, rest = number.lstrip("-−").rpartition(decimal) if decimal in number else (number, "", "")
    digits = "".join(filter(str.isdigit, whole)) or "0"
    return float(f"{digits}.{''.join(filter(str.isdigit, rest)) or 0}")


def decimal_sign(words):
    return icu.DecimalFormatSymbols(words.icu()).getSymbol(icu.DecimalFormatSymbols.kDecimalSeparatorSymbol)


@functools.cache
def _speller(locale, rules):
    spell = icu.RuleBasedNumberFormat(icu.URBNFRuleSetTag.SPELLOUT, icu.Locale(locale))
    spell.setDefaultRuleSet(rules)
    return spell


def spelled(number, rules, words):
    return _speller(words.locale, rules).format(number).replace("\u00ad", "")
