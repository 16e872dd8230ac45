"""A block of code: announced once, then read as words, line by line."""

import re

from tavin.text.spoken.marks import CODE, PARAGRAPH
from tavin.text.spoken.rules.code import in_words

FENCE = re.compile(r"\s{0,3}(`{3,}|~{3,})\s*([\w+#.-]*)\s*")


class Fences:
    def __init__(self, words):
        self._words = words
        self._fence = ""  # that the block began with

    def take(self, line):
        """What is said of a line of code; None of another line."""
        fence = FENCE.fullmatch(line)
        if self._fence:
            if fence and fence[1].startswith(self._fence) and not fence[2]:
                self._fence = ""
                return PARAGRAPH
            return PARAGRAPH + CODE + said if (said := in_words(line, self._words)) else ""
        if fence:
            self._fence = fence[1]
            return f"{PARAGRAPH}{self._words.code} {fence[2]}{PARAGRAPH}"
        return None
