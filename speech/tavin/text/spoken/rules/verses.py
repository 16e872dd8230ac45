"""A place in the Bible: the book by its name, chapter and verses as two numbers."""

import re

from tavin.text.spoken.patterns import any_of

BOOKS = {
    "Gen.": "Genesis", "Exod.": "Exodus", "Lev.": "Leviticus", "Deut.": "Deuteronomy", "Josh.": "Joshua", "Judg.": "Judges",
    "Ps.": "Psalm", "Prov.": "Proverbs", "Eccl.": "Ecclesiastes", "Isa.": "Isaiah", "Jer.": "Jeremiah", "Ezek.": "Ezekiel",
    "Dan.": "Daniel", "Matt.": "Matthew", "Rom.": "Romans", "Cor.": "Corinthians", "Gal.": "Galatians", "Eph.": "Ephesians",
    "Phil.": "Philippians", "Col.": "Colossians", "Thess.": "Thessalonians", "Tim.": "Timothy", "Heb.": "Hebrews",
    "Pet.": "Peter", "Rev.": "Revelation",
}
NAMES = {*BOOKS.values(), "Samuel", "Kings", "Chronicles", "Job", "Psalms", "Mark", "Luke", "John", "Acts", "James"}
PLACE = re.compile(
    rf"\b({any_of([*BOOKS, *NAMES])}) ([1-9]\d{{0,2}}):([1-9]\d{{0,2}})(?:(?: ?– ?|-)(\d{{1,3}}))?(?![\w:]|[.,–-]\d| [ap]\.?m\b)"
)


def say(sentence, words):
    return PLACE.sub(lambda place: spoken(place, words), sentence) if words.language == "en" else sentence


def spoken(place, words):
    book, chapter, first, last = place.groups()
    verses = f"{first} {words.to} {last}" if last else first
    return f"{BOOKS.get(book, book)} {chapter} {verses}"
