"""Selections in big editors, an office suite and document viewers."""

import pytest
from pdf import pdf
from session import wait_until
from trays import rests

LINES = ["First paragraph, Grüße.", "Second paragraph.", "Third and last."]
TEXT = "\n".join(LINES)
EDITORS = {
    "gedit": ["gedit", "--standalone"],
    "kate": ["kate", "--new", "--block"],
    "writer": ["soffice", "--writer", "--norestore", "--nologo", "--nofirststartwizard"],
}


def words(text):
    return " ".join(text.split())


@pytest.mark.parametrize("editor", sorted(EDITORS))
def test_editor_with_several_paragraphs(tavin, desktop, tmp_path, editor):
    path = tmp_path / "letter.txt"
    path.write_text(TEXT, encoding="utf-8")
    desktop.open([*EDITORS[editor], str(path)], "letter.txt", seconds=90)
    desktop.select_until_matching(lambda text: words(text) == words(TEXT),
                                  lambda: desktop.key("ctrl+a"), seconds=30)
    # An office suite goes on starting after it has shown the text, and answers late meanwhile.
    wait_until(lambda: rests(desktop.last_program.pid), 30, "the editor at rest")
    assert [words(text) for text in tavin.press()] == [words(TEXT)]


def test_evince(tavin, desktop, tmp_path):
    path = tmp_path / "paper.pdf"
    path.write_bytes(pdf(["First line", "Second line"], margin=142))
    desktop.open(["evince", str(path)], "paper.pdf", seconds=60)

    def read():
        # The display is not told of this selection, so only a press shows that it is made.
        desktop.key("ctrl+a")
        return tavin.press()
    spoken = wait_until(read, 30, "a selection in the document")
    assert [words(text) for text in spoken] == ["First line Second line"]


def test_zathura(tavin, desktop, tmp_path):
    path = tmp_path / "paper.pdf"
    path.write_bytes(pdf(["First line", "Second line"], margin=142))
    desktop.open(["zathura", "--mode=fullscreen", str(path)], "paper.pdf", seconds=60)

    def drag():
        # Over the page in the middle, from within its margin: everything between the corners is
        # selected. The viewer follows a drag only step by step.
        width, height = desktop.screen
        left, right = width / 2 - height * 0.34, width / 2 + height * 0.3
        desktop.drag(*((round(x), round(y)) for x, y in (
            (left, height * 0.08), (left + 40, height * 0.2), (width / 2, height * 0.4),
            (right, height * 0.85))))
    desktop.select_until_matching(lambda text: words(text) == "First line Second line", drag,
                                  seconds=30)
    assert [words(text) for text in tavin.press()] == ["First line Second line"]
