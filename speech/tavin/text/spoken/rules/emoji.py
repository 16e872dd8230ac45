"""An emoji is said by its name, and a row of the same once."""

import functools
import re

from tavin.log import log

# Where they are; what exactly they are the library knows, which takes a few megabytes and 20 ms once.
SOME = re.compile("[\u203c-\u3299\U0001f000-\U0001faff\u00a9\u00ae]")
ROW = re.compile(r"(\ue020[^\ue020\ue021]{1,200}\ue021)(?:[\s\u200d\ufe0f]{0,3}\1)+")
MARKED = re.compile("\\s*\ue020([^\ue020\ue021]*)\ue021(?=(\\w|\ue020)?)")
VARIANT = re.compile("[\ufe0e\ufe0f\u20e3]|[\U0001f3fb-\U0001f3ff]")


def say(sentence, words):
    if not SOME.search(sentence):
        return sentence
    emoji = library()
    if not emoji or words.language not in emoji.LANGUAGES:
        return sentence
    found = emoji.replace_emoji(sentence, lambda sign, _data: f"\ue020{named(sign, words.language)}\ue021")
    named_once = MARKED.sub(lambda sign: f" {sign[1]}{' ' if sign[2] else ''}", ROW.sub(r"\1", found))
    return VARIANT.sub("", named_once).strip()


@functools.cache
def library():
    """None where it is missing: what a synthesiser makes of an emoji is better than silence."""
    try:
        import emoji
    except ImportError:
        log.info("emoji are left to the synthesisers (package python3-emoji)")
        return None
    return emoji


def named(sign, language):
    name = library().demojize(sign, delimiters=("", ""), language=language)
    return name.replace("_", " ") if name != sign else library().demojize(sign, delimiters=("", "")).replace("_", " ")
