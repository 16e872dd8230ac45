"""A blood pressure is one number over the other."""

import re

READING = re.compile(r"(?<![\w.,/:+-])(\d{1,3})/(\d{1,3})(?![\w/]|[.,:/-]\d)")
UNIT = re.compile(r" ?mm ?Hg\b")
OTHER_UNIT = re.compile(r" ?(?:[kM]?(?:V|W|A|N|Pa|Hz)|m?bar|psi|kg|[Vv]olts?|[Vv]oltios)\b| ?[%€$£°]")
BETWEEN = r"(?:[ :=]| (?:of|is|was|at|ist|war|bei|von|est|était|à|de|es|era))"
LONGEST_BEFORE = 40


def say(sentence, words):
    return READING.sub(lambda found: spoken(found, words), sentence) if words.pressures and "/" in sentence else sentence


def spoken(found, words):
    """Where the unit behind it or a word before it says that it is one."""
    before = found.string[max(0, found.start() - LONGEST_BEFORE) : found.start()]
    is_one = is_likely(found, words) and re.search(rf"\b(?:{words.pressures}){BETWEEN}{{1,3}}$", before)
    return f"{found[1]} {words.over} {found[2]}" if is_one or UNIT.match(found.string, found.end()) else found[0]


def is_likely(found, words):
    """No tension of 100/240 V. In French and Spanish they are in centimetres as well: "14/9"."""
    upper, lower = int(found[1]), int(found[2])
    in_range = 60 <= upper <= 260 and 30 <= lower <= 160
    in_range |= words.language in ("fr", "es") and 8 <= upper <= 25 and 4 <= lower <= 15
    return in_range and lower < upper and not OTHER_UNIT.match(found.string, found.end())
