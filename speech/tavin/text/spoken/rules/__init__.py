"""Sentence by sentence, in the sentence's language; each rule has a file."""

from tavin.text.spoken.rules import (
    abbreviations,
    acronyms,
    checksums,
    dates,
    emoji,
    fractions,
    identifiers,
    initials,
    links,
    mail,
    menus,
    money,
    numerals,
    ordinals,
    paths,
    phones,
    pressures,
    ranges,
    rulers,
    signs,
    times,
    units,
    verses,
    weekdays,
    years,
)

# What is one thing with signs in it comes first, so that no other rule takes a part of it; then numbers,
# the more particular first; signs last, when what they belong to is known.
RULES = (
    *(links, mail, checksums, paths, emoji),
    *(phones, verses, rulers, numerals, weekdays, dates, times, pressures, fractions, ranges, years, money, units, ordinals),
    *(abbreviations, initials, menus, signs, acronyms, identifiers),
)
