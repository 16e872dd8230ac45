"""Line by line: what is marked up becomes running text. Lazy: a portion of text goes in, and what of it
is sure comes out."""

import re

from tavin.text.spoken.blocks import (
    addresses,
    bullets,
    citations,
    decoration,
    emphasis,
    formulas,
    grouped_digits,
    headings,
    hypertext,
    inline_code,
    leaders,
    links,
    prompts,
)
from tavin.text.spoken.blocks.columns import Columns
from tavin.text.spoken.blocks.fences import Fences
from tavin.text.spoken.blocks.form_feeds import FormFeeds
from tavin.text.spoken.blocks.tables import Tables
from tavin.text.spoken.blocks.unmarked_pages import UnmarkedPages

LONGEST_HELD = 1000  # code points of a line whose end has not come
LONGEST_WORD = 4000
LONGEST_MARKUP = 400  # code points of a link or of code within a line, which no cut goes through
# Of a text that ends here: a link that was not closed before its end, in its address or in its words, a tag, code.
UNCLOSED = tuple(map(re.compile, (r"\[(?:[^\[\]]|\](?!\())*\]\([^\[)]*$", r"\[[^\[\]]*$", "<[^<>]*$", "`[^`]*$")))
QUOTE = re.compile(r"(?:>[> ]*)?")
LINE_RULES = (decoration, headings, bullets, prompts)
# Code and formulas first, in which nothing else is mark-up; citations before links, whose brackets theirs look like;
# addresses before emphasis, which they may hold the signs of.
INLINE_RULES = (grouped_digits, inline_code, formulas, hypertext, citations, links, addresses, emphasis, leaders)


class Blocks:
    def __init__(self, words):
        """`words` of the whole text's language."""
        self._words = words
        self._rest = ""
        self._within = False  # whether a part of this line was handed on
        self._form_feeds = FormFeeds()
        self._unmarked_pages = UnmarkedPages()
        self._fences = Fences(words)
        self._columns = Columns()
        self._tables = Tables()

    def take(self, portion):
        *lines, self._rest = (self._rest + portion).split("\n")
        told = [self._line(line, "\n") for line in lines]
        end = last_blank(self._rest) or len(self._rest) // LONGEST_WORD * LONGEST_WORD
        if len(self._rest) > LONGEST_HELD and end:  # too long to wait for its end
            told.append(self._line(self._rest[:end], ""))
            self._rest = self._rest[end:]
            self._within = True
        return "".join(told)

    def end(self):
        last = [self._line(self._rest, "")]
        for line in (*self._unbroken(self._form_feeds.end()), *self._unmarked_pages.end()):
            last += self._marked(line)
        return "\n".join(filter(None, [*last, *self._held_rows(), self._held_row()]))

    def _line(self, line, end):
        if self._within:
            self._within = False
            return "\n".join([*self._held_rows(), self._held_row() + inline(line, self._words)]) + end
        told = [said for line in self._unbroken(self._form_feeds.take(line)) for said in self._marked(line)]
        return "\n".join(told) + (end if told else "")

    def _unbroken(self, lines):
        """Lazy: whether code has begun is known once the lines before are marked."""
        for line in lines:
            yield from self._unmarked_pages.take(line, self._fences.is_open())

    def _held_rows(self):
        return map(self._in_columns, self._columns.end())

    def _held_row(self):
        return inline(self._tables.end(), self._words)

    def _marked(self, line):
        """What is said of the line and those that were held back; nothing where it is."""
        code = self._fences.take(line)
        if code is None:
            return map(self._in_columns, self._columns.take(line))
        return [*self._held_rows(), self._held_row() + code]

    def _in_columns(self, told):
        line, row = told
        return self._plain(line) if row is None else self._held_row() + inline(row, self._words)

    def _plain(self, line):
        before, row = self._tables.take(line)
        before = inline(before, self._words)
        if row is not None:
            return before + inline(row, self._words)
        quote = QUOTE.match(line)[0]
        told = line[len(quote) :]
        for rule in LINE_RULES:
            told = rule.say(told, self._words)
        return before + quote + inline(told, self._words)


def last_blank(line):
    """Behind it, and not within a link, a tag or code."""
    end = line.rfind(" ") + 1
    for unclosed in UNCLOSED:
        markup = unclosed.search(line, max(0, end - LONGEST_MARKUP), end)
        if markup and markup.start() > 0 and (markup[0][0] != "`" or line.count("`", 0, end) % 2):
            end = line.rfind(" ", 0, markup.start()) + 1
    return end


def inline(line, words):
    for rule in INLINE_RULES:
        line = rule.say(line, words)
    return line
