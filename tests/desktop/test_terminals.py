"""Terminals: the selection is read, and nothing is ever typed into what runs there."""

import os

import pytest
from session import wait_until

WORD = "Wörterbuch"
TERMINALS = {
    "xterm": ["xterm", "-T", "watched", "-e"],
    "xfce4-terminal": ["xfce4-terminal", "--disable-server", "--hide-menubar", "-T", "watched",
                       "-x"],
}


class Watched:
    def __init__(self, desktop, programs, command, record):
        self.record = record
        self.window = desktop.open(
            [*command, "/usr/bin/python3", os.path.join(programs, "byte_watch.py"), record,
             WORD + " and more"],
            "watched")
        wait_until(lambda: self.reached() == ["ready"], 10, "program in the terminal")

    def reached(self):
        if not os.path.exists(self.record):
            return []
        with open(self.record, encoding="utf-8") as f:
            return f.read().split("\n")[:-1]


@pytest.fixture(params=sorted(TERMINALS))
def terminal(request, desktop, programs, tmp_path):
    return Watched(desktop, programs, TERMINALS[request.param], str(tmp_path / "record"))


def select_word(desktop, terminal):
    desktop.select_until(WORD, lambda: desktop.click(terminal.window, 30, 12, times=2))


def test_the_watching_program_sees_keys(desktop, terminal):
    """What makes the emptiness of its record worth something."""
    def typed():
        desktop.key("x")
        return "bytes 78" in terminal.reached()
    wait_until(typed, 10, "a key", interval=0.2)
    desktop.key("ctrl+c")
    wait_until(lambda: terminal.reached()[-1] == "signal SIGINT", 5, "a signal")


def test_selection_is_read_and_nothing_typed(tavin, desktop, terminal):
    select_word(desktop, terminal)
    assert tavin.press() == [WORD]
    assert terminal.reached() == ["ready"]


def test_without_a_selection_nothing_is_typed(tavin, desktop, terminal):
    assert tavin.press() == []
    assert terminal.reached() == ["ready"]
