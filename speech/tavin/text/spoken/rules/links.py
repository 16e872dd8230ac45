"""An address is "link to" its site, and the site's points are said."""

import re

from tavin.text.spoken.marks import LINK, LINK_END
from tavin.text.spoken.patterns import SITE_ENDS

ADDRESS = re.compile(f"{LINK}([^{LINK_END}]*){LINK_END}")
SITE = re.compile(
    r"(?<![\w@.:/\\-])(?:[A-Za-z0-9-]{1,63}\.){1,4}(?:" + SITE_ENDS + r")"
    r"(?![\w@.-]*[\w@])"
)


def say(sentence, words):
    sentence = SITE.sub(lambda site: named(site[0], words), sentence)
    return ADDRESS.sub(lambda link: words.link.format(named(link[1], words)), sentence)


def named(site, words):
    return site.replace(".", words.dot)
