"""Days of the week from one to another, by their names: opening hours."""

import functools
import re

from tavin.text.spoken.patterns import any_of

# Words as well, which only a span makes days.
ALSO_WORDS = {"So", "mar", "mer", "jeu"}


def say(sentence, words):
    if not words.weekdays:
        return sentence
    span, one = patterns(tuple(words.weekdays))
    sentence = span.sub(lambda found: f"{words.weekdays[found[1]]} {words.to} {words.weekdays[found[2]]}", sentence)
    return one.sub(lambda found: words.weekdays[found[1]], sentence)


@functools.cache
def patterns(names):
    """For two days with a dash between them, and for one before an hour: "Sa 9–13 Uhr", "sam. 9h"."""
    day, alone = (rf"({any_of(some)})\b\.?" for some in (names, set(names) - ALSO_WORDS))
    return (
        re.compile(rf"(?<![\w.-]){day} ?[-–] ?{day}(?![\w-])"),
        re.compile(rf"(?<![\w.-]){alone},?(?= \d{{1,2}}(?:[:.]\d\d)?(?: ?[-–] ?\d{{1,2}}| ?(?:Uhr|h|[ap]m)\b))"),
    )
