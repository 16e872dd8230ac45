"""A number's unit is said by its name, which ICU knows in each language."""

import functools
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
    "kg": "kilogram", "g": "gram", "mg": "milligram", "µg": "microgram", "μg": "microgram", "l": "liter", "L": "liter",
    "dl": "deciliter", "cl": "centiliter", "ml": "milliliter",
    "mL": "milliliter", "ha": "hectare", "ft": "foot", "lb": "pound", "lbs": "pound", "oz": "ounce", "yd": "yard",
    "kWh": "kilowatt-hour",
    "kW": "kilowatt", "MW": "megawatt", "GW": "gigawatt", "W": "watt", "V": "volt", "mA": "milliampere",
    "Hz": "hertz", "kHz": "kilohertz", "MHz": "megahertz",
    "GHz": "gigahertz", "kB": "kilobyte", "KB": "kilobyte", "MB": "megabyte", "GB": "gigabyte", "TB": "terabyte",
    "Mbit/s": "megabit-per-second",
    "Mbps": "megabit-per-second", "°C": "celsius", "° C": "celsius", "°F": "fahrenheit", "K": "kelvin",
    "min": "minute", "ms": "millisecond", "kcal": "kilocalorie", "kJ": "kilojoule",
    "hPa": "hectopascal", "s": "second", "h": "hour", "kPa": "kilopascal", "MPa": "megapascal",
    "mmHg": "millimeter-ofhg", "mm Hg": "millimeter-ofhg", "TWh": "terawatt-hour", "GWh": "gigawatt-hour", "mW": "milliwatt",
    "kV": "kilovolt", "mV": "millivolt", "dpi": "dot-per-inch", "Gbps": "gigabit-per-second", "kbps": "kilobit-per-second",
    "m/s²": "meter-per-square-second", "m/sec²": "meter-per-square-second",
    "mmol": "millimole", "ng": "nanogram", "MWh": "megawatt-hour", "kbit": "kilobit", "Mbit": "megabit", "Gbit": "gigabit",
    "µL": "microliter", "μL": "microliter", "µl": "microliter", "μl": "microliter",
    "Ω": "ohm", "kΩ": "kiloohm", "MΩ": "megaohm", "mbar": "millibar",
    "kJ/mol": "kilojoule-per-mole", "J/K": "joule-per-kelvin", "dL": "deciliter",
    "l/100 km": "liter-per-100-kilometer",
    "l/100km": "liter-per-100-kilometer", "mpg": "mile-per-gallon",
}
# One for each of another: "mg/kg".
PARTS = "kJ ng µg μg mg g kg mmol kWh MWh ml mL l L kB KB MB GB TB kbit Mbit Gbit km m".split()
WHOLES = "kg g l L dl dL ml mL m² m³ cm² cm³ ha s min h km".split()
UNITS |= {f"{part}/{whole}": f"{UNITS[part]}-per-{UNITS[whole]}" for part in PARTS for whole in WHOLES if part != whole}
# Alone they are words or plurals: "1990s", "5 K".
NEED_BLANK = {"s", "h", "K", "L", "V", "W", "m", "min"}
LENGTH = re.compile(r"[.,;:)!?]|$| (?:long|high|tall|deep|away|wide|lang|hoch|tief|breit|weit)\b")  # no minutes or millions
AFTER_SCALE = any_of("km km² km2 m² m2 m³ m3 kg g l ha kWh kW MW GW GB TB".split())
AFTER = any_of(unit for unit, name in UNITS.items() if name)
ENGLISH = {
    "mi": "mile", "sq mi": "square-mile", "sq ft": "square-foot", "m.p.h": "mile-per-hour", "sq. ft": "square-foot",
    "sq. mi": "square-mile", "fl oz": "fluid-ounce", "fl. oz": "fluid-ounce",
    "cu ft": "cubic-foot", "cu. ft": "cubic-foot", "gal": "gallon", "tsp": "teaspoon", "tsps": "teaspoon",
    "tbsp": "tablespoon", "Tbsp": "tablespoon", "hr": "hour", "hrs": "hour", "mins": "minute", "sec": "second", "secs": "second",
    "yr": "year", "yrs": "year", "wk": "week", "wks": "week", "mos": "month",
}
FRENCH = {"ko": "kilobyte", "Ko": "kilobyte", "Mo": "megabyte", "Go": "gigabyte", "To": "terabyte"}
NOTHING_MORE = r"(?![\w²³^]|/(?!\d)|['’]\w)"
GERMAN_FILE = re.compile(r" \d{1,5}/\d\d\b")  # of a court: "5 K 4/10"
PER = {"km²": "square-kilometer", "km2": "square-kilometer", "m²": "square-meter", "m³": "cubic-meter", "sq mi": "square-mile",
       "kg": "kilogram", "km": "kilometer", "kWh": "kilowatt-hour", "h": "hour", "min": "minute", "l": "liter", "ha": "hectare"}
