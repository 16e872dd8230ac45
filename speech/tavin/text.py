"""Cuts a text of any length into pieces to speak: whole sentences where that fits.

Lazy and bounded: at most a few thousand characters are looked at in one step,
whatever the text holds, so the event loop is never held up and a long text
costs no more memory than a short one.
"""

import re

import icu

STEP = 2000  # code points taken from the text at once
# Invisible marks, toolkit placeholders, control characters and lone surrogates:
# nothing of that is spoken, and synthesisers take some of it for commands.
UNSPOKEN = re.compile(
    "[\u00ad\u200b\u200e\u200f\u202a-\u202e\u2060-\u2064\u2066-\u2069\ufeff\ufff9-\ufffc\ud800-\udfff]"
)
CONTROL = re.compile("[\x00-\x08\x0e-\x1f\x7f-\x9f]")
LINE_ENDS = re.compile("\r\n?|[\x0b\x0c\x85\u2028\u2029]")
BLANKS = re.compile(r"[^\S\n]+")
PARAGRAPH_END = re.compile(r"\n[ \t]*\n\s*")
LOWER = "[a-zß-öø-ÿα-ωа-я]"
HYPHENATED = re.compile(rf"(?<=\w\w)-\n\s*(?={LOWER})")
# A long line that goes on in the next one was wrapped, not ended, by its writer.
WRAPPED = re.compile(
    rf"(?<=[^\n]{{40}})(?<![.!?:;…。！？])\n\s*(?=\w)|(?<=[\w,;])\n\s*(?={LOWER})"
)
# The segmenter knows few of these; a single capital before a stop is an initial.
ABBREVIATION = re.compile(r"(?:\b(?:Dr|Mr|Mrs|Ms|Prof|St|Fig|No|vs|Nr|Hr|Fr)|(?:^|[\s.])[A-Z])\.\s*$")


def pieces(text, language, longest):
    """Yield pieces of at most `longest` code points; empty ones where nothing is to say.

    An empty piece gives the caller the chance to let others run.
    """
    segmenter = icu.BreakIterator.createSentenceInstance(icu.Locale(f"{language}@ss=standard"))
    rest = ""
    for portion in portions(text):
        *paragraphs, rest = PARAGRAPH_END.split(rest + clean(portion))
        whole = []
        for paragraph in paragraphs:
            whole += sentences(unwrap(paragraph), segmenter)
        *finished, rest = sentences(unwrap(rest), segmenter) or [""]
        whole += finished
        if len(rest) > STEP:  # no end in sight
            *parts, rest = cut(rest, longest)
            whole += parts
        yield from speakable(whole, longest)
        yield ""
    yield from speakable([rest], longest)


def portions(text):
    start = 0
    while start < len(text):
        end = start + STEP
        if text[end - 1 : end + 1] == "\r\n":
            end += 1  # one line end, not two
        yield text[start:end]
        start = end


def speakable(whole, longest):
    for sentence in whole:
        for part in cut(sentence, longest):
            if part := part.strip():
                yield part


def clean(text):
    text = LINE_ENDS.sub("\n", text)
    text = CONTROL.sub(" ", UNSPOKEN.sub("", text))
    return BLANKS.sub(" ", text)


def unwrap(paragraph):
    """Join the lines of a paragraph that a page's width broke, not its writer."""
    return WRAPPED.sub(" ", HYPHENATED.sub("", paragraph))


def sentences(text, segmenter):
    """All of `text` in sentences; the last may be unfinished."""
    units = text.encode("utf-16-le")  # the segmenter counts in these
    segmenter.setText(text)
    found = []
    begin = 0
    for end in segmenter:
        sentence = units[2 * begin : 2 * end].decode("utf-16-le")
        begin = end
        if found and ABBREVIATION.search(found[-1]):
            found[-1] += sentence
        else:
            found.append(sentence)
    return found


def cut(sentence, longest):
    """Cut an over-long sentence at the best places."""
    parts = []
    while len(sentence) > longest:
        end = best_end(sentence, longest)
        parts.append(sentence[:end])
        sentence = sentence[end:]
    return [*parts, sentence]


def best_end(sentence, longest):
    """The last clause's end in reach, else the last blank, else the limit."""
    window = sentence[:longest]
    for pattern in (r"[,;:)—–、，；：]\s*", r"\s+"):
        ends = [match.end() for match in re.finditer(pattern, window)]
        if ends and ends[-1] > longest // 4:
            return ends[-1]
    return longest
