"""A link whose words stand there is its words, a picture what is said instead of it."""

import re

LINK = re.compile(
    r"!?\[([^\[\]\n]{1,500})\]\((?!\d{1,4}[a-z]?\))<?([^\s()<>]{1,2000}(?:\([^\s()]{0,200}\)[^\s()<>]{0,500})?)>?"
    r"(?: +\"([^\"\n]{0,300})\")?\)"
)
# Not what is counted, a place in a table or a line's labels: "1995.[2][3]", "x[a][b]", "[ERROR][net]".
REFERENCE = re.compile(
    r"(?<![\w\])])\[(?=[^\[\]\n]{0,500}[^\W\d_])([^\[\]\n]{1,500})\]\[([^\[\]\n]{0,100})\](?!\[)"
)
WORDS = re.compile(r"[^\W\d]+ [^\d:]+")


def say(line, _words):
    for _ in range(("](" in line) + ("[![" in line)):  # a picture may be a link
        line = LINK.sub(lambda link: f"{link[1]} ({link[3]})" if link[3] else link[1], line)
    return REFERENCE.sub(referred, line) if "][" in line else line


def referred(link):
    """What it refers to is silent where it is no word of the text: a number, the same word, a label of several, or
    in running text."""
    words, label = link[1], link[2]
    before = link.string[: link.start()].rstrip()[-1:]
    silent = not label or label.isdigit() or label.lower() == words.lower() or WORDS.match(words)
    return words if silent or before.isalpha() or before in tuple(",;:(") else link[0]
