"""English names of the Bible's books, by the abbreviations that stand before a chapter."""

BOOKS = {
    "Gen.": "Genesis", "Exod.": "Exodus", "Lev.": "Leviticus", "Deut.": "Deuteronomy", "Josh.": "Joshua", "Judg.": "Judges",
    "Ps.": "Psalm", "Prov.": "Proverbs", "Eccl.": "Ecclesiastes", "Isa.": "Isaiah", "Jer.": "Jeremiah", "Ezek.": "Ezekiel",
    "Dan.": "Daniel", "Matt.": "Matthew", "Rom.": "Romans", "Cor.": "Corinthians", "Gal.": "Galatians", "Eph.": "Ephesians",
    "Phil.": "Philippians", "Col.": "Colossians", "Thess.": "Thessalonians", "Tim.": "Timothy", "Heb.": "Hebrews",
    "Pet.": "Peter", "Rev.": "Revelation",
}
# Without the stop, but for those that people, towns and ranks are called as well.
SHORT = {
    **{book.removesuffix("."): name for book, name in BOOKS.items()}, "Ex": "Exodus", "Num": "Numbers", "Pss": "Psalms",
    "Mt": "Matthew", "Mk": "Mark", "Lk": "Luke", "Jn": "John", "Jas": "James",
}
for other in ("Josh", "Dan", "Matt", "Phil", "Tim", "Col", "Rev", "Rom"):
    del SHORT[other]
