"""Emphasis is silent, also where it goes on in another line, and so is an asterisk for a footnote."""

import re

OPENING = re.compile(r"(?<![\w*_~\\])(?:[*_]{1,6}|~~)(?=[^\W_]|[\"“„«'‘(\[¿¡\ue010$€£])")
CLOSING = re.compile(r"(?<=[^\W_]|[.!?…,;:)\]\"”“»'’%\ue011])(?:[*_]{1,6}|~~)(?![\w*_~=])")
HIGHLIGHT = re.compile(r"(?<![\w=])==(?=[^\s=])([^=]{1,300})(?<=[^\s=])==(?![\w=])")  # not "x ==5"
STARRED = re.compile(r"(?:[A-Z]|(?<![\w-])(?:char|int|void|float|double))\*(?= )")  # "A* search", "char* p"
ESCAPED = re.compile(r"\\(?=[*_`\[\]#>~|!])")
SIGNS = re.compile(r"[*_~\\]|==")


def say(line, _words):
    if not SIGNS.search(line):
        return line
    line = HIGHLIGHT.sub(r"\1", line)
    if line.count("*") > 1 or not STARRED.search(line):
        line = CLOSING.sub("", OPENING.sub("", line))
    return ESCAPED.sub("", line)
