"""The stage in the running engine: what is synthesised, and the user's rules."""

import json
import time

import pytest
from measures import ROUNDS, best_of
from tavin.engine import Engine
from tavin.settings import Settings


@pytest.fixture
def found_by_engine(tmp_path, monkeypatch):
    """The pieces that an engine makes of a text."""
    monkeypatch.setenv("XDG_CONFIG_HOME", str(tmp_path))
    engine = Engine(Settings(tmp_path / "engine.json"))
    monkeypatch.setattr(engine._choice, "language", lambda: "en-us")
    return lambda text: engine._reading_of(text)._find()


@pytest.fixture
def spoken(found_by_engine):
    """What an engine would have synthesised."""
    return lambda text: [str(piece).strip() for piece in found_by_engine(text) if piece]


def test_each_sentence_is_said_in_its_language(spoken):
    german = "Der Zug nach Köln fährt heute erst um 12:30 Uhr ab und kostet 5,50 €, z. B. mit der Karte."
    english = "The train to Cologne leaves at 12:30 today and costs $5.50, e.g. with the card."
    assert spoken(f"{english} {german}") == [
        "The train to Cologne leaves at 12 30 today and costs 5 dollars 50, for example with the card.",
        "Der Zug nach Köln fährt heute erst um 12 Uhr 30 ab und kostet 5 Euro 50, zum Beispiel mit der Karte.",
    ]


def test_code_is_said_in_the_language_of_the_text_around_it(spoken):
    text = "Das ist der Anfang von einem längeren Text über Programme.\n\n```\nif total == count return value\n```\n"
    assert spoken(text)[1:] == ["Code:", "if total gleich count return value"]


def test_the_next_paragraph_of_a_huge_text_without_empty_lines_is_found_at_once(found_by_engine):
    sentence = "The train to Cologne leaves at 12:30 today and costs $5.50, e.g. with the card. "
    found = found_by_engine(sentence * (10_000_000 // len(sentence)))

    def next_paragraph():
        """Processor time."""
        here = next(piece.place.paragraph for piece in found if piece)
        begin = time.thread_time()
        next(piece for piece in found if piece and piece.place.paragraph > here)
        return time.thread_time() - begin

    assert best_of(ROUNDS, 0.06, next_paragraph) < 0.06


def test_what_the_engine_reports_is_about_what_was_written(engine):
    engine.speak("**$5**")
    assert engine.wait_for("speaking")["chars"] == 6


def test_a_faulty_line_of_the_users_rules_is_told_once(engine):
    rules = engine.settings.with_name("pronunciation.toml")
    rules.parent.mkdir(parents=True, exist_ok=True)
    rules.write_text('hello = "goodbye"\nwhat\n', "utf-8")
    for told in (True, False):
        engine.speak("Hello.")
        error = engine.wait_for("idle")["error"]
        assert bool(error) == told, error
        assert not told or "pronunciation.toml: line 2" in error
    rules.write_text(json.dumps("hello") + ' = "goodbye"\n', "utf-8")
    engine.speak("Hello.")
    assert engine.wait_for("idle")["error"] is None
