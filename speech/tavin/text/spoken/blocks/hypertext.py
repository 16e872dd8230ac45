"""Remains of HTML: tags are silent, and entities what they stand for."""

import html
import re

from tavin.text.spoken.marks import PARAGRAPH

ATTRIBUTES = r"(?:\s+[a-zA-Z_:@][-\w:.@]{0,50}=(?:\"[^\"<>]{0,2000}\"|'[^'<>]{0,2000}'|[^\s\"'<>=]{1,2000}))*"
PARTING = (
    "p|div|br|hr|li|ul|ol|dl|dt|dd|tr|table|thead|tbody|h[1-6]|blockquote|pre|section|article|header|footer|nav"
    "|main|aside|figure|figcaption|form|body|html|head|title|details|summary"
)
WITHIN = (
    "a|b|i|u|s|em|strong|small|big|span|sup|sub|code|kbd|samp|var|tt|mark|del|ins|q|cite|abbr|font|center|td|th"
    "|img|input|button|label|ruby|rt|rp|wbr|time|script|style|link|meta|svg|path|iframe|video|audio|source"
    "|picture"
)
PARTING_TAG = re.compile(rf"</?(?:{PARTING}){ATTRIBUTES}\s?/?>", re.IGNORECASE)
TAG = re.compile(rf"</?(?:{WITHIN}){ATTRIBUTES}\s?/?>", re.IGNORECASE)
PICTURE = re.compile(
    rf"<img(?=[\s>])[^<>]{{0,2000}}?\salt=[\"']([^\"'<>]{{1,500}})[\"'][^<>]{{0,2000}}>",
    re.IGNORECASE,
)
COMMENT = re.compile(r"<!--|-->")
ENTITY = re.compile(r"&(?:#\d{1,6}|#[xX][0-9a-fA-F]{1,6}|[a-zA-Z][a-zA-Z0-9]{1,30});")
CONTROL = re.compile(
    "[\x00-\x08\x0b-\x1f\x7f-\x9f\u00ad\u200b-\u200f\u2028-\u202e\u2060-\u206f\ud800-\udfff\ue000-\uf8ff]"
)


def say(line, _words):
    if "<" in line or "-->" in line:
        line = COMMENT.sub(" ", line)
        line = PICTURE.sub(r" \1 ", line)
        line = TAG.sub("", PARTING_TAG.sub(PARAGRAPH, line))
    return ENTITY.sub(character, line) if "&" in line else line


def character(entity):
    """Nothing that the text itself may not hold."""
    return CONTROL.sub(" ", html.unescape(entity[0]))
