"""Pages that no form feed parts, as they are copied from a PDF viewer: what is left out, and above all what is not."""

import random
import re

import pytest
from tavin.text.pieces import pieces
from tavin.text.spoken.blocks import page_breaks
from tavin.text.spoken.speaker import say

BEFORE = ["It was late in the year when the two of them went", "back to the house at the end of the long street which"]
AFTER = ["had stood there empty since the day their parents", "had moved away. Nobody knew why."]
WHOLE = " ".join(BEFORE + AFTER[:1]) + " had moved away."


def spoken(text, language="en-us"):
    return [piece.strip() for piece in pieces(text, language, 600, say=lambda part: say(part, language)) if piece]


def broken(*between, before=BEFORE, after=AFTER):
    return "\n".join([*before, *between, *after])


@pytest.mark.parametrize(
    "between",
    [
        ["12"],
        ["- 12 -"],
        ["– 12 –"],
        ["xii"],
        ["Page 12"],
        ["Page 12 of 30"],
        ["12/30"],
        ["", "12", ""],
        ["A TALE OF TWO HOUSES 13"],
        ["12 A TALE OF TWO HOUSES"],
        ["12 | A Tale of Two Houses"],
        ["Smith et al. – 13"],
        ["The Report of the Year 2024 13"],
        ["", "", "A Tale of Two Houses 13", ""],
    ],
)
def test_a_pages_number_and_head_do_not_interrupt_a_sentence(between):
    assert spoken(broken(*between)) == [WHOLE, "Nobody knew why."]


@pytest.mark.parametrize("hyphen", ["-", "\u2010", "\u00ad"])
@pytest.mark.parametrize("between", [["12"], ["12", ""], ["A Tale of Houses 13"]])
def test_a_word_that_goes_on_in_the_next_page_is_one_word(hyphen, between):
    text = broken(*between, before=["They went back to the house that was now unin" + hyphen], after=["habited. They left."])
    assert spoken(text) == ["They went back to the house that was now uninhabited.", "They left."]


def test_a_head_without_a_number_is_read_where_it_is_seen_first():
    first, second = broken("12", "A TALE"), broken("13", "A TALE")
    once = [" ".join(BEFORE), "A TALE", " ".join(AFTER[:1]) + " had moved away.", "Nobody knew why."]
    assert spoken(f"{first}\n\n{second}") == [*once, WHOLE, "Nobody knew why."]


def test_the_first_pages_head_is_known_in_the_others():
    text = "A TALE\n\n" + broken("12", "A TALE")
    assert spoken(text) == ["A TALE", WHOLE, "Nobody knew why."]
    text = "Journal 12\n\n" + broken("Journal 13")
    assert spoken(text) == ["Journal 12", WHOLE, "Nobody knew why."]


def test_many_pages_are_read_as_one_text():
    page = "\n".join([BEFORE[1], *AFTER[:1]]) + " and\n{}\n"
    text = "".join(page.format(f"{number}\nA TALE" if number % 2 else f"A TALE OF HOUSES {number}") for number in range(1, 40))
    said = " ".join(spoken("A TALE\n\n" + text + "so it was in each of the houses, as it had always been."))
    assert not any(map(str.isdigit, said)), said
    assert said.count("TALE") == 1
    assert said.count("back to the house") == 39


def test_pages_that_evince_glues_together_are_parted_again():
    """It puts no line's end between them; the head is known from the first page."""
    pages = [BEFORE, [AFTER[0], "had moved away. Nobody knew why, and nobody had in-"], ["quired."]]
    said = [WHOLE.replace(" It", "It"), "Nobody knew why, and nobody had inquired."]
    with_heads = "".join(f"A TALE OF HOUSES {number}\n" + "\n".join(page) for number, page in enumerate(pages, 9))
    assert spoken(with_heads)[1:] == said
    with_both = "".join("A TALE\n" + "\n".join(page) + f"\n- {number} -" for number, page in enumerate(pages, 9))
    assert spoken(with_both)[1:] == [*said, "- 11 -"]


def test_a_number_that_evince_glues_to_the_next_page_is_left_out_once_it_counts():
    pages = [[*BEFORE], [AFTER[0], "and their friends who had lived at the end of the street"], [AFTER[0]]]
    said = spoken("\n".join("\n".join(page) + f"\n{number}" for number, page in enumerate(pages, 9)).replace("\n9\n", "\n9").replace("\n10\n", "\n10"))
    assert "9had" in said[0] and "10" not in said[0]


