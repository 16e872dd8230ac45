"""Tavin's icon in the tray of Plasma's own panel, and what the menu under it does. A module that
imports these has a class `Panel`, made of the one here with two words more:

  shown      whether the panel itself is on the screen
  open_menu  clicks at Tavin's icon with a button and returns the menu once it is open
"""

import os

import pytest
from accessible import Focus
from driver import Tavin
from kwin_desktop import LEFT, RIGHT, KwinDesktop
from kwin_session import KwinSession
from panel import tray_items
from session import wait_until

TEXT = "read from Plasma's menu"


class PlasmaPanel:
    """Plasma's shell, and the daemon that keeps the list of the tray's icons."""

    def __init__(self, session):
        self._desktop = KwinDesktop(session)
        # First: programs ask at their start who wants to hear of the focus.
        self._focus = Focus(session)
        self._daemon = "kded" + session.env["KDE_SESSION_VERSION"]
        self.start()

    def start(self):
        self._desktop.start([self._daemon])
        self._desktop.start(["plasmashell", "--no-respawn"])
        wait_until(lambda: tray_items(self._desktop) is not None, 60, "Plasma's tray")
        wait_until(self.shown, 60, "Plasma's panel", interval=0.5)

    def close(self):
        self._desktop.close()

    def restart(self):
        self.close()
        wait_until(lambda: tray_items(self._desktop) is None, 20, "the end of the tray")
        self.start()

    def shown(self):
        raise NotImplementedError

    def open_menu(self, engine, button=RIGHT):
        raise NotImplementedError


@pytest.fixture(scope="module")
def session(tmp_path_factory, build):
    with KwinSession(str(tmp_path_factory.mktemp("session")), build, native=True) as private:
        yield private


@pytest.fixture(scope="module")
def panel(session, request):
    shell = request.module.Panel(session)
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
    menu = panel.open_menu(engine, button)
    assert not desktop.windows("app.tavin.Tavin"), "the menu is the panel's"
    assert_reads(menu, engine)


def test_a_program_that_only_a_copy_reads(tavin, desktop, engine, build, panel):
    desktop.open_bare_field(build, TEXT)
    assert_reads(panel.open_menu(engine), engine)


def test_the_icon_comes_back_to_a_panel_that_comes_later(desktop, engine, build, panel, field):
    Tavin(desktop, engine, build)
    panel.open_menu(engine).close()
    panel.restart()
    desktop.focus(field)
    assert_reads(panel.open_menu(engine), engine)


__all__ = ["PlasmaPanel", "session", "panel", "desktop", "field",
           *[name for name in dir() if name.startswith("test_")]]
