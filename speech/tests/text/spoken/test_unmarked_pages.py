"""Pages that no form feed parts, as they are copied from a PDF viewer: what is left out, and above all what is not."""

import random

import pytest
from tavin.text.pieces import pieces
from tavin.text.spoken.blocks import unmarked_pages
from tavin.text.spoken.say import say

BEFORE = ["It was late in the year when the two of them went", "back to the house at the end of the long street which"]
AFTER = ["had stood there empty since the day their parents", "had moved away. Nobody knew why."]
WHOLE = [" ".join(BEFORE + AFTER[:1]) + " had moved away.", "Nobody knew why."]
LINE = "and of those who had been there before them not many"
PAGE = [LINE] * (unmarked_pages.PAGE_LENGTH // len(LINE) + 1)
TEXT = " ".join(PAGE)


def spoken(text, language="en-us"):
    return [piece.strip() for piece in pieces(text, language, 5000, say=lambda part: say(part, language)) if piece]


def broken(*between, before=BEFORE, after=AFTER):
    return "\n".join([*before, *between, *after])


def pages(*between):
    """What stands between pages of one sentence."""
    return "\n".join(line for lines in between for line in [*PAGE, *lines]) + "\n" + "\n".join(PAGE)


def read_as(*between):
    """With these read, and no others."""
    return [" ".join(part for lines in between for part in (TEXT, *lines)) + " " + TEXT]


@pytest.mark.parametrize(
    "between",
    [
        ["{}"],
        ["- {} -"],
        ["– {} –"],
        ["{}/30"],
        ["{} / 30"],
        ["Page {} of 30"],
        ["A TALE OF TWO HOUSES {}"],
        ["{} A TALE OF TWO HOUSES"],
        ["{} | A Tale of Two Houses"],
        ["Smith et al. – {}"],
        ["The Report of the Year 2024 {}"],
        ["- {} -A Tale of Two Houses"],  # as Evince copies it
    ],
)
def test_of_pages_numbers_that_count_up_the_first_is_read(between):
    twelfth, thirteenth, fourteenth = ([line.format(number) for line in between] for number in (12, 13, 14))
    first = "".join(spoken("\n".join(twelfth)))
    assert "12" in first
    said = " ".join(spoken(pages(twelfth, thirteenth, fourteenth)))
    assert said.replace(f" {first} ", " ") == " ".join([TEXT] * 4) and said.count(first) == 1


@pytest.mark.parametrize("blank", [[], [""]])
def test_a_foot_and_a_head_are_left_out_together(blank):
    feet = [[*blank, str(number), *blank, "A TALE", *blank] for number in (12, 13, 14)]
    said = spoken(pages(*feet))
    assert "".join(said).count("12") == "".join(said).count("A TALE") == 1
    assert " ".join(said).split() == f"{TEXT} 12 A TALE {TEXT} {TEXT} {TEXT}".split()


def test_left_and_right_pages_have_heads_of_their_own():
    heads = [["12 A Tale of Houses"], ["The First Chapter 13"], ["14 A Tale of Houses"], ["The First Chapter 15"]]
    assert spoken(pages(*heads)) == read_as(heads[0], heads[1], [], [])


def test_a_head_is_known_from_where_the_text_begins_and_from_between_sentences():
    text = "A Tale of Houses 11\n\n" + pages(["A Tale of Houses 12"])
    assert spoken(text) == ["A Tale of Houses 11", *read_as([])]
    text = pages([]) + ".\nA Tale of Houses 12\n" + pages(["A Tale of Houses 13"])
    assert " ".join(spoken(text)).count("A Tale") == 1


@pytest.mark.parametrize("hyphen", ["-", "\u2010", "\u00ad"])
def test_a_word_that_goes_on_in_the_next_page_is_one_word(hyphen):
    text = pages(["12"]) + "\nand they went back to the house that was now unin" + hyphen + "\n13\nhabited. They left."
    assert spoken(text) == [*(f"{said} and they went back to the house that was now uninhabited." for said in read_as(["12"])), "They left."]


def test_pages_that_evince_glues_together_are_parted_again():
    """It puts no line's end between them; the head is known from the first page."""
    page = "\n".join([*PAGE, "and in the end they went back to the house where"])
    text = "".join(f"A Tale of Houses {number}\n{page}" for number in (9, 10, 11))
    assert spoken(text) == [" ".join(["A Tale of Houses 9", *[page.replace("\n", " ")] * 3])]


@pytest.mark.parametrize(
    "first, glued",
    [
        ("Data 1", "and in the end they went back to their BigData 2"),
        ("Big Data 1", "and in the end they went back to the ABig Data 3"),
        ("1", "and in the end they went back to the house of2"),
        ("11", "12jährige had stood there and in the end went back"),
        ("Big Data 1", "and in the end they went back to Big Data 2"),
    ],
)
def test_what_only_looks_glued_is_read(first, glued):
    assert spoken(f"{first}\n\n" + "\n".join([*PAGE, glued, *PAGE])) == [first, f"{TEXT} {glued} {TEXT}"]


# In each the number counts up.
READ = [
    ["{}th century furniture was found there"],
    ["{}st floor rooms"],
    ["{}am was the hour"],
    ["{}km of the road"],
    ["{} Downing Street, London"],
    ["Price: EUR {}"],
    ["Invoice No. {}"],
    ["about 3 to {}"],
    ["{}/2"],
    ["Step {} of 9"],
    ["{}"],
    ["Ann Smith {}", "Bob Miller 7"],
    ["Then came {} others who wanted to see the house too"],
]
NEVER_LEFT_OUT = [
    ["{} men of the city,"],
    ["24/{}"],
    ["p. {}"],
    ["Page {}"],
    ["{} Uhr 30"],
    ["xiv"],
    ["Figure {}"],
    ["Table {}"],
    ["Psalm {}"],
    ["Apollo {}"],
    ["Table {}", "31", "7"],
    ["198{}"],  # a year
    ["202{}"],
    ["1234{}"],
    ["${}"],
    ["{}%"],
    ["({})"],
    ["[{}]"],
    ["Introduction"],
    ["{}.", "Results"],
    ["{}", "the"],
    ["London which they had left in the autumn of year {}"],
    ["{}.", "a. One"],
    [""],
    ["", ""],
]


@pytest.fixture
def read_whole(monkeypatch):
    """Whether it is said exactly as where nothing is taken for a page's end."""

    def is_read_whole(text):
        said = spoken(text)
        with monkeypatch.context() as patch:
            patch.setattr(unmarked_pages.UnmarkedPages, "take", lambda self, line, in_code=False: [line])
            return said == spoken(text)

    return is_read_whole


def counting(between):
    return ([line.format(number) for line in between] for number in (4, 5))


@pytest.mark.parametrize("between", READ + NEVER_LEFT_OUT)
def test_what_counts_up_within_a_page_is_read(read_whole, between):
    first, second = counting(between)
    assert read_whole(broken(*first) + "\n" + broken(*second))
    assert read_whole("\n".join(first) + "\n\n" + broken(*second))


@pytest.mark.parametrize("between", NEVER_LEFT_OUT)
def test_what_is_no_pages_number_is_read_at_the_distance_of_pages_as_well(read_whole, between):
    assert read_whole(pages(*counting(between)))


@pytest.mark.parametrize("numbers", [(4, 4), (4, 6), (5, 4), (4, 3)])
@pytest.mark.parametrize("head", ["{}", "A Tale of Houses {}", "Price: EUR {}"])
def test_a_number_that_does_not_count_up_is_read(read_whole, head, numbers):
    assert read_whole(pages(*([head.format(number)] for number in numbers)))


@pytest.mark.parametrize(
    "first, second",
    [
        ("A Tale of Houses 4", "A Tale of House 5"),
        ("Ann Smith 4", "Bob Miller 5"),
        ("4 men of Rome", "5 men of Rome."),
        ("- 4 -", "5"),
        ("4/30", "5/31"),
    ],
)
def test_a_number_beside_other_words_is_read(read_whole, first, second):
    assert read_whole(pages([first], [second]))


def test_a_figure_within_a_sentence_is_read():
    text = "The dose for adults which are not ill is at most\n{}\ntablets a day and the dose of children is half of it.\n"
    line = text.replace("\n", " ").strip()
    assert spoken(text.format(4) + text.format(5)) == [line.format(4), line.format(5)]


def test_numbers_within_code_are_read(read_whole):
    code = "```{}\n" + "\n".join([*PAGE, "12", *PAGE, "13", *PAGE]) + "\n```\n"
    for info in ("", "text"):
        assert read_whole(pages(["11"]) + "\n" + code.replace("{}", info))
    assert not read_whole(code.partition("\n")[2].replace("```", ""))


@pytest.mark.parametrize(
    "before",
    [
        [BEFORE[0], BEFORE[1] + " fell."],
        [BEFORE[0], BEFORE[1] + " fell!"],
        [BEFORE[0], BEFORE[1] + ":"],
        [BEFORE[0], "“" + BEFORE[1] + " fell.”"],
        ["Short", "lines of it"],
        ["", BEFORE[1]],  # the label of a row
        ["7", BEFORE[1]],
        [BEFORE[0], BEFORE[1] * 4],  # no page is so wide
    ],
)
def test_a_number_behind_what_is_no_broken_paragraph_is_read(read_whole, before):
    assert read_whole(pages(["11"]) + "\n" + broken("12", before=before))


@pytest.mark.parametrize(
    "after",
    [
        ["Had stood there empty since the day their parents left"],
        ["13 had stood there empty since the day their parents left"],
        ["had stood", "There"],
        ["a) had stood there empty since the day their parents left"],
        ["- had stood there empty since the day their parents left"],
        ["“Had stood there empty since the day their parents left”"],
        [],
    ],
)
def test_a_number_before_what_does_not_go_on_is_read(read_whole, after):
    assert read_whole(pages(["11"]) + "\n" + broken("12", after=after))


TEXTS = {
    "rows": "average number of people living in each household there\n12\nmedian age of the people living in the households there\n13\n"
    "share of the people living there who were born elsewhere\n14",
    "verses": "1\nthe word was there in the beginning and it was with them\n2\nthe same was there in the beginning and was with them",
    "list": "Bring along what you need for the whole of the journey and\nwhat the others may need, who had no time to think of it,\n"
    "1 Towel\n2 Soaps\n3 Shirts",
    "poem": "the wind that comes down from the hills in the evening and\n\n12\n\nthe rain that comes with it over the fields in the night",
    "code": "values = compute_all_of_the_values_of(something, another),\n12,\n13\nthe_rest = more_of_the_values_of(something_else, another)",
    "chat": "alice: so I went to the shop and bought some of the things\n12\nbob: why would you ever buy as many as that of those things",
}


@pytest.mark.parametrize("name", TEXTS)
def test_numbers_that_stand_alone_in_other_texts_are_read(read_whole, name):
    assert read_whole(TEXTS[name])


def test_wherever_a_text_is_cut_its_pages_are_found():
    """A portion of the text may end anywhere."""
    whole = pages(["12"], ["13"])
    for blanks in range(1000, 2000, 9):
        said = spoken("x" * 30 + " " * blanks + "\n\n" + whole)
        assert said[1:] == read_as(["12"], []), blanks


def test_what_is_held_back_is_little():
    breaks = unmarked_pages.UnmarkedPages()
    chance = random.Random(1)
    lines = [*BEFORE, *AFTER, "12", "", "A TALE 12", "A TALE", "x" * 500, "- 3 -"]
    for _ in range(10_000):
        breaks.take(chance.choice(lines))
        assert len(breaks.end()) <= unmarked_pages.MOST_HELD
        assert sum(map(len, breaks.end())) <= unmarked_pages.MOST_HELD * unmarked_pages.LONGEST_HEAD
        assert len(breaks._seen) <= unmarked_pages.MOST_SEEN
