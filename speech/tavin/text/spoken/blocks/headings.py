"""A heading ends as a sentence does."""

import re

from tavin.text.spoken.marks import PARAGRAPH

HEADING = re.compile(r"\s{0,3}#{1,6} +(\S.*)")


def say(line, _words):
    heading = HEADING.fullmatch(line)
    return f"{PARAGRAPH}{heading[1].rstrip(' #')}{PARAGRAPH}" if heading else line
