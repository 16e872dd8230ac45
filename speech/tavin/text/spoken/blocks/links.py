"""A link whose words stand there is its words, a picture what is said instead of it."""

import re

LINK = re.compile(
    r"!?\[([^\[\]\n]{1,500})\]\(<?([^\s()<>]{1,2000}(?:\([^\s()]{0,200}\)[^\s()<>]{0,500})?)>?"
    r"(?: +\"([^\"\n]{0,300})\")?\)"
)
# Not what is counted or a place in a table: "1995.[2][3]", "x[a][b]".
REFERENCE = re.compile(r"(?<![\w\])])\[(?=[^\[\]\n]{0,500}[^\W\d_])([^\[\]\n]{1,500})\]\[[^\[\]\n]{0,100}\]")


def say(line, _words):
    for _ in range(("](" in line) + ("[![" in line)):  # a picture may be a link
        line = LINK.sub(lambda link: f"{link[1]} ({link[3]})" if link[3] else link[1], line)
    return REFERENCE.sub(r"\1", line) if "][" in line else line