@pytest.mark.parametrize("line", ["12jährige had stood there empty since their parents", "MetaTALE 12"])
def test_what_only_looks_glued_is_read(line):
    said = "".join(spoken("TALE 11\n\n" + broken(line))).replace(" ", "")
    assert line.replace(" ", "") in said


def read_whole(text, language="en-us"):
    """Whether each figure and each word of the text is read."""
    letters = "".join(spoken(text, language)).replace(" ", "")
    return all(part in letters for part in re.findall(r"\w+", text))


@pytest.mark.parametrize(
    "between",
    [
        ["1984"],  # a year
        ["2024"],
        ["12345"],
        ["$12"],
        ["12%"],
        ["(2)"],
        ["[2]"],
        ["Table 3"],
        ["Figure 12"],
        ["Table 3", "Anna 31", "Bob 7"],
        ["Ann Smith 31", "Bob Miller 7"],
        ["Introduction"],
        ["3.", "Results"],
        ["3 Results", "and more of them"],
        ["12", "the"],
        ["Then came 12 others who wanted to see the house too"],
        ["London which they had left in the autumn of year 66"],
        ["12.", "a. One"],
        [""],
        ["", ""],
    ],
)
def test_what_may_belong_to_the_text_is_read(between):
    assert read_whole(broken(*between))


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
def test_a_number_behind_what_is_no_broken_paragraph_is_read(before):
    assert "12" in " ".join(spoken(broken("12", before=before)))


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
def test_a_number_before_what_does_not_go_on_is_read(after):
    assert "12" in " ".join(spoken(broken("12", after=after)))


TEXTS = {
    "rows": "average number of people living in each household there\n12\nmedian age of the people living in the households there\n34\n"
    "share of the people living there who were born elsewhere\n56",
    "verses": "1\nthe word was there in the beginning and it was with them\n2\nthe same was there in the beginning and was with them",
    "list": "Bring along what you need for the whole of the journey and\nwhat the others may need, who had no time to think of it,\n"
    "1 Towel\n2 Soaps\n3 Shirts",
    "poem": "the wind that comes down from the hills in the evening and\n\n12\n\nthe rain that comes with it over the fields in the night",
    "code": "values = compute_all_of_the_values_of(something, another),\n12,\n13\nthe_rest = more_of_the_values_of(something_else, another)",
    "chat": "alice: so I went to the shop and bought some of the things\n12\nbob: why would you ever buy as many as that of those things",
}


@pytest.mark.parametrize("name", TEXTS)
def test_numbers_that_stand_alone_in_other_texts_are_read(name):
    said = " ".join(spoken(TEXTS[name]))
    numbers = [part for part in TEXTS[name].replace(",", " ").split() if part.isdigit()]
    assert numbers and all(number in said for number in numbers), said


def test_wherever_a_text_is_cut_its_pages_are_found():
    """A portion of the text may end anywhere."""
    whole = broken("12")
    for blanks in range(1900, 2000):
        said = spoken("x" * 30 + " " * blanks + "\n\n" + whole)
        assert said[1:] == [WHOLE, "Nobody knew why."], blanks


def test_what_is_held_back_is_little():
    breaks = page_breaks.PageBreaks()
    chance = random.Random(1)
    lines = [*BEFORE, *AFTER, "12", "", "A TALE 12", "A TALE", "x" * 500, "- 3 -"]
    for _ in range(10_000):
        breaks.take(chance.choice(lines))
        assert len(breaks.end()) <= page_breaks.MOST_HELD
        assert sum(map(len, breaks.end())) <= page_breaks.MOST_HELD * page_breaks.LONGEST_HEAD


def test_no_line_is_taken_for_another():
    """Each line that goes in comes out once and in its order, but for numbers and known heads."""
    chance = random.Random(2)
    lines = [*BEFORE, *AFTER, "12", "", "A TALE OF IT 12", "A TALE", "more words"]
    for _ in range(2000):
        breaks = page_breaks.PageBreaks()
        given = [chance.choice(lines) for _ in range(chance.randrange(30))]
        told = [sure for line in given for sure in breaks.take(line)] + breaks.end()
        rest = iter(given)
        assert all(line in rest for line in told if line)
        kept = [line for line in given if line not in ("12", "", "A TALE OF IT 12", "A TALE")]
        assert [line for line in told if line in kept] == kept
