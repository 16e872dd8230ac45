"""What is said of what is written: the tables beside this file, one for each language."""

import pkgutil
from pathlib import Path

import pytest
from tavin.text.pieces import pieces
from tavin.text.spoken import blocks, rules
from tavin.text.spoken.say import say

HERE = Path(__file__).parent
LANGUAGES = {"en": "en-us", "de": "de", "fr": "fr", "es": "es"}
WRITTEN_FOR = str.maketrans({"¶": "\n", "⇥": "\t", "␌": "\x0c", "⍽": "\u202f"})
NO_RULES = {"numbers", "blanks", "grids"}  # what rules share


def table(code):
    """The snippets of a file, each with its section."""
    section = None
    for line in (HERE / f"{code}.txt").read_text(encoding="utf-8").splitlines():
        if " ⟹ " in line:
            written, spoken = line.split(" ⟹ ")
            yield section, written.translate(WRITTEN_FOR), spoken.split(" ¶ ")
        elif line.startswith("["):
            section = line.strip("[]")


SNIPPETS = [
    pytest.param(language, written, spoken, id=f"{code}-{section}-{number}")
    for code, language in LANGUAGES.items()
    for number, (section, written, spoken) in enumerate(table(code))
]


@pytest.mark.parametrize("language, written, spoken", SNIPPETS)
def test_a_snippet_is_said_as_a_person_would(language, written, spoken):
    found = pieces(written, language, 600, say=lambda sentence: say(sentence, language))
    assert [piece.strip() for piece in found if piece] == spoken


def test_there_are_enough_of_them():
    assert len(SNIPPETS) >= 300
    assert len({(param.values[0], param.values[1]) for param in SNIPPETS}) == len(SNIPPETS)


def test_each_rule_has_examples():
    names = {module.name for folder in (blocks, rules) for module in pkgutil.iter_modules(folder.__path__)}
    assert names - NO_RULES <= {section for section, _, _ in table("en")}
