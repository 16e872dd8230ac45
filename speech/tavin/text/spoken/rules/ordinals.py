"""An ordinal number in figures, where synthesisers do not know its ending."""

import re

from tavin.text.spoken.rules.numbers import spelled

PATTERNS = {}


def say(sentence, words):
    if not words.ordinal:
        return sentence
    pattern = PATTERNS.get(words.locale) or PATTERNS.setdefault(words.locale, re.compile(rf"(?<![\w.,/-]){words.ordinal}(?!\w)"))
    return pattern.sub(lambda found: spoken(found, words), sentence)


def spoken(found, words):
    ending = next(group for group in found.groups()[1:] if group)
    return spelled(int(found[1]), words.ordinal_sets[ending], words)
