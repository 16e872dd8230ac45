"""Makes running text of what was selected: characters cleaned, lines joined that a page's width broke."""

import re
import unicodedata

SOFT_HYPHEN = "\u00ad"
# Invisible marks, toolkit placeholders, control characters and lone surrogates:
# nothing of that is spoken, and synthesisers take some of it for commands. A soft
# hyphen stays at the end of a line, or where the line's end may still come.
UNSPOKEN = re.compile(
    "[\u061c\u180e\u200b\u200e\u200f\u202a-\u202e\u2060-\u2064\u2066-\u2069\ufeff\ufff9-\ufffc"
    "\ud800-\udfff\U000e0000-\U000e007f]|\u00ad(?!\\s*(?:\n|$))"
)
# Control characters, and the pictures that terminals' fonts put among the letters.
CONTROL = re.compile("[\x00-\x08\x0e-\x1f\x7f-\x9f\ue000-\uf8ff\U000f0000-\U0010ffff]")
LINE_ENDS = re.compile("\r\n?|[\x0b\x85\u2028\u2029]")
BLANKS = re.compile(r"[^\S\n]+")
# Letters that PDFs have in one; synthesisers spell them out.
LIGATURES = str.maketrans(dict(zip("ﬀﬁﬂﬃﬄﬅﬆ", ("ff", "fi", "fl", "ffi", "ffl", "st", "st"))))

# The marks of a quoted mail, on two lines or more. On one alone, only before a word: elsewhere it is
# a sign of its own, as in "> 50 %".
QUOTED = re.compile(r"(?<=\n)>.*(?:\n>.*)+|(?<=\n)>[> ]*(?=[^\W\d_]|[¿¡\"“„«‘(]|\n)")
QUOTE_MARKS = re.compile(r"^>[> ]*", re.MULTILINE)

LINE_END = re.compile(rf"(?:(?<=\w)([-\u2010{SOFT_HYPHEN}]))? ?\n\s*")
# As in "pre-\nand post-war": not a part of the word before.
HANGING = re.compile(r"(?:and|or|und|oder)\b")
FULL_LINE = 40  # code points; where there are so many it was probably the page that ended the line
FULL_WIDE_LINE = 20  # of those that are as wide as two
OPENING = "([{`\"'“„”‘‚«»‹›¿¡$€£"
CLOSING = ")]}\"'”’»«"
LIST_ITEM = re.compile(r"\(?\w{1,3}\)")  # "a)", "(12)"
# Also the beginning of a line like "3. Mai", so only where the line before begins like that.
NUMBERED = re.compile(r"\s*\d{1,3}\. ")
LABELLED = re.compile(r"\s*[^\W\d_][\w-]{1,14}:\s")  # of a mail's head, "Subject: ", or of settings
# Of a log or a chat: "[10:32] ", "2026-11-22T10:32:05", "Nov 22 10:32:05", "10.0.0.1 - -".
STAMPED = re.compile(
    r"\s*[\[(<]?(?:\d{4}[-/]\d\d[-/]\d\d[T \]]|\d{1,2}[:.]\d\d(?::\d\d)?[\]) ]|[A-Z][a-z]{2} {1,2}\d{1,2} \d\d:\d\d"
    r"|(?:\d{1,3}\.){3}\d{1,3} )"
)
LONGEST_BEGIN = 18
WIDE = re.compile(
    "[\u2e80-\u303f\u3040-\u30ff\u31f0-\u31ff\u3400-\u9fff\uf900-\ufaff\uff01-\uff60\U00020000-\U0003ffff]"
)


def clean(text):
    """Without characters that are none of the text. Blanks stay as they are: tabs part cells, form feeds pages."""
    text = LINE_ENDS.sub("\n", text)
    text = CONTROL.sub(" ", UNSPOKEN.sub("", text))
    return unicodedata.normalize("NFC", text.translate(LIGATURES))


def with_plain_blanks(text):
    return BLANKS.sub(" ", text)


def unquote(text):
    return QUOTED.sub(lambda quoted: QUOTE_MARKS.sub("", quoted[0]), text)


def unwrap(paragraph):
    """Join the lines of a paragraph that a page's width broke, not its writer."""
    return LINE_END.sub(joint, paragraph) if "\n" in paragraph else paragraph


def joint(line_end):
    """What takes the place of a line's end, and of the hyphen before that."""
    text, hyphen = line_end.string, line_end[1]
    before = text[max(0, line_end.start() - FULL_LINE) : line_end.start()].rpartition("\n")[2]
    after = text[line_end.end() : line_end.end() + LONGEST_BEGIN]
    if not before or not after:
        return line_end[0]
    if hyphen and after[0].isalnum():
        return mended(before, hyphen, after)
    begin = text.rfind("\n", 0, line_end.start()) + 1
    if any(kind.match(after) and kind.match(text, begin) for kind in (NUMBERED, LABELLED, STAMPED)):
        return line_end[0]
    wide = WIDE.match(before[-1]) and WIDE.match(after)
    return ("" if wide else " ") if goes_on(before, after, wide) else line_end[0]


def mended(before, hyphen, after):
    """What is left between the parts of a word that goes on in the next line."""
    if hyphen == SOFT_HYPHEN:
        return ""
    # "e-\nmail", "COVID-\n19", "North-\nSouth" have it in the middle of a line as well.
    divided = before[-2:].isalpha() and len(before) > 1 and after[0].islower()
    if divided and HANGING.match(after):
        return hyphen + " "
    return "" if divided else hyphen


def goes_on(before, after, wide):
    """Whether two lines are one sentence, or are parted well enough by the stop between them."""
    last = before[-1]
    if LIST_ITEM.match(after):
        return False
    if after[0].islower() and (last.isalnum() or last in ",;" or last in CLOSING):
        return True
    if wide and last in "，、":
        return True
    full = len(before) >= (FULL_WIDE_LINE if wide else FULL_LINE)
    begins = wide or after[0].isalnum() or after[0] in OPENING
    return full and begins and last not in ":;：；"
