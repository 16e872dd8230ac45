"""An ordinal number in figures, where synthesisers do not know its ending."""

import functools
import re

from tavin.text.spoken.rules.numbers import spelled


@functools.cache
def pattern(ordinal):
    return re.compile(rf"(?<![\w.,/-]){ordinal}(?!\w)")


def say(sentence, words):
    return pattern(words.ordinal).sub(lambda found: spoken(found, words), sentence) if words.ordinal else sentence


def spoken(found, words):
    ending = next(group for group in found.groups()[1:] if group)
    return spelled(int(found[1]), words.ordinal_sets[ending], words)
