"""What is typed into a shell stands for itself: its prompt is not said."""

import re

from tavin.text.spoken.marks import PARAGRAPH

PROMPT = re.compile(r"\s*\$ (?=[a-z./~])")


def say(line, _words):
    prompt = PROMPT.match(line)
    return f"{PARAGRAPH}{line[prompt.end() :]}{PARAGRAPH}" if prompt else line
