"""The numbers of notes and sources in a text are not said; they stand behind a stop and would keep it from ending the
sentence."""

import re

BRACKETED = re.compile(
    r"(?:(?<=\w\w)|(?<=[.,;:!?)\"”»’'…%])) ?(?:\[(?:[1-9]\d{0,2}|[a-z])(?:[ ,;–-]{1,2}\d{1,3}){0,20}\])+(?!\()"
)
# After a word, not after a unit or a letter, which they square.
RAISED = re.compile(r"(?:(?<=[^\W\d_]{3})|(?<=[.,;:!?)\"”»’']))[¹²³⁰⁴-⁹]{1,3}(?![\w⁻⁺])")
DAGGER = re.compile(r"(?<=[\w.,;:!?)\"”])[†‡]+")


def say(line, _words):
    return DAGGER.sub("", RAISED.sub("", BRACKETED.sub("", line)))
