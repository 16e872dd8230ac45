"""A way through menus: "Settings > Privacy > Cookies" compares nothing."""

import functools
import re

STEP = re.compile(r" [>→] ")


def say(sentence, words):
    if not words.menus or not STEP.search(sentence):
        return sentence
    return way(words.menus).sub(lambda found: STEP.sub(", ", found[0]), sentence)


@functools.cache
def way(menus):
    """From a menu's name on, as far as no comma or stop comes: "Bolt > Lewis > Owens" is a comparison."""
    return re.compile(rf"\b(?:{menus})[\"”»'’*]?(?: [>→] [\"“«'‘*]?[A-ZÀ-Þ][^,;:.!?<>→]*(?<=\S))+")
