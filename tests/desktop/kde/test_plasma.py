"""Plasma's own panel: Tavin's icon in its tray, and what the menu under it does."""

import contextlib
import os

import pytest
from driver import Tavin
from kwin_desktop import LEFT, RIGHT, KwinDesktop
from kwin_session import KwinSession
from panel import tray_items
from session import SessionError, wait_until

TEXT = "read from Plasma's menu"
# The right half of the panel without the clock at its end.
LEFT_END, WIDTH, HEIGHT = 640, 500, 44


class Panel:
    """Plasma's shell, and the daemon that keeps the list of the tray's icons."""

    def __init__(self, session):
        self._desktop = KwinDesktop(session)
        self.start()
        self._empty = self._when_quiet()

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
        self._when_quiet()

    def icon(self):
        """Where Tavin's icon is: the tray grows to the left, and programs' icons come last."""
        def first():
            changed = self._changed(self._when_quiet())
            return changed[0] if changed else None
        wait_until(lambda: tray_items(self._desktop), 30, "Tavin at the tray")
        x = wait_until(first, 30, "an icon in the panel")
        return LEFT_END + x + 10, self._desktop.screen[1] - HEIGHT // 2

    def _changed(self, rows):
        """The columns of pixels that differ from those without Tavin."""
        return [x for x in range(WIDTH) if any(row[4 * x:4 * x + 4] != old[4 * x:4 * x + 4]
                                               for row, old in zip(rows, self._empty))]

    def _when_quiet(self):
        """The picture of the tray once it has stayed the same for a second."""
        seen = []

        def same():
            seen.append(self._desktop.session.pixels(
                LEFT_END, self._desktop.screen[1] - HEIGHT, WIDTH, HEIGHT))
            return seen[-1] if seen[-5:] == [seen[-1]] * 5 else None
        return wait_until(same, 30, "a panel that does not change", interval=0.25)


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


def open_menu(desktop, icon, button=RIGHT):
    x, y = icon
    desktop.session.move(x, 100)
    # As high above the panel as the menu reaches, but no hint.
    above = x, y - 250, 150, 100
    before = desktop.picture(*above)

    def shown():
        # The icon stands in the panel a moment after its program is registered.
        desktop.click_at(x, y, button=button)
        with contextlib.suppress(SessionError):
            return wait_until(lambda: desktop.picture(*above) != before, 3, "menu")
        return False
    wait_until(shown, 20, "the menu")


def assert_reads(desktop, engine):
    since = engine.mark()
    desktop.key("Down", "Return")
    assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]


@pytest.mark.parametrize("button", [RIGHT, LEFT], ids=["right", "left"])
def test_speak_selection_reads_the_program_in_front(tavin, desktop, engine, panel, field, button):
    open_menu(desktop, panel.icon(), button)
    assert not desktop.windows("app.tavin.Tavin"), "the menu is the panel's"
    assert_reads(desktop, engine)


def test_a_program_that_only_a_copy_reads(tavin, desktop, engine, build, panel):
    nowhere = {**desktop.session.env, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
    desktop.open([os.path.join(build, "bin/qt6_field"), TEXT, "--bare"], "Qt 6 field", env=nowhere)
    open_menu(desktop, panel.icon())
    assert_reads(desktop, engine)


def test_the_icon_comes_back_to_a_panel_that_comes_later(desktop, engine, build, panel, field):
    Tavin(desktop, engine, build)
    icon = panel.icon()
    panel.restart()
    wait_until(lambda: tray_items(desktop), 30, "Tavin at the new tray")
    desktop.focus(field)
    open_menu(desktop, icon)
    assert_reads(desktop, engine)
