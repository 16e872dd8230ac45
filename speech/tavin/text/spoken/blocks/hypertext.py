"""Remains of HTML: tags are silent, and entities what they stand for."""

import html
import re

from tavin.text.spoken.marks import PARAGRAPH

ATTRIBUTES = r"(?:\s+[a-zA-Z_:@][-\w:.@]{0,50}=(?:\"[^\"<>]{0,2000}\"|'[^'<>]{0,2000}'|[^\s\"'<>=]{1,2000}))*"
PARTING = (
    "p|div|br|hr|li|ul|ol|dl|dt|dd|tr|table|thead|tbody|h1|h2|h3|h4|h5|h6|blockquote|pre|section|article|header|footer|nav"
    "|main|aside|figure|figcaption|form|body|html|head|title|details|summary"
)
WITHIN = (
    "a|b|i|u|s|em|strong|small|big|span|sup|sub|code|kbd|samp|var|tt|mark|del|ins|q|cite|abbr|font|center|td|th"
    "|img|input|button|label|ruby|rt|rp|wbr|time|script|style|link|meta|svg|path|iframe|video|audio|source"
    "|picture"
)
TAG = re.compile(rf"<(/?)({PARTING}|{WITHIN})({ATTRIBUTES})\s?(/?)>", re.IGNORECASE)
EDGES = frozenset("p div li ul ol dl dt dd tr td th h1 h2 h3 h4 h5 h6 blockquote pre".split())
ALONE = frozenset("br hr wbr".split())  # without an end and often without attributes
CELLS = frozenset(("td", "th"))
WITH_ATTRIBUTES = frozenset("a font img input link meta path iframe source".split())
PARTS = frozenset(PARTING.split("|"))
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
        tags = Tags(line)
        line = TAG.sub(tags.said, line)
    return ENTITY.sub(character, line) if "&" in line else line


class Tags:
    """Those of a line. In prose "the <div> element" and "mv <source> <path>" are none: one without attributes and
    without its partner in the line is one where a text begins or ends with it."""

    def __init__(self, line):
        self._opened, self._closed = {}, {}  # a name's first and last place
        for tag in TAG.finditer(line):
            if tag[1]:
                self._closed[tag[2].lower()] = tag.start()
            else:
                self._opened.setdefault(tag[2].lower(), tag.start())
        self._bare = TAG.sub("", line).strip()

    def said(self, tag):
        name = tag[2].lower()
        if not (tag[3] or tag[4] or name in ALONE or self._has_partner(tag, name) or self._marks_a_text(tag, name)):
            return tag[0]
        if name in PARTS:
            return PARAGRAPH
        return " " if name in CELLS else ""

    def _has_partner(self, tag, name):
        if tag[1]:
            return self._opened.get(name, tag.start()) < tag.start()
        return self._closed.get(name, -1) > tag.start()

    def _marks_a_text(self, tag, name):
        before, after = tag.string[: tag.start()], tag.string[tag.end() :]
        if not self._bare or name in EDGES and (before.rstrip()[-1:] in ("", *".!?:") or not after.strip()):
            return True
        before, after = before[-1:], after[:1]
        if tag[1]:
            return bool(before.strip()) and before not in "([{\"'“"
        return name not in WITH_ATTRIBUTES and (after.isalnum() or after == "<") and not before.isalnum()


def character(entity):
    """Nothing that the text itself may not hold."""
    return CONTROL.sub(" ", html.unescape(entity[0]))
