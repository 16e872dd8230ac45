"""A place in the Bible: chapter and verses as two numbers, in English the book by its name."""

import functools
import re

from tavin.text.spoken.bible import BOOKS, SHORT
from tavin.text.spoken.patterns import any_of

NAMES = {*BOOKS.values(), "Job", "Psalms", "Mark", "Luke", "John", "Acts", "James"}
ENGLISH = rf"{any_of([*BOOKS, *SHORT, *NAMES])}|(?<=[12I] )(?:Samuel|Kings|Chronicles)"


def say(sentence, words):
    books = ENGLISH if words.language == "en" else words.books
    return places(books).sub(lambda place: spoken(place, words), sentence) if books and ":" in sentence else sentence


@functools.cache
def places(books):
    return re.compile(
        rf"\b({books}) ([1-9]\d{{0,2}}):([1-9]\d{{0,2}})(?:(?: ?– ?|-)((?:[1-9]\d{{0,2}}:)?\d{{1,3}}))?"
        r"(?![\w:]|[.,–-]\d| (?:h|Uhr|horas|heures|(?i:[ap]\.? ?m))\b)"
    )


def spoken(place, words):
    book, chapter, first, last = place.groups()
    verses = f"{first} {words.to} {last.replace(':', ' ')}" if last else first
    named = BOOKS.get(book) or SHORT.get(book, book) if words.language == "en" else book
    return f"{named} {chapter} {verses}"
