"""Pages whose ends nothing marks, as PDF viewers copy them: a page's number, with the head or foot it stands in, is left
out where it interrupts a sentence and counts up from the page before."""

import re

from tavin.text.lines import CLOSING, FULL_LINE, LIST_ITEM, SOFT_HYPHEN
from tavin.text.spoken.blocks.fences import FENCE

PAGE_LENGTH = 800  # code points, at least; verses, captions and rows are nearer to each other
LONGEST_LINE = 130  # a longer one was not broken by a page's width
LONGEST_HEAD = 100
SHORT = 0.7  # of the line before: no line that went on would have ended there
FEWEST_WORDS = 5  # of a line of prose
MOST_HELD = 8
MOST_SEEN = 8  # heads and feet: those of left and right pages, of this chapter and the last
NUMBER = re.compile(r"(?<!\S)(?!(?:1[5-9]|20)\d\d(?!\d))\d{1,4}(?=[\s/]|$)")  # no year
BESIDE_NUMBER = re.compile(r"[-–—~·|\s]*(?:/ ?\d{1,4})?")  # "- 12 -", "12/30"
DIVIDED = re.compile(rf".*\w[-\u2010{SOFT_HYPHEN}]")


class UnmarkedPages:
    def __init__(self):
        self._lines = ["", ""]  # the last two of the text
        self._held = []  # a page's foot and the next one's head, or not
        self._seen = {}  # what may be a head or foot: before and after its number -> that, the length of the text by then
        self._length = 0

    def take(self, line, in_code=False):
        """The lines that are sure by now."""
        if in_code:
            told, self._held, self._lines = [*self._held, line], [], ["", ""]
            return told
        return [sure for part in self._parted(line) for sure in self._take(part)]

    def end(self):
        return self._held

    def _parted(self, line):
        """Evince puts no line's end between pages: the next one's head is glued to the last line."""
        for (before, after), (number, _) in self._seen.items():
            for head in (f"{before}{number + step}{after}" for step in (1, 2)):
                rest = line.removesuffix(head)
                if rest != line and has_words(head) and is_wrapped(rest) and rest[-1] != " " and self._counts_up(head):
                    return rest, head
        return (line,)

    def _take(self, line):
        text = line.strip()
        if len(self._held) < MOST_HELD and self._is_broken_off() and self._may_be_head(text):
            self._held.append(line)
            return []
        between = "\n".join(filter(None, map(str.strip, self._held)))
        told = [] if self._goes_on(text) and self._counts_up(between) else self._held
        self._held = []
        self._note(told, between)
        self._note([line], "" if is_wrapped(text) else text)
        return [*told, line]

    def _is_broken_off(self):
        """Whether the text ends within a sentence, with a line of a page's width."""
        before, last = self._lines
        return is_wrapped(last) and not ends_sentence(last) and (is_wrapped(before) or is_divided(last))

    def _may_be_head(self, text):
        if text[:1].islower() or text[-1:] in (",", ";", ":") or FENCE.fullmatch(text):
            return False
        return len(text) <= SHORT * len(self._lines[-1])

    def _goes_on(self, after):
        if not after[:1].islower() or LIST_ITEM.match(after):
            return False
        return is_divided(self._lines[-1]) or is_wrapped(after)

    def _counts_up(self, text):
        """Left and right pages may have heads of their own."""
        return any(words in self._last(number - 1) or self._last(number - 1) and words in self._last(number - 2, 2)
                   for words, number in numbered(text))

    def _last(self, number, pages=1):
        """The words that stood beside this number so many pages ago."""
        latest = self._length - pages * PAGE_LENGTH
        return [words for words, seen in self._seen.items() if seen[0] == number and seen[1] <= latest]

    def _note(self, lines, head):
        texts = [line.strip() for line in lines]
        self._lines = [*self._lines, *texts][-2:]
        self._length += sum(map(len, texts))
        for words, number in numbered(head):
            self._seen.pop(words, None)
            self._seen[words] = number, self._length
            if len(self._seen) > MOST_SEEN:
                del self._seen[next(iter(self._seen))]


def numbered(head):
    """Each number that may be a page's, and what stands before and after it; "Table 3" may be what it is."""
    found = NUMBER.finditer(head) if len(head) <= LONGEST_HEAD else ()
    parts = [((head[: number.start()], head[number.end() :]), int(number[0])) for number in found]
    return [part for part in parts if has_words(head) or BESIDE_NUMBER.fullmatch("".join(part[0]))]


def has_words(head):
    return sum(any(map(str.isalpha, word)) for word in head.split()) > 1


def is_wrapped(line):
    """Whether it may be a line of a paragraph that a page's width broke."""
    return FULL_LINE <= len(line) <= LONGEST_LINE and len(line.split()) >= FEWEST_WORDS


def is_divided(line):
    return bool(DIVIDED.fullmatch(line))


def ends_sentence(line):
    last = line.rstrip(CLOSING)[-1:]
    return not (last.isalnum() or last in ",;–—" or is_divided(line))