COUNTED = re.compile(r"\d[\d.,]*(?: ?[^\W\d_]+\.?){0,3}$")  # "max/min" is no amount
LONGEST_COUNTED = 60
ENGLISH_PER = {**PER, "mo": "month", "yr": "year", "hr": "hour", "wk": "week"}
AMOUNT = re.compile(
    rf"(?:(?<![\w.,/])|(?<=[A-Za-z]/))([-−]?)({NUMBER})( ?)({AFTER}){NOTHING_MORE}"
    r"(?:(?:(?<=min)|(?<=lb)|(?<=lbs)|(?<=oz))\.(?=,| [a-zà-ÿ]))?"
)
ENGLISH_AMOUNT = re.compile(rf"(?<![\w.,/])()({NUMBER})( ?)({any_of(ENGLISH)}){NOTHING_MORE}(?:\.(?!\s*$))?")
INCHES = re.compile(rf"(?<![\w.,/])({NUMBER}) in\.(?= [a-z(×]|[,;)])")
# As in "a 14-oz. can".
WITH_HYPHEN = re.compile(r"(?<![\w.,/-])(\d{1,4})-(oz|lb|in|ft|mi|km|kg|cm|mm|yr|hr|min|sec)\b\.?(?= [a-z]|\))")
NAMES = {"in": "inch", "sec": "second", "min": "minute"}
# Behind "million" or "Mio.", and what goes on there in French and Spanish.
MANY = re.compile(
    r"(?<=\d )((?:m|b|tr)illion|M(?:io|rd)\.?|Milli(?:onen|arden?)|milli(?:ons?|ards?) de|millones de)"
    rf" ({AFTER_SCALE}){NOTHING_MORE}"
)
MILLION = re.compile(r"(?<=\d )M(?= d[e’'])")
MILLIONS = {"fr": "millions", "es": "millones"}
FRENCH_AMOUNT = re.compile(rf"(?<![\w.,/])()({NUMBER})( ?)({any_of(FRENCH)}){NOTHING_MORE}")


def say(sentence, words):
    if words.language == "fr":
        sentence = FRENCH_AMOUNT.sub(lambda amount: named(amount, FRENCH, words), sentence)
    if words.language == "en":
        sentence = WITH_HYPHEN.sub(lambda amount: f"{amount[1]}-{without_number(unit_named(amount[2]), words)}", sentence)
        inch = icu.MeasureUnit.forIdentifier("inch")
        sentence = INCHES.sub(lambda found: with_unit(found[1], inch, words, is_attribute(found, words)), sentence)
        sentence = ENGLISH_AMOUNT.sub(lambda amount: named(amount, ENGLISH, words), sentence)
    if not words.names_units:
        return sentence
    if words.language in MILLIONS:
        sentence = MILLION.sub(MILLIONS[words.language], sentence)
    sentence = MANY.sub(lambda found: f"{found[1]} {without_number(UNITS[found[2]], words, '2')}", sentence)
    sentence = AMOUNT.sub(lambda amount: spoken(amount, words), sentence)
    if not words.per:
        return sentence
    known = ENGLISH_PER if words.language == "en" else PER
    return strokes(words.per, tuple(known)).sub(lambda unit: for_each(unit, known, words), sentence)


def for_each(unit, known, words):
    before = unit.string[max(0, unit.start() - LONGEST_COUNTED) : unit.start()]
    is_stroke = unit[0][0] == "/"
    return unit[0] if is_stroke and not COUNTED.search(before) else f" {words.per} {without_number(known[unit[1]], words)}"


def spoken(amount, words):
    sign, _, blank, unit = amount.groups()
    if unit in NEED_BLANK and not blank and (unit != "m" or not LENGTH.match(amount.string, amount.end())):
        return amount[0]
    if unit == "K" and words.language == "de" and GERMAN_FILE.match(amount.string, amount.end()):
        return amount[0]
    minus = f"{words.minus} " if sign and words.minus else sign
    return minus + named(amount, UNITS, words)


def named(amount, units, words):
    return with_unit(amount[2], icu.MeasureUnit.forIdentifier(units[amount[4]]), words, is_attribute(amount, words))


def unit_named(short):
    return NAMES.get(short) or UNITS.get(short) or ENGLISH[short]


def without_number(unit, words, number="1"):
    """Its name as it stands behind such a number."""
    return with_unit(number, icu.MeasureUnit.forIdentifier(unit), words).removeprefix(number).strip()


@functools.cache
def strokes(per, units):
    """A stroke before a unit, or what an amount of money has made of it."""
    return re.compile(
        rf"(?:(?:(?<=[^\W\d_]{{3}})|(?<=[^\W\d_]{{3}}\.)|(?<=\d)(?=/(?:k?m²|km2|sq mi|kWh|min)))/| {per} )({any_of(units)})(?![\w/²³^])"
    )
