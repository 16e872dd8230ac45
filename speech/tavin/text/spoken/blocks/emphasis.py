"""Emphasis is silent, also where it goes on in another line, and so is an asterisk for a footnote."""

import re

OPENING = re.compile(r"(?<![\w*_~\\])(?:[*_]{1,6}|~~|==)(?=[^\W_]|[\"“„«'‘(\[¿¡\ue010$€£])")
CLOSING = re.compile(r"(?<=[^\W_]|[.!?…,;:)\]\"”“»'’%\ue011])(?:[*_]{1,6}|~~|==)(?![\w*_~=])")
ESCAPED = re.compile(r"\\(?=[*_`\[\]#>~|!])")
SIGNS = re.compile(r"[*_~\\]|==")


def say(line, _words):
    if not SIGNS.search(line):
        return line
    return ESCAPED.sub("", CLOSING.sub("", OPENING.sub("", line)))
