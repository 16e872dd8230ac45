"""A number's unit is said by its name, which ICU knows in each language."""

import re

import icu

from tavin.text.spoken.patterns import any_of
from tavin.text.spoken.rules.numbers import NUMBER, is_attribute, with_unit

UNITS = {
    "km/h": "kilometer-per-hour", "m/s": "meter-per-second", "mph": "mile-per-hour", "km²": "square-kilometer",
    "km2": "square-kilometer",
    "m²": "square-meter", "m2": "square-meter", "cm²": "square-centimeter", "m³": "cubic-meter",
    "m3": "cubic-meter", "cm³": "cubic-centimeter",
    "km": "kilometer", "m": "meter", "cm": "centimeter", "mm": "millimeter", "µm": "micrometer", "μm": "micrometer",
    "nm": "nanometer",
    "kg": "kilogram", "g": "gram", "mg": "milligram", "µg": "microgram", "l": "liter", "L": "liter",
    "dl": "deciliter", "cl": "centiliter", "ml": "milliliter",
    "mL": "milliliter", "ha": "hectare", "ft": "foot", "lb": "pound", "lbs": "pound", "oz": "ounce", "yd": "yard",
    "kWh": "kilowatt-hour",
    "kW": "kilowatt", "MW": "megawatt", "GW": "gigawatt", "W": "watt", "V": "volt", "mA": "milliampere",
    "Hz": "hertz", "kHz": "kilohertz", "MHz": "megahertz",
    "GHz": "gigahertz", "kB": "kilobyte", "KB": "kilobyte", "MB": "megabyte", "GB": "gigabyte", "TB": "terabyte",
    "Mbit/s": "megabit-per-second",
    "Mbps": "megabit-per-second", "°C": "celsius", "° C": "celsius", "°F": "fahrenheit", "K": "kelvin",
    "min": "minute", "ms": "millisecond", "kcal": "kilocalorie", "kJ": "kilojoule",
    "hPa": "hectopascal", "s": "second", "h": "hour", "km/s": "", "l/100 km": "liter-per-100-kilometer",
    "l/100km": "liter-per-100-kilometer", "mpg": "mile-per-gallon",
}
# Alone they are words or plurals: "1990s", "5 K".
NEED_BLANK = {"s", "h", "K", "L", "V", "W", "m", "min"}
LENGTH = re.compile(r"[.,;:)!?]|$| (?:long|high|tall|deep|away|wide|lang|hoch|tief|breit|weit)\b")  # no minutes or millions
AFTER = any_of(unit for unit, name in UNITS.items() if name)
FRENCH = {"ko": "kilobyte", "Ko": "kilobyte", "Mo": "megabyte", "Go": "gigabyte", "To": "terabyte"}
NOTHING_MORE = r"(?![\w/²³^]|['’]\w)"
AMOUNT = re.compile(rf"(?<![\w.,/])([-−]?)({NUMBER})( ?)({AFTER}){NOTHING_MORE}")
FRENCH_AMOUNT = re.compile(rf"(?<![\w.,/])()({NUMBER})( ?)({any_of(FRENCH)}){NOTHING_MORE}")


def say(sentence, words):
    if words.language == "fr":
        sentence = FRENCH_AMOUNT.sub(lambda amount: named(amount, FRENCH, words), sentence)
    return AMOUNT.sub(lambda amount: spoken(amount, words), sentence) if words.names_units else sentence


def spoken(amount, words):
    sign, _, blank, unit = amount.groups()
    if unit in NEED_BLANK and not blank and (unit != "m" or not LENGTH.match(amount.string, amount.end())):
        return amount[0]
    minus = f"{words.minus} " if sign and words.minus else sign
    return minus + named(amount, UNITS, words)


def named(amount, units, words):
    return with_unit(amount[2], icu.MeasureUnit.forIdentifier(units[amount[4]]), words, is_attribute(amount, words))
