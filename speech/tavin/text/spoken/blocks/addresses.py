"""An address is only the name of its site: marked here, because its signs end no sentence, and said with
the sentence."""

import re

from tavin.text.spoken.marks import LINK, LINK_END
from tavin.text.spoken.patterns import SITE_ENDS

SIGNS = rf"[^\s<>\[\]\"'`“”«»{LINK}{LINK_END}]"
SITE = r"(?:[^\s/?#@<>\"'`]{0,300}@)?(\[[0-9a-fA-F:.]{2,50}\]|[^\s/?#:@<>\"'`()\[\],;!]{1,300})"
ADDRESS = re.compile(
    rf"<?(?<![\w])(?:(?:https?|ftps?|wss?|git|ssh|sftp|smb)://(?:www\.)?|www\."
    rf"(?=[\w-]{{1,100}}\.)){SITE}({SIGNS}*)>?",
    re.IGNORECASE,
)
# Without its scheme, where a path shows that it is one.
NAKED = re.compile(
    rf"(?<![\w@./:\\-])((?:[a-z0-9-]{{1,63}}\.){{1,5}}(?:{SITE_ENDS}|it|nl))(/{SIGNS}*)",
    re.IGNORECASE,
)
ENDING = ".,;:!?…)]}*_~’"
MAIL_SCHEME = re.compile(r"\bmailto:(?=\S)", re.IGNORECASE)
FILE_SCHEME = re.compile(r"\bfile://(?=/)", re.IGNORECASE)


def say(line, _words):
    if "://" in line or "www." in line.lower():
        line = ADDRESS.sub(marked, FILE_SCHEME.sub("", line))
    if "/" in line:
        line = NAKED.sub(marked, line)
    return MAIL_SCHEME.sub("", line)


def marked(address):
    """What ends the sentence or closes a bracket around the address is no part of it."""
    site, rest = address[1], address[2]
    whole = site + rest
    bare = whole.rstrip(ENDING)
    own = min(bare.count("(") - bare.count(")"), len(whole) - len(whole[len(bare) :].lstrip(")")) - len(bare))
    end = len(bare) + max(0, own)
    return f"{LINK}{site[:end]}{LINK_END}{whole[end:]}"
