"""A place in the Bible: chapter and verses as two numbers, in English the book by its name."""

import functools
import re

from tavin.text.spoken.bible import BOOKS, SHORT
from tavin.text.spoken.patterns import any_of

NAMES = {*BOOKS.values(), "Job", "Psalms", "Mark", "Luke", "John", "Acts", "James"}
ENGLISH = rf"{any_of([*BOOKS, *SHORT, *NAMES])}|(?<=[12I] )(?:Samuel|Kings|Chronicles)"
NUMBER = re.compile(r"\b[1-5]\.? $")


def say(sentence, words):
    books = ENGLISH if words.language == "en" else "|".join(filter(None, (words.books, words.books_alike)))
    return places(books).sub(lambda place: spoken(place, words), sentence) if books and ":" in sentence else sentence


@functools.cache
def places(books):
    return re.compile(
        rf"\b({books}) ([1-9]\d{{0,2}}):([1-9]\d{{0,2}})(?:(?: ?– ?|-)((?:[1-9]\d{{0,2}}:)?\d{{1,3}}))?"
        r"(?![\w:]|[.,–-]\d| (?:h|Uhr|horas|heures|(?i:[ap]\.? ?m))\b)"
    )


def spoken(place, words):
    book, chapter, first, last = place.groups()
    if words.books_alike and re.fullmatch(words.books_alike, book) and not is_sure(place):
        return place[0]
    verses = f"{first} {words.to} {last.replace(':', ' ')}" if last else first
    named = BOOKS.get(book) or SHORT.get(book, book) if words.language == "en" else book
    return f"{named} {chapter} {verses}"


def is_sure(place):
    """Not "Juan 14:30", which may be a time with him, nor "Römer 3:2", which may be how they won."""
    begin, end = place.span()
    text = place.string
    if NUMBER.search(text, max(0, begin - 4), begin) or text[begin - 1 : begin] == "(" and text[end : end + 1] in (")", ";"):
        return True
    return int(place[2]) > 24 or int(place[3]) > 59
