"""Dots that lead the eye to what stands at the end of a line, as in a table of contents or a price list."""

import re

from tavin.text.spoken.marks import PARAGRAPH

LEADERS = re.compile(r"(?<=[^\s.])[ \t]*+(?:(?:\.[ \t]?){4,}+|(?:…[ \t]?){2,}+)[ \t]*(?=[+(]?[$€£]?\d|[ivxlc]{1,6}\s*$)")


def say(line, _words):
    led = LEADERS.sub(", ", line) if ".." in line or ". ." in line or "…" in line else line
    return line if led == line else f"{PARAGRAPH}{led}{PARAGRAPH}"
