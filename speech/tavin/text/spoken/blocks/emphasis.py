"""Emphasis is silent, also where it goes on in another line, and so is an asterisk for a footnote."""

import re

OPENING = re.compile(r"(?<![\w*_~\\])(?:[*_]{1,6}|~~)(?=[^\W_]|[\"“„«'‘(\[¿¡\ue010$€£])")
BIRTH = re.compile(r"(?<=\()\*(?=\d{4}\b[^*]|\d{1,2}\. ?[\dA-ZÄÖÜ])")  # a sign of its own: "(*1990)"
CLOSING = re.compile(r"(?<=[^\W_]|[.!?…,;:)\]\"”“»'’%\ue011])(?:[*_]{1,6}|~~)(?![\w*_~=])")
HIGHLIGHT = re.compile(r"(?<![\w=])==(?=[^\s=])([^=]{1,300})(?<=[^\s=])==(?![\w=])")  # not "x ==5"
# "A* search", "a 5* hotel", "C*-algebra", "char* p"
STARRED = re.compile(r"(?:[A-Z]|(?<!\w)[a-z]|\d|(?<![\w-])(?:char|int|void|float|double))$")
LONGEST_STARRED = 8
ESCAPED = re.compile(r"\\(?=[*_`\[\]#>~|!])")
SIGNS = re.compile(r"[*_~\\]|==")


def say(line, words):
    if not SIGNS.search(line):
        return line
    line = HIGHLIGHT.sub(r"\1", line)
    opened = OPENING.sub(lambda found: "*" if words.born and BIRTH.match(line, found.start()) else "", line)
    line = CLOSING.sub(closed if opened == line else "", opened)
    return ESCAPED.sub("", line)


def closed(found):
    """What was opened in a line before, if it is not the asterisk of a name."""
    word = found.string[max(0, found.start() - LONGEST_STARRED) : found.start()]
    is_star = found[0] == "*" and found.string[found.end() :][:1] in (" ", "-") and STARRED.search(word)
    return "*" if is_star else ""
