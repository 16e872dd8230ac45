"""Text selected in a real program, the shortcut pressed: the engine gets exactly that text."""

import os

import pytest

TEXT = "  Grüße aus Tavin — “quoted”, emoji \U0001f600.\nSecond line, trailing blanks  "


def fields(build, programs, folder):
    with open(os.path.join(folder, "letter.txt"), "w", encoding="utf-8") as f:
        f.write(TEXT)
    return {
        "mousepad": (["mousepad", "--disable-server", f.name], "letter.txt"),
        "gtk4": (["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), TEXT],
                 "GTK 4 field"),
        "qt6": ([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field"),
    }


@pytest.fixture(params=["mousepad", "gtk4", "qt6"])
def field(request, desktop, build, programs, session):
    command, title = fields(build, programs, session.folder)[request.param]
    return desktop.open(command, title)


def test_selection_reaches_the_engine(tavin, desktop, field):
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    assert tavin.press() == [TEXT]
    # The program kept its selection, so the next press reads it again.
    assert tavin.press() == [TEXT]


def test_part_of_a_line(tavin, desktop, field):
    desktop.select_until("  Grüß", lambda: desktop.key("ctrl+Home", *["shift+Right"] * 6))
    assert tavin.press() == ["  Grüß"]


def test_nothing_selected_posts_nothing(tavin, desktop, field):
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    desktop.key("ctrl+Home")
    assert tavin.press() == []


def test_pressing_while_speaking_stops(tavin, desktop, engine, field):
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    engine.status = {**engine.status, "state": "speaking"}
    since = engine.mark()
    desktop.key("alt+Escape")
    assert engine.wait_for("/stop", since=since) == [{}]
    assert engine.requests("/speak", since) == []


def test_action_reads_the_focused_program(tavin, desktop, engine, field):
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    tavin.action("speak")
    assert engine.wait_for("/speak") == [{"text": TEXT}]
