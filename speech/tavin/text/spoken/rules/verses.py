"""A place in the Bible: the book by its name, chapter and verses as two numbers."""

import re

from tavin.text.spoken.bible import BOOKS
from tavin.text.spoken.patterns import any_of

NAMES = {*BOOKS.values(), "Job", "Psalms", "Mark", "Luke", "John", "Acts", "James"}
PLACE = re.compile(
    rf"\b({any_of([*BOOKS, *NAMES])}|(?<=[12I] )(?:Samuel|Kings|Chronicles)) ([1-9]\d{{0,2}}):([1-9]\d{{0,2}})(?:(?: ?– ?|-)(\d{{1,3}}))?(?![\w:]|[.,–-]\d| (?i:[ap]\.?m\b))"
)


def say(sentence, words):
    return PLACE.sub(lambda place: spoken(place, words), sentence) if words.language == "en" else sentence


def spoken(place, words):
    book, chapter, first, last = place.groups()
    verses = f"{first} {words.to} {last}" if last else first
    return f"{BOOKS.get(book, book)} {chapter} {verses}"
