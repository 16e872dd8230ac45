"""Documents of several pages in a viewer: what is selected across pages, and what of it is said."""

import os
import sys

import pytest
from pdf import pdf
from session import wait_until
from test_browsers import firefox

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../speech"))
from tavin.text.pieces import pieces  # noqa: E402
from tavin.text.spoken.say import say  # noqa: E402

HEAD = "A Tale of Two Houses"
AGAIN = ["in all that time, as each of those who lived in the town used", "to say whenever a stranger came along and wanted to know it,"] * 7
PAGES = [
    ["It was late in the year when the two of them went at last", *AGAIN, "back to the house at the end of the long street, which"],
    ["had stood there empty since the day on which their parents", *AGAIN, "had moved away, and in which nobody had ever found any in-"],
    ["habitant since then, as the people of that town used to say", "to everyone who came along."],
]
FIRST, REST = " ".join(PAGES[0]), " ".join(PAGES[1] + PAGES[2]).replace("in- habitant", "inhabitant")
HEIGHT = 250
LAYOUTS = {
    "head": lambda number, lines: [f"{HEAD} {number}", *lines],
    "foot": lambda number, lines: [*lines, "", str(number)],
    "both": lambda number, lines: [HEAD, "", *lines, "", f"- {number} -"],
}


def spoken(text):
    found = pieces(text, "en-us", 600, say=lambda sentence: say(sentence, "en-us"))
    return " ".join(piece.strip() for piece in found if piece)


@pytest.mark.parametrize("layout", LAYOUTS)
def test_a_sentence_goes_on_over_the_ends_of_pages(tavin, desktop, tmp_path, layout):
    name = f"{layout}.pdf"  # An older window may still be about to close.
    path = tmp_path / name
    pages = (LAYOUTS[layout](number, lines) for number, lines in enumerate(PAGES, 11))
    path.write_bytes(pdf(*pages, height=HEIGHT, margin=30, size=8, leading=10))
    profile = tmp_path / "profile"
    profile.mkdir()
    desktop.open([*firefox(str(profile)), str(path)], name, seconds=90)

    def read():
        desktop.key("ctrl+a")
        texts = tavin.press()
        return texts if texts and "everyone" in texts[0] else None
    text, = wait_until(read, 60, "the whole document")
    said = spoken(text)
    assert FIRST in said and REST in said, text
    assert said.count("11") == 1, said
