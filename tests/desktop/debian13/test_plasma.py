"""Plasma 6's own panel. There is no picture of it here: accessibility tells where the icon is and what
the menu under it holds."""

import contextlib
import os

import pytest
from accessible import ACCESSIBLE, SHOWING, Focus, OpenMenu
from driver import Tavin
from gi.repository import GLib
from kwin_desktop import LEFT, RIGHT, KwinDesktop
from kwin_session import KwinSession
from panel import tray_items
from session import SessionError, wait_until

TEXT = "read from Plasma's menu"


class Shell(Focus):
    """What plasmashell shows, as a screen reader is told."""

    def _root(self):
        for program in self._call(("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"),
                                  ACCESSIBLE, "GetChildren"):
            with contextlib.suppress(GLib.Error):  # It may have ended just now.
                if self._get(program, "Name") == "plasmashell":
                    return program
        return None

    def _below_each(self, node):
        yield node
        with contextlib.suppress(GLib.Error):  # Gone meanwhile.
            for child in self._call(node, ACCESSIBLE, "GetChildren"):
                yield from self._below_each(child)

    def _all(self):
        root = self._root()
        return self._below_each(root) if root else iter(())

    def box(self, name):
        """Of a button that is shown: x, y, width, height; or None."""
        for node in self._all():
            with contextlib.suppress(GLib.Error):
                if self._get(node, "Name") == name and self._role(node) == "push button":
                    box = self._call(node, "org.a11y.atspi.Component", "GetExtents",
                                     GLib.Variant("(u)", (0,)))
                    if box[2] > 0 and SHOWING in self._states(node):
                        return box
        return None


class Panel:
    def __init__(self, session):
        self._desktop = KwinDesktop(session)
        self.shell = Shell(session)  # First: programs ask at their start who wants to hear.
        self.start()

    def start(self):
        self._desktop.start(["kded6"])
        self._desktop.start(["plasmashell", "--no-respawn"])
        wait_until(lambda: tray_items(self._desktop) is not None, 60, "Plasma's tray")
        wait_until(lambda: self.shell.box("Digital Clock"), 60, "Plasma's panel", interval=0.5)

    def close(self):
        self._desktop.close()

    def restart(self):
        self.close()
        wait_until(lambda: tray_items(self._desktop) is None, 20, "the end of the tray")
        self.start()

    def icon(self):
        seen = []

        def rests():
            seen.append(self.shell.box("Tavin"))
            return seen[-1] if seen[-3:] == [seen[-1]] * 3 else None
        return wait_until(rests, 30, "the icon", interval=0.2)

    def open_menu(self, engine, button=RIGHT):
        def opened():
            x, y, width, height = self.icon()
            since = engine.mark()
            self._desktop.click_at(x + width // 2, y + height // 2, button=button)
            with contextlib.suppress(SessionError):
                # Whoever opens it has Tavin look at the engine's state.
                return engine.wait_for("/status", since=since, seconds=4)
            return None
        wait_until(opened, 30, "the menu")
        return OpenMenu(self._desktop, self.shell)


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


def assert_reads(desktop, engine):
    since = engine.mark()
    desktop.key("Return")
    assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]


def test_the_menu_has_its_lines(tavin, desktop, engine, panel):
    menu = panel.open_menu(engine)
    titles = [entry.title for entry in menu.entries()]
    assert titles[0].startswith("Speak Selection")
    assert titles[-1] == "Quit Tavin"
    assert "Engine: eSpeak NG" in titles
    assert not desktop.windows("app.tavin.Tavin"), "the menu is the panel's"
    menu.close()


@pytest.mark.parametrize("button", [RIGHT, LEFT], ids=["right", "left"])
def test_speak_selection_reads_the_program_in_front(tavin, desktop, engine, panel, field, button):
    panel.open_menu(engine, button)
    assert_reads(desktop, engine)


def test_a_program_that_only_a_copy_reads(tavin, desktop, engine, build, panel):
    nowhere = {**desktop.session.env, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
    desktop.open([os.path.join(build, "bin/qt6_field"), TEXT, "--bare"], "Qt 6 field", env=nowhere)
    panel.open_menu(engine)
    assert_reads(desktop, engine)


def test_the_icon_comes_back_to_a_panel_that_comes_later(desktop, engine, build, panel, field):
    Tavin(desktop, engine, build)
    panel.restart()
    wait_until(lambda: tray_items(desktop), 30, "Tavin at the new tray")
    desktop.focus(field)
    panel.open_menu(engine)
    assert_reads(desktop, engine)
