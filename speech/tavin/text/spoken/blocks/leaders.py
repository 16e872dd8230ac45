"""Dots that lead the eye to what stands at the end of a line, as in a table of contents or a price list."""

import re

from tavin.text.spoken.marks import PARAGRAPH

# A number at the line's end, not "Well.... 3 people came".
END = r"(?:[+(]?[$€£]?\d[\d.,/ -]{0,20}+\)?(?:[$€£%]|EUR)?|[ivxlc]{1,6})\s*$"
LEADERS = re.compile(rf"(?<=[^\s.…])[ \t]*+(?:(?:\.[ \t]?){{4,}}+|(?:…[ \t]?){{2,}}+)[ \t]*+(?={END})")


def say(line, _words):
    led = LEADERS.sub(", ", line) if ".." in line or ". ." in line or "…" in line else line
    return line if led == line else f"{PARAGRAPH}{led}{PARAGRAPH}"
