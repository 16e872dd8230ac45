"""An address is only the name of its site: marked here, because its signs end no sentence, and said with
the sentence."""

import re

from tavin.text.spoken.marks import LINK, LINK_END
from tavin.text.spoken.patterns import SITE_ENDS

# Letters of scripts that part words by blanks. In the others the text goes on right behind an address, as it does
# behind the punctuation of any but ASCII: what is not surely the address's is read.
LETTER = r"(?-i:[^\W\u0e00-\U0010ffff])"  # not "K" for the kelvin sign's sake
SIGNS = rf"(?:(?![,;]https?://)[!#-&(-/:;=?@\\^{{|}}~]|{LETTER})"
SITE = r"(?:[^\s/?#@<>\"'`\u0e00-\U0010ffff]{0,300}@)?(\[[0-9a-fA-F:.]{2,50}\]|[\w.-]{1,300})"
ADDRESS = re.compile(
    rf"<?(?<!{LETTER})(?:(?:https?|ftps?|wss?|git|ssh|sftp|smb)://(?:www\.)?|www\."
    rf"(?=[\w-]{{1,100}}\.)){SITE}({SIGNS}*)>?",
    re.IGNORECASE,
)
MORE_ENDS = "it|nl|ly|be|co|me|us|ca|jp|pl|se|tv|ai|app"  # words as well
# Without its scheme, where a path shows that it is one.
NAKED = re.compile(
    rf"(?<!{LETTER})(?<![@./:\\-])((?:[a-z0-9-]{{1,63}}\.){{1,5}}(?:{SITE_ENDS}|{MORE_ENDS}))((?::\d{{2,5}})?/{SIGNS}*)",
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
    own = whole[: bracket_end(whole)]
    bare = own.rstrip(ENDING)
    end = len(bare) + max(0, min(bare.count("(") - bare.count(")"), leading(own[len(bare) :], ")")))
    return f"{LINK}{site[:end]}{LINK_END}{whole[end:]}"


def bracket_end(address):
    """Where a bracket is closed that it does not open."""
    depth = 0
    for index, sign in enumerate(address):
        depth += (sign == "(") - (sign == ")")
        if depth < 0:
            return index
    return len(address)


def leading(text, sign):
    return len(text) - len(text.lstrip(sign))
