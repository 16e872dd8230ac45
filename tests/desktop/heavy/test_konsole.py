"""A Qt terminal: its selection is read, and nothing is typed into what runs there."""

import pytest
from terminal import WORD, Watched


@pytest.fixture
def terminal(desktop, programs, tmp_path):
    return Watched(desktop, programs, ["konsole", "--nofork", "--hide-menubar", "-p",
                                       "LocalTabTitleFormat=watched", "-e"],
                   str(tmp_path / "record"), row=48)


def test_selection_is_read_and_nothing_typed(tavin, desktop, terminal):
    terminal.select_word()
    assert tavin.press() == [WORD]
    assert terminal.reached() == ["ready"]


def test_without_a_selection_nothing_is_typed(tavin, terminal):
    assert tavin.press() == []
    assert terminal.reached() == ["ready"]
