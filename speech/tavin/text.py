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
    "[\u00ad\u061c\u180e\u200b\u200e\u200f\u202a-\u202e\u2060-\u2064\u2066-\u2069\ufeff\ufff9-\ufffc"
    "\ud800-\udfff\U000e0000-\U000e007f]"
)
# Control characters, and the pictures that terminals' fonts put among the letters.
CONTROL = re.compile("[\x00-\x08\x0e-\x1f\x7f-\x9f\ue000-\uf8ff\U000f0000-\U0010ffff]")
LINE_ENDS = re.compile("\r\n?|[\x0b\x0c\x85\u2028\u2029]")
BLANKS = re.compile(r"[^\S\n]+")
PARAGRAPH_END = re.compile(r"\n[ \t]*\n\s*")
LOWER = "[a-zß-öø-ÿα-ωа-я]"
HYPHENATED = re.compile(rf"(?<=\w\w)-\n\s*(?={LOWER})")
# A long line that goes on in the next one was wrapped, not ended, by its writer.
WRAPPED = re.compile(
    rf"(?<=[^\n]{{40}})(?<![.!?:;…。！？])\n\s*(?=\w)|(?<=[\w,;])\n\s*(?={LOWER})"
)
CLAUSE_END = re.compile(r"[,;:)—–、，；：]\s*")
# The segmenter knows few of these; a single capital before a stop is an initial.
ABBREVIATION = re.compile(r"(?:\b(?:Dr|Mr|Mrs|Ms|Prof|St|Fig|No|vs|Nr|Hr|Fr)|(?:^|[\s.])[A-Z])\.\s*$")


# Where a line may end is between words, also in scripts without blanks; but in some of these within
# words as well.
LINE_BREAKS = icu.BreakIterator.createLineInstance(icu.Locale.getRoot())
WORD_BREAKS = icu.BreakIterator.createWordInstance(icu.Locale.getRoot())
# Never within a character of several code points.
CHARACTER_BREAKS = icu.BreakIterator.createCharacterInstance(icu.Locale.getRoot())


class Limit:
    """How long a piece may be. The first ones are short, where a synthesiser gives nothing before it
    has all: sound starts soon, and each piece is made while those before it are heard."""

    def __init__(self, longest, first):
        self._longest = longest
        self._first = first
        self._given = 0

    def now(self):
        return max(self._first, min(self._longest, self._given))

    def suits(self, length):
        """Whether it may stay whole: a word or two alone would sound worse than they cost."""
        return length <= min(self._longest, self.now() * 4 // 3)

    def give(self, piece):
        self._given += len(piece)
        return piece


def pieces(text, language, longest, first=None):
    """Yield pieces of at most `longest` code points; empty ones where nothing is to say.

    An empty piece gives the caller the chance to let others run. With `first`, the first pieces
    have about so many code points where a sentence is longer.
    """
    limit = Limit(longest, min(first or longest, longest))
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
        yield from speakable(whole, limit)
        yield ""
    yield from speakable([rest], limit)


def portions(text):
    start = 0
    while start < len(text):
        end = start + STEP
        if text[end - 1 : end + 1] == "\r\n":
            end += 1  # one line end, not two
        yield text[start:end]
        start = end


def speakable(whole, limit):
    for rest in whole:
        while not limit.suits(len(rest)):
            end = best_end(rest, limit.now())
            if part := rest[:end].strip():
                yield limit.give(part)
            rest = rest[end:]
        if part := rest.strip():
            yield limit.give(part)


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
    """The last clause's end in reach, else the last place where a line might end, else the limit."""
    window = sentence[:longest]
    clauses = [match.end() for match in CLAUSE_END.finditer(window)]
    if clauses and clauses[-1] > longest // 4:
        return clauses[-1]
    reach = sentence[: longest + 1]
    for breaks, also in ((LINE_BREAKS, WORD_BREAKS), (CHARACTER_BREAKS, CHARACTER_BREAKS)):
        end = last_break(breaks, also, reach, longest)
        if end > longest // 4:
            return end
    return longest


def last_break(breaks, also, text, longest):
    """The last place at `longest` code points or before that both find; 0 when there is none."""
    units = text.encode("utf-16-le")  # breaks are counted in these
    breaks.setText(text)
    also.setText(text)
    end = breaks.preceding(len(text[:longest].encode("utf-16-le")) // 2 + 1)
    while end > 0 and not also.isBoundary(end):
        end = breaks.preceding(end)
    return len(units[: 2 * max(0, end)].decode("utf-16-le"))
