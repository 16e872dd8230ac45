"""Plasma's own panel: Tavin's icon in its tray, and what the menu under it does."""

import contextlib
import os

import pytest
from accessible import Focus, OpenMenu
from driver import Tavin
from kwin_desktop import LEFT, RIGHT, KwinDesktop
from kwin_session import KwinSession
from panel import tray_items
from session import SessionError, wait_until

TEXT = "read from Plasma's menu"


class Panel:
    """Plasma's shell, and the daemon that keeps the list of the tray's icons."""

    def __init__(self, session):
        self._desktop = KwinDesktop(session)
        # First: programs ask at their start who wants to hear of the focus.
        self._focus = Focus(session)
        self.start()

    def start(self):
        self._desktop.start(["kded5"])
        self._desktop.start(["plasmashell", "--no-respawn"])
        wait_until(lambda: tray_items(self._desktop) is not None, 60, "Plasma's tray")
        wait_until(lambda: self._desktop.titled("Plasma"), 60, "Plasma's panel")

    def close(self):
        self._desktop.close()

    def restart(self):
        self.close()
        wait_until(lambda: tray_items(self._desktop) is None, 20, "the end of the tray")
        self.start()

    def open_menu(self, button=RIGHT):
        """Clicks at Tavin's icon; another one that comes meanwhile moves it along."""
        wait_until(lambda: tray_items(self._desktop), 30, "Tavin at the tray")
        wait_until(lambda: self._click(button), 40, "the menu")
        return OpenMenu(self._desktop, self._focus)

    def _click(self, button):
        box = self._focus.box("push button", "Tavin")
        if not box:
            return False
        x, y = box[0] + box[2] // 2, box[1] + box[3] // 2
        self._desktop.session.move(x, 100)
        # As high above the panel as the menu reaches, but no hint.
        above = x, y - 250, 150, 100
        before = self._desktop.picture(*above)
        self._desktop.click_at(x, y, button=button)
        with contextlib.suppress(SessionError):
            return wait_until(lambda: self._desktop.picture(*above) != before, 5, "menu")
        return False


@pytest.fixture(scope="module")
def session(tmp_path_factory, build):
    with KwinSession(str(tmp_path_factory.mktemp("session")), build, native=True) as private:
        yield private


@pytest.fixture(scope="module")
def panel(session):
    shell = Panel(session)
    yield shell
    shell.close()


@pytest.fixture
def desktop(session, panel):
    programs = KwinDesktop(session)
    yield programs
    programs.close()


@pytest.fixture
def field(desktop, build):
    window = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


def assert_reads(menu, engine):
    since = engine.mark()
    menu.choose_with_keys("Speak Selection")
    assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]


@pytest.mark.parametrize("button", [RIGHT, LEFT], ids=["right", "left"])
def test_speak_selection_reads_the_program_in_front(tavin, desktop, engine, panel, field, button):
    menu = panel.open_menu(button)
    assert not desktop.windows("app.tavin.Tavin"), "the menu is the panel's"
    assert_reads(menu, engine)


def test_a_program_that_only_a_copy_reads(tavin, desktop, engine, build, panel):
    nowhere = {**desktop.session.env, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
    desktop.open([os.path.join(build, "bin/qt6_field"), TEXT, "--bare"], "Qt 6 field", env=nowhere)
    assert_reads(panel.open_menu(), engine)


def test_the_icon_comes_back_to_a_panel_that_comes_later(desktop, engine, build, panel, field):
    Tavin(desktop, engine, build)
    panel.open_menu().close()
    panel.restart()
    desktop.focus(field)
    assert_reads(panel.open_menu(), engine)
