"""The player in GNOME Shell's list of messages, which opens from the clock."""

import pytest
from session import wait_until

pytest.register_assert_rewrite("player_tests")
from player_tests import *  # noqa: E402,F401,F403

CLOCK = "Main.panel.statusArea.dateMenu"
# As GNOME 43 has it, and 48.
MESSAGE = (f"({CLOCK}._messageList._mediaSection?._list.get_children()[0]?.child"
           f" ?? [...{CLOCK}._messageList._messageView?._playerToMessage.values() ?? []][0])")
TITLE = f"({MESSAGE}?.titleLabel ?? {MESSAGE}?._titleLabel)"
BUTTONS = {"previous": "_prevButton", "play": "_playPauseButton", "pause": "_playPauseButton",
           "next": "_nextButton"}


@pytest.fixture(scope="module")
def session(start_session):
    with start_session(sound=True) as private:
        yield private


@pytest.fixture
def player(desktop):
    return Player(desktop)


class Player:
    def __init__(self, desktop):
        self._desktop = desktop

    def shows(self, begin):
        return (self._desktop.look(TITLE + "?.text") or "").startswith(begin)

    def is_there(self):
        return self._desktop.look(MESSAGE + "?.visible") is not None

    def click(self, name):
        self._desktop.click_actor(CLOCK)
        wait_until(lambda: self._desktop.look(CLOCK + ".menu.isOpen"), 10, "the list of messages")
        self._desktop.click_actor(f"{MESSAGE}.{BUTTONS[name]}")
        self._desktop.key("Escape")
        wait_until(lambda: not self._desktop.look(CLOCK + ".menu.isOpen"), 10, "the end of the list")
