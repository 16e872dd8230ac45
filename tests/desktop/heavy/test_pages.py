"""Documents of several pages in their viewers: what is selected across pages, and what of it is said."""

import os
import sys

import pytest
from pdf import pdf
from session import wait_until
from test_browsers import firefox

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../speech"))
from tavin.text.pieces import pieces  # noqa: E402
from tavin.text.spoken.speaker import say  # noqa: E402

HEAD = "A Tale of Two Houses"
PAGES = [
    ["It was late in the year when the two of them went at last", "back to the house at the end of the long street, which"],
    ["had stood there empty since the day on which their parents", "had moved away, and in which nobody had ever found any in-"],
    ["habitant since then, as the people of that town used to say", "to everyone who came along."],
]
SAID = " ".join(" ".join(lines) for lines in PAGES).replace("in- habitant", "inhabitant")
HEIGHT = 250  # All pages are in sight: Evince has no text of the others.
LAYOUTS = {
    "head": lambda number, lines: [f"{HEAD} {number}", *lines],
    "foot": lambda number, lines: [*lines, "", str(number)],
    "both": lambda number, lines: [HEAD, "", *lines, "", f"- {number} -"],
}


def evince(_profile):
    return ["evince"]


def spoken(text):
    found = pieces(text, "en-us", 600, say=lambda sentence: say(sentence, "en-us"))
    return " ".join(piece.strip() for piece in found if piece)


@pytest.mark.parametrize("layout", LAYOUTS)
@pytest.mark.parametrize("viewer", [evince, firefox], ids=["evince", "firefox"])
def test_a_sentence_goes_on_over_the_ends_of_pages(tavin, desktop, tmp_path, viewer, layout):
    name = f"{layout}-{viewer.__name__}.pdf"  # An older window may still be about to close.
    path = tmp_path / name
    path.write_bytes(pdf(*(LAYOUTS[layout](number, lines) for number, lines in enumerate(PAGES, 11)), height=HEIGHT))
    profile = tmp_path / "profile"
    profile.mkdir()
    desktop.open([*viewer(str(profile)), str(path)], name, seconds=90)

    def read():
        desktop.key("ctrl+a")
        texts = tavin.press()
        return texts if texts and "came along" in texts[0] else None
    text, = wait_until(read, 60, "the whole document")
    print(repr(text))
    # What the first page begins with is read, what the last one ends with interrupts nothing.
    wanted = SAID
    if (viewer, layout) == (evince, "foot"):  # It glues pages together, and one number alone may be a word's: "12th".
        wanted = SAID.replace("which had", "which 11had")
    assert wanted in spoken(text), text
