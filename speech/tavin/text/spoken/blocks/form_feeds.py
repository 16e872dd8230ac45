"""Pages of a document, parted by form feeds: what stands at the head of each page is read once, page
numbers not at all, and a sentence goes on over a page's end."""

import re

PAGE_END = "\x0c"
PAGE = "page|p|pp|pg|seite|s|página|pagina|pág|pag|str|strona|sida|side|sivu"
# "- 12 -", "Page 3 of 12"; but not "Total 450"
NUMBER = re.compile(
    rf"[\W_]*(?:(?:{PAGE})\.? )?\d{{1,4}}(?: ?(?:/|[^\W\d_]{{1,3}}) ?\d{{1,4}})?[\W_]*", re.IGNORECASE
)
OWN_NUMBER = re.compile(r"^(?!{0})\d{{1,4}}\b|\b(?!{0})\d{{1,4}}$".format(r"(?:1[5-9]|20)\d\d\b"))  # in a head; no year
HEADS = 4  # those of left and right pages, of this chapter and the last
LONGEST_HEAD = 100
MOST_HELD = 8


class FormFeeds:
    def __init__(self):
        self._heads = []
        self._top = True  # of a page, where its head may be
        self._held = []  # blank lines and a number: a page's end, or not

    def take(self, line):
        """The lines that are sure by now."""
        before, page_end, line = line.rpartition(PAGE_END)
        told = []
        if page_end:
            told = [part for part in before.split(PAGE_END) if part.strip() and not NUMBER.fullmatch(part)]
            self._held = []
            self._top = True
        if self._top and not self._is_text(line):
            return told
        if (not line.strip() or NUMBER.fullmatch(line)) and len(self._held) < MOST_HELD:
            self._held.append(line)
            return told
        told += [*self._held, line]
        self._held = []
        return told

    def _is_text(self, line):
        """Whether the first line of a page is no blank one and no head that was read."""
        if not line.strip():
            return False
        head = without_number(line.strip())
        if head in self._heads and len(head) <= LONGEST_HEAD:
            return False
        self._heads = [*self._heads, head[: LONGEST_HEAD + 1]][-HEADS:]
        self._top = False
        return True

    def end(self):
        return self._held


def without_number(head):
    """Not of "Chapter 2", which is what a page begins with."""
    words = OWN_NUMBER.sub("", head).strip()
    return words if len(words.split()) > 1 else head
