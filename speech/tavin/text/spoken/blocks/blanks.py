"""Where lines are blank, and where several lines are blank at the same columns."""

import re
from typing import NamedTuple

RUN = re.compile(r"(?<=\S)\s+(?=\S)")
FAR = 1 << 20


class Blank(NamedTuple):
    """Columns from `start` on, before `end`."""

    start: int
    end: int
    wide: bool  # somebody put two blanks here or more
    edge: bool  # a line's indent, or what is behind its end


def blanks(line):
    """From left to right."""
    indent, end = len(line) - len(line.lstrip()), len(line.rstrip())
    inner = [Blank(run.start(), run.end(), run.end() - run.start() > 1, False) for run in RUN.finditer(line)]
    return [Blank(0, indent, False, True)] * bool(indent) + inner + [Blank(end, FAR, False, True)]


def common(these, those):
    """What is blank in both; None where a wide one has nothing of that."""
    pairs = list(meeting(these, those))
    met = {blank for pair in pairs for blank in pair}
    if any(blank.wide and blank not in met for blank in (*these, *those)):
        return None
    # What meets a wide one is no gap between columns at a blank between words as well.
    parting = {blank for pair in pairs if pair[0].wide and pair[1].wide for blank in pair}
    return [overlap(*pair) for pair in pairs if pair[0].wide == pair[1].wide or not parting & set(pair)]


def meeting(these, those):
    these, those = these[::-1], those[::-1]
    while these and those:
        this, that = these[-1], those[-1]
        if max(this.start, that.start) < min(this.end, that.end) and (this.wide or that.wide or this.edge == that.edge):
            yield this, that
        ended = these if this.end <= that.end else those
        ended.pop()


def overlap(this, that):
    return Blank(max(this.start, that.start), min(this.end, that.end), this.wide or that.wide, this.edge and that.edge)


def boundaries(found):
    """Those that surely part columns."""
    return [blank for blank in found if blank.wide]
