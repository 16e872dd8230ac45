"""What is typed into a shell stands for itself: its prompt is not said."""

import re

from tavin.text.spoken.marks import PARAGRAPH

COMMANDS = (
    "apt|apt-get|awk|bash|cargo|cat|cd|chmod|chown|cmake|cp|curl|dd|df|diff|dnf|docker|du|echo|env|exit|export|find"
    "|flatpak|git|grep|kill|ln|ls|lsblk|make|mkdir|mount|mv|nano|node|npm|npx|pacman|perl|pip3?|podman|ps|pwd|python3?|rm"
    "|rsync|scp|sed|snap|ssh|sudo|systemctl|tail|tar|tee|touch|uname|unzip|vim|wget|whoami|zip"
)
# A command that is known, a program by its path, or an option; "$ a pop" and "$ means dollars." are prose.
PROMPT = re.compile(
    rf"\s*\$ (?=[.~]?/|(?:{COMMANDS})(?![\w'’])|[a-z][\w.-]*(?: \S+)*? --?[a-zA-Z])"
    r"(?!.*[^\W\d_]{2}[.!?]\s*$)"
)


def say(line, _words):
    prompt = PROMPT.match(line)
    return f"{PARAGRAPH}{line[prompt.end() :]}{PARAGRAPH}" if prompt else line
