"""Selections in big editors, an office suite and document viewers."""

import pytest
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


def pdf(lines):
    """A one-page document with each line in 18 point Helvetica."""
    drawn = "".join(f"1 0 0 1 60 {700 - 40 * n} Tm ({line}) Tj " for n, line in enumerate(lines))
    stream = f"BT /F1 18 Tf {drawn}ET"
    objects = [
        "<</Type/Catalog/Pages 2 0 R>>",
        "<</Type/Pages/Kids[3 0 R]/Count 1>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Contents 4 0 R"
        "/Resources<</Font<</F1 5 0 R>>>>>>",
        f"<</Length {len(stream)}>>stream\n{stream}\nendstream",
        "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>",
    ]
    out, offsets = "%PDF-1.4\n", []
    for number, content in enumerate(objects, 1):
        offsets.append(len(out))
        out += f"{number} 0 obj{content}endobj\n"
    table = "".join(f"{offset:010} 00000 n \n" for offset in offsets)
    return (f"{out}xref\n0 6\n0000000000 65535 f \n{table}trailer<</Size 6/Root 1 0 R>>\n"
            f"startxref\n{len(out)}\n%%EOF\n").encode("latin-1")


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
    path.write_bytes(pdf(["First line", "Second line"]))
    desktop.open(["evince", str(path)], "paper.pdf", seconds=60)

    def read():
        # The display is not told of this selection, so only a press shows that it is made.
        desktop.key("ctrl+a")
        return tavin.press()
    spoken = wait_until(read, 30, "a selection in the document")
    assert [words(text) for text in spoken] == ["First line Second line"]


def test_zathura(tavin, desktop, tmp_path):
    path = tmp_path / "paper.pdf"
    path.write_bytes(pdf(["First line", "Second line"]))
    desktop.open(["zathura", "--mode=fullscreen", str(path)], "paper.pdf", seconds=60)

    def drag():
        # Over the page in the middle: everything between the corners is selected. The viewer
        # follows a drag only step by step.
        width, height = desktop.screen
        left, right = width / 2 - height * 0.34, width / 2 + height * 0.3
        desktop.drag(*((round(x), round(y)) for x, y in (
            (left, height * 0.08), (left + 40, height * 0.2), (width / 2, height * 0.4),
            (right, height * 0.85))))
    desktop.select_until_matching(lambda text: words(text) == "First line Second line", drag,
                                  seconds=30)
    assert [words(text) for text in tavin.press()] == ["First line Second line"]
