"""Cuts a text of any length into pieces to speak: whole sentences where that fits.

Lazy and bounded: at most a few thousand characters are looked at in one step,
whatever the text holds, so the event loop is never held up and a long text
costs no more memory than a short one.
"""

import re
import unicodedata
from typing import NamedTuple

import icu

from tavin.text.lines import SOFT_HYPHEN, clean, unquote, unwrap, with_plain_blanks
from tavin.text.sentences import Segmenter
from tavin.text.spoken.languages import words_of
from tavin.text.spoken.marks import without_marks

STEP = 2000  # code points taken from the text at once
LONGEST_STEP = STEP + 50
GOES_ON = " "  # at the end of a piece that is not the end of what is said in one breath
LONGEST_PARAGRAPH = 2000  # code points, some two minutes; found and made speakable in some 30 ms
LINE_BEGIN = 8  # code points that tell what kind of line it is
PARAGRAPH_END = re.compile(r"\n[ \t]*\n\s*")
# Not within a number or a time, which would be read as two.
CLAUSE_END = re.compile(r"(?:[,;:](?=\s)|[—–](?!\d)|[)、，；：])\s*")
# Where a line may end is between words, also in scripts without blanks; but in some of these within
# words as well.
LINE_BREAKS = icu.BreakIterator.createLineInstance(icu.Locale.getRoot())
WORD_BREAKS = icu.BreakIterator.createWordInstance(icu.Locale.getRoot())
# Never within a character of several code points.
CHARACTER_BREAKS = icu.BreakIterator.createCharacterInstance(icu.Locale.getRoot())


class Limit:
    """How long a piece may be. The first ones are short, where a synthesiser gives nothing before it
    has all: sound starts soon, and each piece is made while those before it are heard. `in_time` says how long one
    may be for that; where it does not know, each may be as long as all before it."""

    def __init__(self, longest, first, in_time):
        self._longest = longest
        self._first = first
        self._in_time = in_time
        self._given = 0

    def now(self):
        if self._first >= self._longest:
            return self._longest
        in_time = self._in_time() if self._given else None
        return max(self._first, min(self._longest, self._given if in_time is None else in_time))

    def suits(self, length):
        """Whether it may stay whole: a word or two alone would sound worse than they cost."""
        return length <= min(self._longest, self.now() * 4 // 3)

    def give(self, piece):
        self._given += len(piece)
        return piece


class Place(NamedTuple):
    """A sentence of the text: which one it is, in which paragraph, both counted from 0, and as it is written."""

    sentence: int
    paragraph: int
    text: str


class Piece(str):
    """What is spoken at once; the part of a sentence in one language that it is, or is cut from; and that
    sentence's place."""

    def __new__(cls, text, sentence, place):
        piece = super().__new__(cls, text)
        piece.sentence = sentence
        piece.place = place
        return piece


class Places:
    """Counts the text's sentences and paragraphs. A paragraph ends at an empty line, or with a sentence after so
    much text without one: who wants the next one waits for no more than that."""

    def __init__(self):
        self._sentence = self._paragraph = self._length = 0

    def of(self, texts):
        return [self._next(text) for text in texts if text.strip()]

    def _next(self, text):
        if self._length and self._length + len(text) > LONGEST_PARAGRAPH:
            self.end_paragraph()
        place = Place(self._sentence, self._paragraph, text)
        self._sentence += 1
        self._length += len(text)
        return place

    def end_paragraph(self):
        self._paragraph += 1
        self._length = 0


def undivided(sentence):
    return [sentence]


def unknown():
    return None


def pieces(text, language, longest, first=None, divide=undivided, say=without_marks, in_time=unknown):
    """Yield pieces of at most `longest` code points; empty ones where nothing is to say. One that was
    cut off what follows ends with a blank more. `divide` parts a sentence into what is spoken alike,
    `say` makes of such a part what is spoken.

    An empty piece gives the caller the chance to let others run. With `first`, the first pieces
    have about so many code points where a sentence is longer; `in_time` is the limit's.
    """
    limit = Limit(longest, min(first or longest, longest), in_time)
    segmenter = Segmenter(language)
    places = Places()
    rest = "\n"  # the text's first line begins like all others
    for portion in running(text, words_of(language)):
        *whole, rest = PARAGRAPH_END.split(unquote(rest + portion))
        for lines in whole:
            yield from speakable(places.of(segmenter.sentences(unwrap(lines))), limit, say, divide)
            places.end_paragraph()
        *finished, rest = segmenter.sentences(unwrap(rest)) or [""]
        rest = rest or "\n"  # so does each paragraph's
        yield from speakable(places.of(finished), limit, say, divide)
        if len(rest) > STEP:  # no end in sight
            *parts, rest = cut(rest, longest - len(GOES_ON))
            yield from speakable(places.of(parts), limit, say, end_mark=GOES_ON)
        yield ""
    yield from speakable(places.of([rest]), limit, say, divide)


def running(text, words):
    """The text in portions, without what marks it up."""
    from tavin.text.spoken.blocks import Blocks  # loaded when it is needed: its patterns take a while

    blocks = Blocks(words)
    for portion in portions(text):
        yield with_plain_blanks(blocks.take(clean(portion)))
    yield with_plain_blanks(blocks.end())


def portions(text):
    start = 0
    while start < len(text):
        end = start + STEP
        while end < start + LONGEST_STEP and not may_end(text, end):
            end += 1
        yield text[start:end]
        start = end


def may_end(text, end):
    """Not before a mark or a letter that makes one with the letter before it, and not so soon after a
    line's end that the next line cannot be told."""
    following = text[end : end + 1]
    if following and (unicodedata.category(following)[0] == "M" or "\u1160" <= following <= "\u11ff"):
        return False
    return following != "\n" and "\n" not in text[end - LINE_BEGIN : end]


def speakable(sentences, limit, say, divide=undivided, end_mark=""):
    for place in sentences:
        for sentence in divide(place.text):
            rest = say(sentence)
            while not limit.suits(len(rest)):
                end = best_end(rest, limit.now() - len(GOES_ON))
                if part := spoken(rest[:end]):
                    yield Piece(limit.give(part) + GOES_ON, sentence, place)
                rest = rest[end:]
            if part := spoken(rest):
                yield Piece(limit.give(part) + end_mark, sentence, place)


def spoken(part):
    return part.replace(SOFT_HYPHEN, "").strip()


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
    reach = sentence[: longest + 1]
    clauses = [min(match.end(), longest) for match in CLAUSE_END.finditer(reach) if match.start() < longest]
    if clauses and clauses[-1] > longest // 4:
        return clauses[-1]
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
