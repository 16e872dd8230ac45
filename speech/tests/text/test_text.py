"""How a text is cut into pieces."""

import time
import tracemalloc
from itertools import groupby

import pytest
from tavin.text.pieces import LONGEST_PARAGRAPH, STEP, pieces


def cut(text, longest=600, language="en-us"):
    return [piece.strip() for piece in pieces(text, language, longest) if piece]


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
        (
            "1. Sift the flour and the sugar into the largest bowl\n2. Add two eggs\n3. Stir",
            ["1.", "Sift the flour and the sugar into the largest bowl", "2.", "Add two eggs", "3.", "Stir"],
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


RUNNING_TEXT = [
    ("e\ufb03cient \ufb02ow, \ufb01ne", ["efficient flow, fine"]),
    ("u\u0308ber", ["über"]),
    ("\u1112\u1161\u11ab\u1100\u1173\u11af", ["한글"]),
    ("auto\u00ad\nmatic and auto\u00admatic", ["automatic and automatic"]),
    ("auto\u2010\nmatic", ["automatic"]),
    ("über-\nżółty, niż-\nszy, дру-\nгой, λέ-\nξη", ["überżółty, niższy, другой, λέξη"]),
    ("Nord-\nSüd", ["Nord-Süd"]),
    ("COVID-\n19", ["COVID-19"]),
    ("an e-\nmail", ["an e-mail"]),
    ("a pre-\nand post-war house", ["a pre- and post-war house"]),
    ("das Für-\nund Wider", ["das Für- und Wider"]),
    ("a list -\nAnd more", ["a list -", "And more"]),
    (
        "This line of a page was wrapped at its right\n(or so it seems) and goes on,\nas does “this”\none.",
        ["This line of a page was wrapped at its right (or so it seems) and goes on, as does “this” one."],
    ),
    (
        "This line of a page was wrapped before what Mr.\nJones called „Gänsefüßchen“.",
        ["This line of a page was wrapped before what Mr. Jones called „Gänsefüßchen“."],
    ),
    (
        "This line of a page was wrapped before the quote\n“Nothing ever goes on” was said.",
        ["This line of a page was wrapped before the quote “Nothing ever goes on” was said."],
    ),
    (
        "These are the things that you should bring along\na) a towel\nb) soap",
        ["These are the things that you should bring along", "a) a towel", "b) soap"],
    ),
    (
        "This line of a page was wrapped right before the\n3. chapter.",
        ["This line of a page was wrapped right before the 3. chapter."],
    ),
    ("一行中文文字在页面的右边界处被断开了所以它还没有\n结束。再见。", ["一行中文文字在页面的右边界处被断开了所以它还没有结束。", "再见。"]),
    ("牛奶，\n面包", ["牛奶，面包"]),
    ("牛奶\n面包", ["牛奶", "面包"]),
    (
        "> Somebody wrote that this line was wrapped and\n> Went on.\n>\n> Twice.\nThat is so.",
        ["Somebody wrote that this line was wrapped and Went on.", "Twice.", "That is so."],
    ),
    (">> One.\n> Two.", ["One.", "Two."]),
    ("> One line.", ["One line."]),
    ("Share\n> 50 %", ["Share", "> 50 %"]),
    ("a > b", ["a > b"]),
    ("A much longer heading, of more than forty letters\n\nA text.", ["A much longer heading, of more than forty letters", "A text."]),
    ("See p. 5. Then vol. 2. And Fig. 3.", ["See p. 5.", "Then vol. 2.", "And Fig. 3."]),
    ("It is hot, e. g. in Spain. Or i.e. Italy.", ["It is hot, e. g. in Spain.", "Or i.e. Italy."]),
    ("“Why?” he asked. “Why not!” Peter said.", ["“Why?” he asked.", "“Why not!”", "Peter said."]),
    ("He went on … and on. etc. and so on.", ["He went on … and on. etc. and so on."]),
    ("It was plan b. Then came c.", ["It was plan b.", "Then came c."]),
]
GERMAN_TEXT = [
    ("Ich war am Meer. So ist es wahr. Der Club. Das sah Peter. Es ist so.",
     ["Ich war am Meer.", "So ist es wahr.", "Der Club.", "Das sah Peter.", "Es ist so."]),
    ("Das ist z. B. gut. Und d. h. Peter kommt.", ["Das ist z. B. gut.", "Und d. h. Peter kommt."]),
    ("Das gilt i. d. R. Kindern, u. a. Peter. So.", ["Das gilt i. d. R. Kindern, u. a. Peter.", "So."]),
    ("Am 3. Mai kam er. Es war der 12. Dann ging er.", ["Am 3. Mai kam er.", "Es war der 12.", "Dann ging er."]),
    ("Im 18. Jahrhundert bzw. Mittelalter waren es ca. 5.", ["Im 18. Jahrhundert bzw. Mittelalter waren es ca. 5."]),
]


@pytest.mark.parametrize("text, wanted", RUNNING_TEXT)
def test_running_text(text, wanted):
    assert cut(text) == wanted


@pytest.mark.parametrize("text, wanted", GERMAN_TEXT)
def test_german_abbreviations(text, wanted):
    assert cut(text, language="de") == wanted


def test_an_abbreviation_is_a_whole_word():
    assert cut("¿Y usted? Pregunto a usted. Dr. López sale.", language="es") == [
        "¿Y usted?",
        "Pregunto a usted.",
        "Dr. López sale.",
    ]


@pytest.mark.parametrize("text, wanted", RUNNING_TEXT)
def test_running_text_wherever_portions_meet(text, wanted):
    for place in range(len(text)):
        before = "x" * (STEP - place - 2) + "\n\n"
        assert cut(before + text, longest=STEP)[1:] == wanted, (text[:place], text[place:])


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
    assert max(map(len, parts)) == 599  # and the mark


@pytest.mark.parametrize("text", ["word " * 300 + ".", "x" * 3000 + " end.", "森林に住んでいる" * 300])
def test_what_is_cut_off_is_marked_and_still_short_enough(text):
    *cut_off, last = [piece for piece in pieces(text, "en-us", 100, 50) if piece]
    assert len(cut_off) > 5
    assert all(piece.endswith(" ") and not piece.endswith("  ") for piece in cut_off)
    assert not last.endswith(" ")
    assert max(map(len, cut_off)) <= 100


def test_a_sentence_is_not_marked():
    assert list(filter(None, pieces("One. \nTwo.\n\nThree", "en-us", 100))) == ["One.", "Two.", "Three"]


@pytest.mark.parametrize(
    "unit, whole",
    [
        ("👨‍👩‍👧‍👦", "👨‍👩‍👧‍👦"),  # joined by invisible marks
        ("🇩🇪", "🇩🇪"),
        ("👍🏽", "👍🏽"),
        ("\u1eb9\u0301", "\u1eb9\u0301"),
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
    return [piece.strip() for piece in pieces(text, "en-us", longest, first) if piece]


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


@pytest.mark.parametrize("whole", ["1,234,567", "123,50", "12:30", "3,5"])
def test_a_number_is_not_cut_at_its_punctuation(whole):
    for before in range(20, 60):
        sentence = "so many " * (before // 8) + "x" * (before % 8) + f" {whole} and more words until this comes to its end"
        assert whole in " ".join(first_cut(sentence)).split(), first_cut(sentence)


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


@pytest.mark.parametrize("unit", ["Short sentence here. ", "x", " ", "\u200b", "\n", "😀", "؟ مرحبا ", "a\n", "\u0323\u0301", "> "])
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


def test_pieces_know_their_sentence_and_their_paragraph():
    text = "One of them. Two of them.\n\nThree “said the other man here”, four.\n \t\n\nFive" + ", and on" * 60 + ". Six."
    found = [piece for piece in pieces(text, "en-us", 300, divide=lambda sentence: sentence.partition("“")) if piece]
    assert [(piece.place.sentence, piece.place.paragraph) for piece in found] == [
        (0, 0), (1, 0), (2, 1), (2, 1), (2, 1), (3, 2), (3, 2), (4, 2)]
    assert found[0].place.text.strip() == "One of them."


def test_a_long_text_counts_its_paragraphs_over_all_of_its_portions():
    text = "\n\n".join(["This is a sentence. And this is another one."] * 500)
    places = [piece.place[:2] for piece in pieces(text, "en-us", 300) if piece]
    assert places == [(number, number // 2) for number in range(1000)]


@pytest.mark.parametrize("end", [" ", "\n"])
def test_a_paragraph_without_an_empty_line_ends_after_a_page_with_a_sentence(end):
    text = f"This is a sentence, and this is another one.{end}" * 200
    places = [piece.place for piece in pieces(text, "en-us", 300) if piece]
    lengths = [len("".join(place.text for place in some)) for _, some in groupby(places, lambda place: place.paragraph)]
    assert len(lengths) > 4
    assert all(LONGEST_PARAGRAPH - 50 < length <= LONGEST_PARAGRAPH for length in lengths[:-1])
    assert [place.sentence for place in places] == list(range(len(places)))
