"""How a text is cut into pieces."""

import time
import tracemalloc

import pytest
from tavin.text import STEP, pieces


def cut(text, longest=600, language="en-us"):
    return [piece for piece in pieces(text, language, longest) if piece]


@pytest.mark.parametrize(
    "text, wanted",
    [
        ("One. Two! Three?", ["One.", "Two!", "Three?"]),
        ("Dr. Smith met Mr. Jones. They left.", ["Dr. Smith met Mr. Jones.", "They left."]),
        ("J. R. Smith wrote it. Good.", ["J. R. Smith wrote it.", "Good."]),
        ("It costs 3.50 today. Fine.", ["It costs 3.50 today.", "Fine."]),
        ("Hello 😀. Again 😀!", ["Hello 😀.", "Again 😀!"]),
        ("你好。再见。", ["你好。", "再见。"]),
        ("A heading\n\nA text.", ["A heading", "A text."]),
        ("A heading\r\n\r\nA text.", ["A heading", "A text."]),
        ("milk\nbread\neggs", ["milk bread eggs"]),
        ("Milk\nBread\nEggs", ["Milk", "Bread", "Eggs"]),
        (
            "This line of a page was wrapped at its\nright border and goes on. And so\non.",
            ["This line of a page was wrapped at its right border and goes on.", "And so on."],
        ),
        ("A hyphen-\nated word.", ["A hyphenated word."]),
        ("zero\u200bwidth \ufffcobject \x01mark\x7f.", ["zerowidth object mark ."]),
        ("lone \ud800 half", ["lone half"]),
        ("icon \ue0b0 of a terminal\U000f0001", ["icon of a terminal"]),
        ("left\u061c right\U000e0041", ["left right"]),
        ("مرحبا Hello 你好。שלום!", ["مرحبا Hello 你好。", "שלום!"]),
        ("", []),
        (" \n\t\u00a0\n ", []),
    ],
)
def test_sentences(text, wanted):
    assert cut(text) == wanted


def test_an_overlong_sentence_is_cut_after_a_clause_or_a_word():
    sentence = "some words, " * 100
    parts = cut(sentence, 50)
    assert all(len(part) <= 50 and part.endswith(",") for part in parts)
    assert " ".join(parts) == sentence.strip()
    words = cut("word " * 100, 50)
    assert set(" ".join(words).split()) == {"word"}


def test_an_endless_word_is_cut_at_the_limit():
    parts = cut("x" * 10_000, 600)
    assert "".join(parts) == "x" * 10_000
    assert max(map(len, parts)) == 600


@pytest.mark.parametrize(
    "unit, whole",
    [
        ("👨‍👩‍👧‍👦", "👨‍👩‍👧‍👦"),  # joined by invisible marks
        ("🇩🇪", "🇩🇪"),
        ("👍🏽", "👍🏽"),
        ("e\u0301\u0323", "e\u0301\u0323"),
        ("森林に住んでいる", "森林"),
        ("北京大学生活动中心", "北京"),
        ("ภาษาไทย", "ไทย"),
    ],
)
def test_what_belongs_together_is_not_cut_apart(unit, whole):
    text = unit * 500
    parts = cut(text, 100)
    assert "".join(parts) == text
    assert max(map(len, parts)) <= 100
    assert sum(part.count(whole) for part in parts) == 500


def first_cut(text, longest=300, first=60):
    return [piece for piece in pieces(text, "en-us", longest, first) if piece]


def test_the_first_pieces_are_short_and_grow():
    lengths = [len(piece) for piece in first_cut("some more words and " * 100)]
    assert lengths[0] <= 60
    for index, length in enumerate(lengths[1:-1], 1):
        assert length <= max(60, sum(lengths[:index]))
    assert max(lengths) > 280


def test_a_short_first_piece_ends_where_a_clause_does():
    sentence = "When the fox came out of the wood, it saw a dog that was far too lazy to move at all."
    assert first_cut(sentence)[0] == "When the fox came out of the wood,"
    assert " ".join(first_cut(sentence)) == sentence


def test_a_sentence_a_little_longer_stays_whole():
    sentence = "This sentence is longer than the sixty that would be good."
    assert first_cut(sentence, first=len(sentence) - 10) == [sentence]
    assert first_cut("One. Two. Three.") == ["One.", "Two.", "Three."]


@pytest.mark.parametrize("unit", ["This sentence goes on for long, but like any other it ends. ", "x"])
def test_ten_megabytes_come_to_their_end_whole(unit):
    count = 10_000_000 // len(unit.encode())
    last, length, steps = "", 0, 0
    for piece in pieces(unit * count + " The end.", "en-us", 600):
        steps += 1
        length += len(piece.replace(" ", ""))
        last = piece or last
    assert last.endswith("The end.")
    assert length == count * len(unit.replace(" ", "")) + len("Theend.")
    assert steps < 2 * count


@pytest.mark.parametrize("filler", ["", "x", "😀", "ab\r\n", "word ", "A sentence, and more. "])
def test_nothing_is_lost_or_doubled_where_portions_meet(filler):
    text = filler * (STEP // max(1, len(filler)) - 3)
    text += " ".join(f"Sentence number {index} ends here." for index in range(500))
    joined = " ".join(cut(text))
    for index in range(500):
        assert joined.count(f"Sentence number {index} ends here.") == 1, index


@pytest.mark.parametrize("unit", ["Short sentence here. ", "x", " ", "\u200b", "\n", "😀", "؟ مرحبا ", "a\n"])
def test_a_huge_text_costs_little_at_once(unit):
    text = unit * (2_000_000 // len(unit))
    longest_step = measured = 0
    begin = time.thread_time()
    for count, _ in enumerate(pieces(text, "en-us", 600)):
        now = time.thread_time()
        longest_step, begin = max(longest_step, now - begin), now
        if count == 100:
            tracemalloc.start()  # slows everything down, so not while the time is taken
            longest_step, measured = 0, longest_step
        if count > 400:
            break
    _, peak = tracemalloc.get_traced_memory()
    tracemalloc.stop()
    assert peak < 2_000_000
    assert measured < 0.05
