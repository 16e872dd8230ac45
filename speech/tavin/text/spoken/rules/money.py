"""An amount of money: the number first, then the currency by its name."""

import functools
import re

import icu

from tavin.text.spoken.patterns import any_of
from tavin.text.spoken.rules.numbers import NUMBER, is_attribute, is_one, with_unit

SIGNS = {
    "US$": "USD", "US-$": "USD", "C$": "CAD", "A$": "AUD", "NZ$": "NZD", "HK$": "HKD", "$": "USD", "€": "EUR", "£": "GBP",
    "¥": "JPY",
    "₹": "INR", "₽": "RUB", "₩": "KRW", "₺": "TRY", "₴": "UAH", "₪": "ILS", "zł": "PLN", "Kč": "CZK",
}
CODES = "USD|EUR|GBP|JPY|CHF|CAD|AUD|NZD|CNY|INR|SEK|NOK|DKK|PLN|CZK|HUF|MXN|BRL|ARS|ZAR|KRW|TRY|RUB"
SIGN = any_of(SIGNS)
OPENING = re.compile(r"(?<!\d)(?<!\d )\$(?=[^\s\d])|$")  # of a formula, maybe
BETWEEN = re.compile(r"(?<![\w.,])(\d{1,6}) ?€(\d\d)(?![\w.,]*\d)")  # as the French write it: "12 €50"
NO_CENTS = re.compile(r"(?<=\d),[-–—]{1,2}(?= ?(?:€|EUR|Euro)(?!\w))")
CENTS = re.compile(r"(?<![\w.,])(\d{1,3}) ?¢")
PARTS = re.compile(r"(.*\d)[.,](\d\d)")
# As accountants write a loss: "($3.2) million".
IN_BRACKETS = re.compile(rf"\(((?:{SIGN}) ?\d[\d.,]{{0,20}})\) ([mbt]r?illion)\b")
WORD = re.compile(r"\w{0,8}")


@functools.cache
def patterns(scales):
    """For amounts with the sign before them and behind. `scales` abbreviate millions and the like."""
    scale = rf"(?: ?({any_of(scales)})(?![^\W\d_]))?"
    before = rf"(?<![\w$€£¥])([-−]?)(?:({SIGN}) ?|(?<!/)({CODES}) )({NUMBER}){scale}(?![\w%])(/(?=[^\W\d_]))?"
    after = rf"(?<![\w.,^])([-−]?)({NUMBER}){scale} ?({SIGN}|{CODES})(?!\w)(/(?=[^\W\d_]))?"
    return re.compile(before), re.compile(after)


def say(sentence, words):
    if not words.names_units:
        return sentence
    before, after = patterns(tuple(words.scales))
    sentence = IN_BRACKETS.sub(r"(\1 \2)", NO_CENTS.sub("", BETWEEN.sub(r"\1,\2 €", sentence)))
    sentence = before.sub(lambda found: priced(found, found[4], found[5], found[2] or found[3], words), sentence)
    opening = OPENING.search(sentence).start()
    sentence = after.sub(lambda found: behind(found, opening, words), sentence)
    if not words.money:
        return sentence
    if words.scales:
        sentence = unnumbered(tuple(words.scales)).sub(lambda found: counted(found, words), sentence)
    return CENTS.sub(lambda found: f"{found[1]} {name('CENT', found[1], words)}", sentence)


@functools.cache
def unnumbered(scales):
    """What the amounts of a table are in: "(M€)", "in Mio. EUR"."""
    return re.compile(rf"(?:(?<=\()|(?<=\b[ie]n ))({any_of(scales)}) ?({SIGN}|{CODES})(?!\w)")


def counted(found, words):
    joint = words.after_scale if words.scales[found[1]][1] != "mil" else " "
    said = f"{words.scales[found[1]][1]}{joint}{name(SIGNS.get(found[2], found[2]), '2', words)}"
    return said.replace(" de e", " d'e") if words.language == "fr" else said


def behind(found, opening, words):
    """In English the dollar's sign stands behind a number only in a formula, but for a blank between them."""
    in_formula = found.start() > opening or words.language == "en" and found[0][-2:-1].isdigit()
    return found[0] if found[4] == "$" and in_formula else priced(found, found[2], found[3], found[4], words)


def priced(found, number, scale, currency, words):
    """And "/month" behind it."""
    stroke = found[found.re.groups] or ""
    per = words.per_time.get(WORD.match(found.string, found.end())[0], words.per)
    return spoken(found, number, scale, currency, words) + (f" {per} " if stroke and per else stroke)


def spoken(found, number, scale, currency, words):
    minus = f"{words.minus} " if found[1] and words.minus else found[1]
    code = SIGNS.get(currency, currency)
    attribute = bool(is_attribute(found, words))
    if scale:
        one, many = words.scales[scale]
        number = f"{number} {one if is_one(number) else many}"
        currency = name(code, "1" if attribute else "2", words)
        joint = " " if attribute or many in ("mil", "mille", "mil millones") else words.after_scale
        if words.language == "fr" and joint == " de " and currency[0] in "aeiou":
            joint = " d'"
        return f"{minus}{number}{joint}{currency}"
    if code not in words.money:
        return minus + with_unit(number, icu.CurrencyUnit(code), words, attribute)
    whole, cents = PARTS.fullmatch(number).groups() if PARTS.fullmatch(number) else (number, "00")
    if whole == "0" and code in ("USD", "EUR") and cents != "00":
        return f"{minus}{cents.lstrip('0')} {name('CENT', cents.lstrip('0'), words)}"
    said = f"{whole} {name(code, '1' if attribute else whole, words)}"
    if cents == "00":
        return minus + said
    if cents[0] == "0" and words.language == "en" and code in ("USD", "EUR"):
        return f"{minus}{said} and {cents[1]} {name('CENT', cents[1], words)}"
    return minus + words.with_cents.format(said, cents.lstrip("0"))


def name(code, number, words):
    if code in words.money:
        return words.money[code][0 if is_one(number) else 1]
    return with_unit(number, icu.CurrencyUnit(code), words).removeprefix(number).strip()
