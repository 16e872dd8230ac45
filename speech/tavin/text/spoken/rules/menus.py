"""A way through menus or pages: "Settings > Privacy > Cookies" compares nothing."""

import re

STEP = re.compile(r"(?<=[^\W\d_][\w.…)\"”»'’*]) (>|→) (?=[\"“«'‘*]?[A-ZÀ-Þ]\w)")
LONGEST_BEFORE = 20


def say(sentence, words):
    steps = [found[1] for found in STEP.finditer(sentence)] if words.menus else []
    return STEP.sub(lambda found: ", " if leads_on(found, steps, words) else found[0], sentence) if steps else sentence


def leads_on(found, steps, words):
    """Of several, or behind the name of a menu. Several arrows may be a journey."""
    before = found.string[max(0, found.start() - LONGEST_BEFORE) : found.start()]
    return steps.count(">") > 1 or bool(re.search(rf"\b(?:{words.menus})[\"”»'’*]?$", before))
