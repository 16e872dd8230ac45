"""What is selected in programs that speak Wayland, as users start them."""

import os

import pytest
from session import wait_until
from terminal import WORD, Watched

TEXT = "  Grüße aus Tavin — “quoted”.\nSecond line, trailing blanks  "
COPIED = "what was copied before"


@pytest.fixture(params=["gedit", "gnome-text-editor", "kate"])
def editor(request, desktop, tmp_path):
    path = tmp_path / "letter.txt"
    path.write_text(TEXT, encoding="utf-8")
    command = {"gedit": ["gedit", "--standalone"], "kate": ["kate", "-b", "-n"],
               "gnome-text-editor": ["gnome-text-editor", "--standalone"]}
    return desktop.open([*command[request.param], str(path)], "letter.txt", seconds=60)


def test_editors(tavin, desktop, editor):
    desktop.own("clipboard", COPIED)
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"), seconds=20)
    assert tavin.press() == [TEXT]
    assert tavin.press() == [TEXT]
    assert desktop.clipboard_text() == COPIED
    assert desktop.no_dialog()


def test_a_selection_that_is_no_more_is_not_read(tavin, desktop, editor):
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"), seconds=20)
    desktop.key("ctrl+Home")
    assert tavin.press() == []


@pytest.fixture
def terminal(desktop, programs, tmp_path):
    """GNOME's own, at home on the accessibility bus."""
    return Watched(desktop, programs,
                   ["gnome-terminal", "--wait", "--title", "watched", "--"],
                   str(tmp_path / "record"), row=60)


def test_a_terminal_is_read_and_nothing_typed(tavin, desktop, terminal):
    terminal.select_word()
    assert tavin.press() == [WORD]
    assert tavin.press() == [WORD]
    assert terminal.reached() == ["ready"]


def test_a_terminal_without_a_selection(tavin, desktop, terminal):
    desktop.own("primary", "of another program")
    assert tavin.press() == []
    assert terminal.reached() == ["ready"]
    assert desktop.no_dialog()


def test_a_terminal_that_accessibility_does_not_know(tavin, desktop, programs, tmp_path):
    """It may be anything, so nothing is typed into it and nobody is asked."""
    terminal = Watched(desktop, programs, ["foot", "--title", "watched"], str(tmp_path / "record"))
    desktop.own("primary", "of another program")
    assert tavin.press() == []
    assert terminal.reached() == ["ready"]
    assert desktop.no_dialog()


def test_the_watching_program_sees_keys(desktop, terminal):
    """What makes the emptiness of its record worth something."""
    def typed():
        desktop.key("x")
        return "bytes 78" in terminal.reached()
    wait_until(typed, 10, "a key", interval=0.2)


def test_a_program_through_xwayland(tavin, desktop, build):
    desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field",
                 env={**desktop.session.env, "QT_QPA_PLATFORM": "xcb"})
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    assert tavin.press() == [TEXT]
