"""Text that is selected no longer: the display goes on serving it, and nothing speaks it."""

import os

import pytest
from terminal import WORD, Watched

TEXT = "selected a while ago"
COPIED = "what was copied before"


@pytest.fixture
def unselected_field(desktop, build):
    desktop.own("clipboard", COPIED)
    window = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    desktop.key("ctrl+Home")
    return window


def test_field_without_its_selection(tavin, desktop, unselected_field):
    assert tavin.press() == []
    assert desktop.primary() == TEXT
    assert desktop.clipboard_text() == COPIED


def test_field_entered_again(tavin, desktop, unselected_field, build):
    desktop.open([os.path.join(build, "bin/qt6_field"), "other", "--password"], "Password field")
    desktop.focus(unselected_field)
    assert tavin.press() == []
    assert desktop.primary() == TEXT


def test_selection_of_another_program(tavin, desktop, unselected_field):
    desktop.own("primary", "selected in another program")
    assert tavin.press() == []
    assert desktop.primary() == "selected in another program"


def test_terminal_without_its_selection(tavin, desktop, programs, tmp_path):
    terminal = Watched(desktop, programs,
                       ["xfce4-terminal", "--disable-server", "--hide-menubar", "-T", "watched",
                        "-x"], str(tmp_path / "record"))
    terminal.select_word()
    assert tavin.press() == [WORD]
    # Far below the text: a click there takes the highlight away and selects nothing.
    desktop.click(terminal.window, 30, terminal.row + 150)
    assert tavin.press() == []
    assert desktop.primary() == WORD
    assert terminal.reached() == ["ready"]
