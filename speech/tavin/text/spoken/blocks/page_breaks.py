"""Pages whose ends nothing marks, as PDF viewers copy them: a page's number, and what stands at its head or foot with
it, is left out where it interrupts a sentence, and nowhere else."""

import re

from tavin.text.lines import CLOSING, FULL_LINE, LIST_ITEM, SOFT_HYPHEN

LONGEST_LINE = 130  # code points; a longer one was not broken by a page's width
LONGEST_HEAD = 100
SHORT = 0.7  # of the line before: no line that went on would have ended there
FEWEST_WORDS = 5  # of a line of prose
MOST_HELD = 8
MOST_HEADS = 8  # those of left and right pages, of this chapter and the last
PAGE = r"(?!(?:1[5-9]|20)\d\d(?!\d))\d{1,4}(?!\d)"  # no year
NAMED = r"(?i:page|seite|página|pág\.|p\.|s\.) ?"
NUMBER = re.compile(
    rf"(?:{NAMED})?(?:{PAGE}|[ivx]{{2,5}})|([-–—~·]) ?{PAGE} ?\1|(?:[^\W\d_]{{1,8}}\.? )?{PAGE} ?(?:/|[^\W\d_]{{1,4}}) ?\d{{1,4}}"
)
PART = r"\s(?:[|/·•–—-]\s)?"
HEAD = re.compile(rf"{PAGE}{PART}[^\W\d_].*|[^\W\d_].*{PART}{PAGE}")
DIVIDED = re.compile(rf".*\w[-\u2010{SOFT_HYPHEN}]")
GLUED_NUMBER = re.compile(rf"{PAGE}(?=[^\W\d_])")
DIGITS = re.compile(r"\d+")


class PageBreaks:
    def __init__(self):
        self._lines = ["", ""]  # the last two of the text
        self._held = []  # a page's foot and the next one's head, or not
        self._heads = {}  # that were seen, with each number as 0 -> the pattern of one glued to a line
        self._page = None  # the last number that was glued to a line, or left out
        self._begun = False

    def take(self, line):
        """The lines that are sure by now."""
        return [sure for part in self._parted(line) for sure in self._take(part)]

    def _take(self, line):
        text = line.strip()
        if len(self._held) < MOST_HELD and self._is_broken_off() and (not text or self._may_be_head(text)):
            self._held.append(line)
            return []
        told = self._told(text)
        self._note([*told, line])
        self._held = []
        return [*told, line]

    def _parted(self, line):
        """Evince puts no line's end between pages: what the next one begins with is glued to the last line."""
        head = next(filter(None, (glued.search(line) for glued in self._heads.values())), None)
        rest = line[: head.start()].strip() if head else ""
        if is_wrapped(rest) or NUMBER.fullmatch(rest):
            return rest, head[0]
        number = GLUED_NUMBER.match(line)
        if number and self._is_broken_off() and self._goes_on(line[number.end() :]):
            before, self._page = self._page, int(number[0])
            if self._page - 1 == before:
                return number[0], line[number.end() :]
        return (line,)

    def end(self):
        return self._held

    def _note(self, lines):
        lines = list(map(str.strip, lines))
        if not self._begun and any(lines):  # a page's head may be where the text begins
            self._begun = True
            self._remember(next(filter(None, lines)))
        self._lines = [*self._lines, *lines][-2:]

    def _is_broken_off(self):
        """Whether the text ends within a sentence, with a line of a page's width."""
        before, last = self._lines
        return is_wrapped(last) and not ends_sentence(last) and (is_wrapped(before) or is_divided(last))

    def _may_be_head(self, line):
        if NUMBER.fullmatch(line) or self._is_known(line):
            return True
        return not line[0].islower() and len(line) <= min(LONGEST_HEAD, SHORT * len(self._lines[-1]))

    def _told(self, after):
        """Of what is held nothing, where it is a page's number and known heads between two lines of one sentence; a
        head that is seen first; or all."""
        found = list(filter(None, map(str.strip, self._held)))
        if not any(map(has_number, found)) or not self._goes_on(after):
            return self._held
        unknown = [line for line in found if not self._is_known(line)]
        for line in unknown:
            self._remember(line)
        heads = [line for line in unknown if not tells_page(line)]
        if any(map(has_number, heads)) or len(heads) > 1 or len(unknown) - len(heads) > 1:
            return self._held
        return ["", *heads, ""] if heads else []

    def _goes_on(self, after):
        if not after[:1].islower() or LIST_ITEM.match(after):
            return False
        return is_divided(self._lines[-1]) or is_wrapped(after)

    def _is_known(self, line):
        return len(line) <= LONGEST_HEAD and DIGITS.sub("0", line) in self._heads

    def _remember(self, line):
        if not (NUMBER.fullmatch(line) or line[0].islower() or is_wrapped(line) and not has_number(line)):
            head = DIGITS.sub("0", line[: LONGEST_HEAD + 1])
            self._heads[head] = re.compile(rf"(?<=[\w,;-]){re.escape(head).replace('0', DIGITS.pattern)}$")
            if len(self._heads) > MOST_HEADS:
                del self._heads[next(iter(self._heads))]


def is_wrapped(line):
    """Whether it may be a line of a paragraph that a page's width broke."""
    return FULL_LINE <= len(line) <= LONGEST_LINE and len(line.split()) >= FEWEST_WORDS


def is_divided(line):
    return bool(DIVIDED.fullmatch(line))


def ends_sentence(line):
    last = line.rstrip(CLOSING)[-1:]
    return not (last.isalnum() or last in ",;–—" or is_divided(line))


def has_number(line):
    return bool(NUMBER.fullmatch(line) or HEAD.fullmatch(line))


def tells_page(line):
    """Also at the first sight: "Table 3" may be what it is."""
    return has_number(line) and (bool(NUMBER.fullmatch(line)) or len(line.split()) > 2)
