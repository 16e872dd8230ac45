"""Plasma's own player, in the tray of its panel."""

import contextlib
import time

import pytest
from accessible import Tree
from kwin_session import KwinSession
from session import SessionError, wait_until

pytest.register_assert_rewrite("player_tests", "plasma_tests")
from player_tests import *  # noqa: E402,F401,F403
from plasma_tests import desktop  # noqa: E402,F401
from test_plasma import Panel  # noqa: E402

ICON = ("push button", "Media Player")
BUTTONS = {"previous": "Previous Track", "play": "Play", "pause": "Pause", "next": "Next Track"}


# One of its own for each test: once the only player has left, Plasma's media keys reach none that comes
# later, whoever it is.
@pytest.fixture
def session(tmp_path, build):
    with KwinSession(str(tmp_path), build, native=True, sound=True) as private:
        yield private


@pytest.fixture
def panel(session):
    with contextlib.closing(Panel(session)) as shell:
        yield shell


@pytest.fixture
def player(session, desktop):  # noqa: F811
    return Player(session, desktop)


class Player:
    """The window that opens from its icon stays open while keys are pressed."""

    def __init__(self, session, desktop):  # noqa: F811
        self._tree, self._desktop = Tree(session), desktop

    def shows(self, begin):
        self._open()
        # Plasma 5 has it in a label, Plasma 6 in a heading.
        return any(name.startswith(begin) for role in ("label", "heading") for name, _ in self._tree.shown(role))

    def is_there(self):
        return self._tree.box(*ICON) is not None

    def click(self, name):
        self._open()
        self._click(wait_until(lambda: self._tree.box("push button", BUTTONS[name]), 10, name))

    def _click(self, box):
        x, y, width, height = box
        self._desktop.click_at(x + width // 2, y + height // 2)
        time.sleep(0.5)  # Another one sooner would be a double click.

    def _open(self):
        def is_open():
            if self._tree.box("push button", "Next Track"):
                return True
            if icon := self._tree.box(*ICON):
                self._click(icon)
            with contextlib.suppress(SessionError):
                return wait_until(lambda: self._tree.box("push button", "Next Track"), 8)
            return False
        wait_until(is_open, 60, "the player's window")
