"""Plasma 6's own panel. There is no picture of it here: accessibility tells where the icon is and what
the menu under it holds."""

import contextlib

import pytest
from accessible import OpenMenu
from kwin_desktop import RIGHT
from session import SessionError, wait_until

pytest.register_assert_rewrite("plasma_tests")
from plasma_tests import *  # noqa: E402,F401,F403
from plasma_tests import PlasmaPanel  # noqa: E402


class Panel(PlasmaPanel):
    def shown(self):
        return self._focus.box("push button", "Digital Clock")

    def open_menu(self, engine, button=RIGHT):
        def opened():
            x, y, width, height = self._icon()
            since = engine.mark()
            self._desktop.click_at(x + width // 2, y + height // 2, button=button)
            with contextlib.suppress(SessionError):
                # Whoever opens it has Tavin look at the engine's state.
                return engine.wait_for("/status", since=since, seconds=4)
            return None
        wait_until(opened, 30, "the menu")
        return OpenMenu(self._desktop, self._focus)

    def _icon(self):
        """Where it rests: another one that comes moves it along."""
        seen = []

        def rests():
            seen.append(self._focus.box("push button", "Tavin"))
            return seen[-1] if seen[-3:] == [seen[-1]] * 3 else None
        return wait_until(rests, 30, "the icon", interval=0.2)


def test_the_menu_has_its_lines(tavin, engine, panel):
    menu = panel.open_menu(engine)
    titles = [entry.title for entry in menu.entries()]
    assert titles[0].startswith("Speak Selection")
    assert titles[-1] == "Quit Tavin"
    assert "Engine: eSpeak NG" in titles
    menu.close()
