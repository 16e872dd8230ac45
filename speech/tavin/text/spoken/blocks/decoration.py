"""A line of signs that only decorates parts what is around it, and is not said."""

import re

from tavin.text.spoken.marks import PARAGRAPH

LINE = re.compile(r"\s*(?:(?:([-=_*~#+.·•─━═—–<>^\"'`:])[ ]?)(?:\1[ ]?){2,}|[-=_*~─━═—–•·<>✂§♦❖◆■□▪ ]{3,}|-- ?)\s*")


def say(line, _words):
    return PARAGRAPH if line.strip() and LINE.fullmatch(line) else line
