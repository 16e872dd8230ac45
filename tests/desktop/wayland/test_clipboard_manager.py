"""A program that keeps a history of the clipboard, beside Tavin: it has what Tavin's copies leave there for a
moment, and the clipboard is its user's all the same."""

import contextlib
import os

import pytest
from late_copies import COPIED, TEXT, has_copied, press_until_asked
from session import wait_until

EMPTY = "nothing before"


class History:
    """What wl-paste has each new text of the clipboard go through, as the managers for sway are run."""

    def __init__(self, desktop):
        self._path = os.path.join(desktop.session.folder, "history")
        with contextlib.suppress(FileNotFoundError):
            os.unlink(self._path)
        # In one write: the next text's process may run beside it.
        keep = 'text=$(cat); printf "%s\\0" "$text" >>"$1"'
        self.program = desktop.start(["wl-paste", "--no-newline", "--type", "text", "--watch",
                                      "sh", "-c", keep, "sh", self._path])

    def texts(self):
        try:
            with open(self._path, encoding="utf-8") as f:
                return f.read().split("\0")[:-1]
        except FileNotFoundError:
            return []


@pytest.fixture
def history(desktop):
    desktop.own("clipboard", EMPTY)
    keeper = History(desktop)
    wait_until(lambda: keeper.texts() == [EMPTY], 10, "the history's first text")
    yield keeper
    assert keeper.program.poll() is None


@pytest.mark.parametrize("busy", [0, 0.2, 0.45, 0.7, 1.5, 3])
def test_what_was_there_comes_back_however_late_the_copy_is(tavin, desktop, build, history, busy):
    desktop.own("clipboard", COPIED)
    desktop.open_bare_field(build, TEXT, busy)
    press_until_asked(desktop)
    has_copied(desktop)
    wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")
    # Each text goes through a process of its own, which may be later than the next one's.
    wait_until(lambda: history.texts().count(COPIED) == 2, 5, "the user's text in the history again")
    # One that was undone before it could be read is empty.
    assert set(history.texts()) <= {EMPTY, COPIED, TEXT, ""}
    assert desktop.clipboard_text() == COPIED
