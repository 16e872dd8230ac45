"""Where a line that is too long to wait for its end is cut."""

import pytest
from tavin.text.spoken.blocks import LONGEST_HELD, LONGEST_MARKUP, Blocks, last_blank
from tavin.text.spoken.languages import words_of


@pytest.mark.parametrize("markup", ["[the manual](https://x.org/a b", "[the long man", "<img alt=a b", "`a = b"])
def test_markup_that_is_still_open_is_not_cut(markup):
    assert last_blank(f"See also {markup}") == len("See also ")


def test_markup_that_is_closed_may_stand_before_the_cut():
    assert last_blank("See `a = b` or <b>this</b> [link](x) wo") == len("See `a = b` or <b>this</b> [link](x) ")


def test_what_is_longer_than_markup_is_cut():
    text = "See <" + "word " * LONGEST_MARKUP
    assert last_blank(text) == len(text)


def test_a_link_across_the_cut_is_one():
    begin = "word " * (LONGEST_HELD // 5)
    blocks = Blocks(words_of("en-us"))
    told = blocks.take(f"{begin}[the big man") + blocks.take("ual](https://x.org/a) ends.") + blocks.end()
    assert told == f"{begin}the big manual ends."
