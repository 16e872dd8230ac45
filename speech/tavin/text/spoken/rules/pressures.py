"""A blood pressure is one number over the other."""

import re

READING = re.compile(r"(?<![\w.,/:+-])(\d{2,3})/(\d{1,3})(?![\w/]|[.,:/-]\d)")
UNIT = re.compile(r" ?mm ?Hg\b")
LONGEST_BEFORE = 40


def say(sentence, words):
    return READING.sub(lambda found: spoken(found, words), sentence) if words.pressures and "/" in sentence else sentence


def spoken(found, words):
    """Where the unit behind it or a word before it says that it is one."""
    before = found.string[max(0, found.start() - LONGEST_BEFORE) : found.start()]
    named = re.search(rf"\b(?:{words.pressures})\b[^\d/]{{0,20}}$", before)
    return f"{found[1]} {words.over} {found[2]}" if named or UNIT.match(found.string, found.end()) else found[0]
