"""Lines that are blank at the same columns: whether they are a table, and its cells."""

import re
from typing import NamedTuple

from tavin.text.spoken.blocks import decoration
from tavin.text.spoken.blocks.blanks import boundaries

CLEAR_GAP = 4  # blanks that no justified line has between its words
LONG_CELL = 4  # words
MANY = 3  # columns or rows, which no chance puts below each other
GAP = re.compile(r"(?<=\S)\s{2,}(?=\S)")
# Between two cells, of which the first is no abbreviation alone.
SENTENCE_END = re.compile(r"\S\s\S*\w[.!?…:][\"')\]”’»]*\s{2,}[\"'(\[“‘«¿¡]*[A-ZÀ-Þ]")
GOES_ON = (",", ";")
CODE = re.compile(r"\s{2,}(?:#\s|//|/\*|--\s|[:=<-]?[=>-]\s)|[;{}\\(]$")
AMOUNT = re.compile(r"[-+−~<>≤≥]?[$€£]?\s?\d[\d.,:/\s]*(?:[%°€$£]|\w{1,3})?")


class Cell(NamedTuple):
    text: str
    start: int
    end: int


class Grid:
    def __init__(self, lines, found):
        """`found`: the blanks that they have in common."""
        self._lines = lines
        self._blanks = found
        self._parts = boundaries(found)
        self._rows = [row for row in (cells(line, self._parts) for line in lines if not is_rule(line)) if not goes_on(row)]

    def is_sure(self):
        """Whether they are no prose with two blanks behind its stops, no justified text, no verses and no code."""
        if len(self._rows) < 2 or any(map(is_other, self._lines)) or self._is_page():
            return False
        clear = any(len(gap[0]) >= CLEAR_GAP for line in self._lines for gap in GAP.finditer(line))
        return (clear or len(self._rows) >= MANY) and self._is_aligned()

    def _is_page(self):
        """Two columns of prose, side by side."""
        long = [sum(len(cell.text.split()) >= LONG_CELL for cell in row) > 1 for row in self._rows]
        return 2 * sum(long) > len(long)

    def _is_aligned(self):
        """Heads may be centred, and of many columns some."""
        rows = self._rows[1:] if len(self._rows) >= MANY else self._rows
        ragged = [column for column in list(zip(*rows))[1:] if not is_aligned(column)]
        return len(ragged) * MANY <= len(self._parts)

    def heads(self):
        """None where the first row is not surely one of heads."""
        first, *others = ([cell.text for cell in row] for row in self._rows)
        underlined = len(self._lines) > 1 and is_rule(self._lines[1])
        if not (underlined or are_capitals(first, others) or are_above_amounts(first, others)):
            return None
        return [cell.text for cell in cells(self._lines[0], self._headed())]

    def _headed(self):
        """What parts columns of which each has a head."""
        parts = sorted([*self._parts, *self._narrow()])
        heads = cells(self._lines[0], parts)
        return [part for part, head in zip(parts, heads[1:]) if head.text]

    def _narrow(self):
        """Single blanks below each other, behind amounts."""
        below = [line for line in self._lines[1:] if not is_rule(line)]
        narrow = [blank for blank in self._blanks if not blank.wide and not blank.edge and len(below) > 1]
        return [blank for blank in narrow if all(AMOUNT.fullmatch(line[: blank.start].rpartition(" ")[2]) for line in below)]

    def rows(self, begin, headed):
        """The cells of each row from that line on, but for the heads."""
        parts = self._headed() if headed else self._parts
        told = []
        for line in self._lines[max(begin, headed) :]:
            if is_rule(line):
                continue
            row = cells(line, parts)
            if told and goes_on(row):
                told[-1][-1] += " " + row[-1].text
            else:
                told.append([cell.text for cell in row])
        return told


def cells(line, parts):
    begins = [0, *(part.start for part in parts)]
    return [cell(line, begin, end) for begin, end in zip(begins, [*begins[1:], len(line)])]


def cell(line, begin, end):
    text = line[begin:end]
    start = begin + len(text) - len(text.lstrip())
    return Cell(text.strip().removesuffix(","), start, start + len(text.strip()))


def is_rule(line):
    return bool(line.strip()) and decoration.LINE.fullmatch(line.strip()) is not None


def goes_on(row):
    """Whether it has only more of the row before's last cell."""
    return not any(cell.text for cell in row[:-1])


def is_other(line):
    line = line.rstrip()
    return line.endswith(GOES_ON) or bool(SENTENCE_END.search(line) or CODE.search(line))


def is_aligned(column):
    """On its left or its right."""
    filled = [cell for cell in column if cell.text]
    return len({cell.start for cell in filled}) < 2 or len({cell.end for cell in filled}) < 2


def are_capitals(first, others):
    filled = [text for text in first if text]
    return len(filled) > 1 and all(map(str.isupper, filled)) and not all(" ".join(row).isupper() for row in others)


def are_above_amounts(first, others):
    """Two columns may as well be names and values, and one row more of the same."""
    if len(first) < MANY or len(others) < 2 or any(map(AMOUNT.fullmatch, filter(None, first))):
        return False
    columns = zip(first, zip(*others))
    return any(head and all(map(AMOUNT.fullmatch, below)) for head, below in columns)
