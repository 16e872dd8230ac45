"""A table whose columns blanks part, as terminals and PDF viewers copy them: row by row. Lines are held back until it is
known whether they are one."""

import re

from tavin.text.spoken.blocks import bullets
from tavin.text.spoken.blocks.blanks import blanks, boundaries, common
from tavin.text.spoken.blocks.grids import GAP, MANY, Grid, is_rule
from tavin.text.spoken.blocks.tables import LABEL, NO_HEADS, Heads, is_border, is_row, row

LONGEST_LINE = 300  # code points; of what is longer blanks part no columns
MOST_HELD = 30
KEPT = 2  # rows of a table that goes on
MODE = r"[-bcdlps](?:[r-][w-][xsSt-]){2}[r-][w-][xtT-][.+@]?"
DATE = r"\S+\s+\S+\s+[\d:]+|\d+-\d+-\d+ [\d:.]+(?: [+-]\d+)?"
# As `ls -l` tells of a file; a single blank may be all that parts its cells.
LISTING = re.compile(rf"\s*({MODE})\s+(\d+)\s+(\S+)\s+(\S+)\s+([\d.,]+[KMGTP]?)\s+({DATE})\s+(\S.*)")


class Columns:
    def __init__(self):
        self._held = []
        self._said = 0  # of those that are held: they show where the columns are
        self._blanks = []  # that all of them have in common
        self._heads = NO_HEADS  # of the table that is being read

    def take(self, line):
        """What is sure by now: pairs of a line that is in no table and None, or of None and what is said of a row."""
        if len(line) > LONGEST_LINE or not GAP.search(line) and not self._held and "rw" not in line:
            return [*self.end(), (line, None)]
        if file := LISTING.fullmatch(line):
            return [*self.end(), (None, row(file.groups()))]
        if self._held and is_rule(line) and not is_rule(self._held[-1]):
            self._held.append(line)
            return []
        if not may_be_row(line):
            return [*self.end(), (line, None)]
        found = self._common(line)
        if found is None:
            return self._apart(line)
        self._held.append(line)
        self._blanks = found
        return self._sure() if len(self._held) - self._said >= MOST_HELD else []

    def end(self):
        return [*self._sure(), *self._forget()]

    def _forget(self):
        rest = self._heads.rest()
        self._held, self._said, self._blanks, self._heads = [], 0, [], NO_HEADS
        return [(None, rest)] if rest else []

    def _common(self, line):
        """The blanks of the held lines and this one, where it may be a row below them."""
        if not self._held:
            return blanks(line) if GAP.search(line) else None
        known = boundaries(self._blanks)
        end = known[-1].end if known else 0
        if known and not line[:end].strip():  # more of the row before's last cell
            return self._blanks
        if known and len(self._held) > 1:  # justified prose may stand in the last
            line = line[:end] + GAP.sub(" ", line[end:])
        found = common(self._blanks, blanks(line))
        parts = boundaries(found or ())
        if not parts or not line[: parts[-1].end].strip():
            return found if parts else None
        inside = [part for part in parts if part.end <= len(line.rstrip())]
        fewest = 1 if any(map(is_rule, self._held)) else MANY
        whole = len(parts) == len(boundaries(self._blanks)) and len(inside) >= fewest
        return found if whole or GAP.search(line) else None

    def _apart(self, line):
        """A line that does not go on with the columns. One that is too wide for them is a row all the same."""
        told = self._sure()
        found = GAP.split(line.strip())
        if self._held and len(found) >= MANY:
            return [*told, (None, self._heads.row(found) if len(found) == len(self._heads) else row(found))]
        told += self._forget()
        if len(found) == 1:
            return [*told, (line, None)]
        self._held, self._blanks = [line], blanks(line)
        return told

    def _sure(self):
        """The held lines are told. Of a table some stay, so that the columns are known."""
        new = self._held[self._said :]
        if not new:
            return []
        grid = Grid(self._held, self._blanks)
        if not self._said:
            if not grid.is_sure():
                return [*self._forget(), *((line, None) for line in new)]
            self._heads = Heads(grid.heads() or [])
        told = [(None, self._heads.row(cells)) for cells in grid.rows(self._said, bool(self._heads))]
        heads = self._held[: 1 + is_rule(self._held[1])] if self._heads else []
        self._held = heads + [line for line in self._held[len(heads) :] if not is_rule(line)][-KEPT:]
        self._said = len(self._held)
        return told


def may_be_row(line):
    """What has marks of its own is read by these."""
    if not line.strip() or "\t" in line or line.startswith(">") or is_rule(line):
        return False
    if is_row(line, NO_HEADS) or is_border(line):
        return False
    return not bullets.BULLET.match(line) and not LABEL.fullmatch(GAP.split(line.strip())[0])
