"""A block of code: announced once, then read as words, line by line."""

import re

from tavin.text.spoken.blocks import addresses
from tavin.text.spoken.marks import CODE, PARAGRAPH
from tavin.text.spoken.rules.code import in_words

QUOTE = r"(>[> ]*)?"
FENCE = re.compile(rf"{QUOTE}\s*(`{{3,}}|~{{3,}})\s*([\w+#.-]*)\s*(\{{[^`\n]*\}})?\s*")  # as in "js {1,3}"
QUOTED = re.compile(r">[> ]?")
PROSE = re.compile(r"[\"“(]?[A-Z][a-z]*[ '’][^;{}=<>$\[\]_]*")
FEWEST_WORDS = 4
ADDRESS = re.compile(r"((?<!\w)(?:https?|ftp|ssh|git)://[^\s\"'`<>;)]+)")


class Fences:
    def __init__(self, words):
        self._words = words
        self._fence = ""  # that the block began with
        self._quoted = False
        self._known = False  # a text may begin within a block, whose end looks like a beginning
        self._doubted = False

    def is_open(self):
        return bool(self._fence)

    def take(self, line):
        """What is said of a line of code; None of another line."""
        fence = FENCE.fullmatch(line)
        if self._fence and (self._quoted and not line.startswith(">") or self._doubted and is_prose(line)):
            self._fence = ""
        doubted, self._doubted = self._doubted, False
        if self._fence:
            if fence and fence[2].startswith(self._fence) and not fence[3] and not fence[4]:
                self._fence = ""
                return PARAGRAPH
            self._known = True
            said = with_addresses(QUOTED.sub("", line) if self._quoted else line, self._words)
            return (self._begin("") if doubted else "") + (PARAGRAPH + CODE + said if said else "")
        return self._open(fence) if fence else None

    def _open(self, fence):
        quote, self._fence, info, more = fence.groups("")
        self._quoted = bool(quote)
        self._doubted = not self._known and not info and not more
        return PARAGRAPH if self._doubted else self._begin(info)

    def _begin(self, language):
        return f"{PARAGRAPH}{self._words.code} {language}{PARAGRAPH}"


def with_addresses(code, words):
    """In words, but for the addresses in it."""
    parts = enumerate(ADDRESS.split(code))
    return " ".join(filter(None, (addresses.say(part, words) if place % 2 else in_words(part, words) for place, part in parts)))


def is_prose(line):
    line = line.strip()
    return not line or bool(PROSE.fullmatch(line)) and len(line.split()) >= FEWEST_WORDS
