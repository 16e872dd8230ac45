"""A terminal that accessibility knows nothing of: read through the primary selection, and nothing
is ever typed into what runs there."""

import os
import time

import pytest
from driver import Tavin
from session import wait_until
from terminal import WORD, Watched

OTHER = "selected in another program"


def watched(desktop, programs, record, title="watched"):
    command, row = desktop.terminal(title)
    return Watched(desktop, programs, command, str(record), row, title)


@pytest.fixture
def terminal(desktop, programs, tmp_path):
    return watched(desktop, programs, tmp_path / "record")


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
    assert tavin.press() == [WORD]
    assert terminal.reached() == ["ready"]


def test_without_a_selection_nothing_is_typed(tavin, terminal):
    assert tavin.press() == []
    assert terminal.reached() == ["ready"]


def test_selection_of_another_program_is_not_read(tavin, desktop, build, programs, tmp_path):
    desktop.open([os.path.join(build, "bin/qt6_field"), OTHER], "Qt 6 field")
    desktop.select_until(OTHER, lambda: desktop.key("ctrl+a"))
    terminal = watched(desktop, programs, tmp_path / "record")
    assert desktop.primary() == OTHER
    assert tavin.press() == []
    assert terminal.reached() == ["ready"]


def test_selection_of_another_window_is_not_read(tavin, desktop, terminal, programs, tmp_path):
    terminal.select_word()
    other = watched(desktop, programs, tmp_path / "other", "second")
    assert tavin.press() == []
    assert other.reached() == ["ready"]
    desktop.focus(terminal.window)
    assert tavin.press() == [WORD]
    assert terminal.reached() == ["ready"]


def test_selection_made_before_tavin_is_not_read(desktop, terminal, engine, build):
    terminal.select_word()
    time.sleep(1)  # Plasma 6's Konsole selects a second time, once no third click can come.
    assert Tavin(desktop, engine, build).press() == []
    assert terminal.reached() == ["ready"]
