"""The players in the menu of xfce4-panel's volume plugin."""

import pytest
from accessible import Focus, OpenMenu
from driver import Desktop
from panel import VOLUME, prepare_for_players, start_xfce4_panel, tray_items
from session import Session, wait_until
from trays import rests

pytest.register_assert_rewrite("player_tests")
from player_tests import *  # noqa: E402,F401,F403

BUTTONS = {"previous": 94, "play": 59, "pause": 59, "next": 24}  # From the right edge of the player's line.


@pytest.fixture(scope="module")
def session(tmp_path_factory):
    with Session(str(tmp_path_factory.mktemp("session")), sound=True) as private:
        yield private


@pytest.fixture(scope="module")
def player(session, build):
    desktop = Desktop(session)
    prepare_for_players(desktop, build)
    yield Player(desktop)
    desktop.close()


class Player:
    def __init__(self, desktop):
        self._desktop = desktop
        # First: programs ask at their start who wants to hear of the focus.
        self._focus = Focus(desktop.session)
        self._panel = start_xfce4_panel(desktop, sound=True)

    def shows(self, begin):
        return any(line.title.startswith(begin) for line in self._lines())

    def is_there(self):
        # A player that has gone stays in the menu by its program's name, which starts it.
        return any(line.title not in ("", "Tavin", "Audio mixer...") for line in self._lines())

    def click(self, name):
        """The menu stays open at this."""
        menu = self._open()
        x, y, width, height = next(line for line in menu.entries() if " is read" in line.title).box
        self._desktop.session.run(["xdotool", "mousemove", str(x + width - BUTTONS[name]),
                                   str(y + height // 2), "click", "1"])
        menu.close()

    def _lines(self):
        menu = self._open()
        lines = menu.entries()
        menu.close()
        return lines

    def _open(self):
        wait_until(lambda: tray_items(self._desktop), 20, "Tavin's icon, which moves the other")
        wait_until(lambda: rests(self._panel.pid), 20, "the panel at rest")
        shown = self._desktop.menus()
        self._desktop.session.run(["xdotool", "mousemove", *map(str, VOLUME), "click", "1"])
        wait_until(lambda: self._desktop.menus() > shown, 10, "the menu")
        return OpenMenu(self._desktop, self._focus)
