"""A table: row by row, each cell with its column's head."""

import re

from tavin.text.spoken.bounds import fits
from tavin.text.spoken.marks import PARAGRAPH

BAR = re.compile(r"(?<!\\)\|")
LABEL = re.compile(r"[\W_]|\(?\w{1,4}[.)]")  # of an item of a list, which a tab sets off
STOPPED = re.compile(r"(?<=:)[;,](?= )")  # behind a name with a colon
LONGEST_HEAD = 40  # code points; what is longer would be heard in every row


class Heads:
    """Of a table's columns: each is said with the cells below it. One that cannot be comes before them, once, and one
    without any cell at the end."""

    def __init__(self, heads):
        self._heads = heads
        self._unsaid = [column for column, head in enumerate(heads) if head]

    def __len__(self):
        return len(self._heads)

    def row(self, found):
        if not self._heads:
            return row(found)
        heads = self._heads + [""] * len(found)
        filled = [column for column, cell in enumerate(found) if cell]
        said = "; ".join(named(found[column], heads[column]) for column in filled)
        is_short = fits(said, "|".join(found))
        unsaid = [heads[column] for column in filled if column in self._unsaid]
        alone = [head for head in unsaid if not (is_short and len(head) <= LONGEST_HEAD)]
        self._unsaid = [column for column in self._unsaid if column not in filled]
        return row(alone) + (spoken(said) if is_short else row(found))

    def rest(self):
        unsaid, self._unsaid = [self._heads[column] for column in self._unsaid], []
        return row(unsaid)


NO_HEADS = Heads([])


class Tables:
    def __init__(self):
        self._held = None  # a row that may be the head
        self._heads = NO_HEADS

    def take(self, line):
        """What was held back before the line, and what is said of it: None where it is none of a table."""
        if is_border(line):
            if self._held is None:
                return "", ""
            before, self._heads, self._held = self._heads.rest(), Heads(cells(self._held)), None
            return before, ""
        if is_row(line, self._heads):
            if self._heads:
                return "", self._heads.row(cells(line))
            before = self._release()
            self._held = line
            return before, ""
        before = self.end()
        parts = line.strip().split("\t")
        if len(parts) > 1 and not LABEL.fullmatch(parts[0]):
            return before, row(parts)
        return before, None

    def _release(self):
        held, self._held = self._held, None
        return row(cells(held)) if held is not None else ""

    def end(self):
        rest, self._heads = self._heads.rest(), NO_HEADS
        return rest + self._release()


def is_border(line):
    return "-" in line and ("|" in line or "+-" in line) and not set(line) - set("|:-+= ")


def is_row(line, heads):
    line = line.strip()
    bars = len(BAR.findall(line))
    return bars > 0 and (bool(heads) or bars > 1 and (line[0] == line[-1] == "|" or line.count(" | ") > 1)) or (
        " | " in line and bars == 1
    )


def cells(line):
    return [cell.replace("\\|", "|").strip() for cell in BAR.split(line.strip().removeprefix("|").removesuffix("|"))]


def row(found):
    return spoken(", ".join(cell.strip() for cell in found if cell.strip()))


def spoken(said):
    said = STOPPED.sub("", said)
    return f"{PARAGRAPH}{said}{'' if said[-1:] in '.!?:' else '.'}{PARAGRAPH}" if said else ""


def named(cell, head):
    return f"{head}: {cell}" if head and len(head) <= LONGEST_HEAD else cell
