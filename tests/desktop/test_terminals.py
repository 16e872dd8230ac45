"""Terminals: the selection is read, and nothing is ever typed into what runs there."""

import os
import subprocess

import pytest
from driver import SPEAK
from session import wait_until
from terminal import WORD, Watched

TERMINALS = {
    "xterm": ["xterm", "-T", "watched", "-e"],
    "xfce4-terminal": ["xfce4-terminal", "--disable-server", "--hide-menubar", "-T", "watched",
                       "-x"],
}


@pytest.fixture(params=sorted(TERMINALS))
def terminal(request, desktop, programs, tmp_path):
    return Watched(desktop, programs, TERMINALS[request.param], str(tmp_path / "record"))


def test_the_watching_program_sees_keys(desktop, terminal):
    """What makes the emptiness of its record worth something."""
    def typed():
        desktop.key("x")
        return "bytes 78" in terminal.reached()
    wait_until(typed, 10, "a key", interval=0.2)
    desktop.key("ctrl+c")
    wait_until(lambda: terminal.reached()[-1] == "signal SIGINT", 5, "a signal")


def test_selection_is_read_and_nothing_typed(tavin, terminal):
    terminal.select_word()
    assert tavin.press() == [WORD]
    assert terminal.reached() == ["ready"]


def test_without_a_selection_nothing_is_typed(tavin, terminal):
    assert tavin.press() == []
    assert terminal.reached() == ["ready"]


def test_a_terminal_inside_another_programs_window(tavin, desktop, programs, build, tmp_path):
    """As in a window of tabs, whose program is none: it is read, and nothing is typed."""
    host = desktop.open([os.path.join(build, "bin/x11_test_window"), "tabs"], "tabs",
                        stdin=subprocess.PIPE)
    inside = Watched(desktop, programs, ["xterm", "-into", host, "-e"], str(tmp_path / "record"),
                     title="tabs")
    inside.select_word()
    assert tavin.press() == [WORD]
    desktop.own("primary", "of a third program")
    assert tavin.press() == []
    desktop.key("x")
    wait_until(lambda: inside.reached() == ["ready", "bytes 78"], 5, "the key alone")


def test_what_is_copied_where_nothing_can_be_typed_is_not_tavins(tavin, desktop, engine, terminal):
    """A change of the clipboard is the user's own then: it is neither spoken nor undone."""
    desktop.own("clipboard", "copied before")
    since = engine.mark()
    desktop.key(SPEAK)
    engine.wait_for("/status", count=2, since=since)
    desktop.own("clipboard", "copied meanwhile")
    assert tavin.press() == []  # The first one is through, too.
    assert engine.requests("/speak", since) == []
    assert desktop.clipboard_text() == "copied meanwhile"
    assert terminal.reached() == ["ready"]
