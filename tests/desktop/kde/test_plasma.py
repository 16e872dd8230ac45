"""Plasma 5's own panel."""

import contextlib

import pytest
from accessible import OpenMenu
from kwin_desktop import RIGHT
from menu_tests import around
from panel import tray_items
from photographs import once_drawn
from pixels import contrast, on_screen
from session import SessionError, wait_until

pytest.register_assert_rewrite("plasma_tests")
from plasma_tests import *  # noqa: E402,F401,F403
from plasma_tests import PlasmaPanel  # noqa: E402


class Panel(PlasmaPanel):
    def shown(self):
        return self._desktop.titled("Plasma")

    def open_menu(self, _engine, button=RIGHT):
        """Another icon that comes meanwhile moves Tavin's along."""
        wait_until(lambda: tray_items(self._desktop), 30, "Tavin at the tray")
        wait_until(lambda: self._click(button), 40, "the menu")
        return OpenMenu(self._desktop, self._focus)

    def icon(self):
        """Where it is on the screen."""
        return self._focus.box("push button", "Tavin")

    def _click(self, button):
        box = self.icon()
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


def test_three_lines_are_drawn_between_the_menus_parts(desktop, panel, tavin, engine):
    menu = panel.open_menu(engine)
    assert once_drawn(lambda: on_screen(desktop, *around(menu))).rules() == 3
    menu.close()


def test_the_icon_is_clear_in_the_panels_colour(desktop, panel, tavin):
    desktop.session.move(100, 100)  # Plasma draws an icon under the pointer paler.

    def clear_points():
        box = panel.icon()
        if not box:
            return 0
        rows = [[row[n:n + 3][::-1] for n in range(0, len(row), 4)]
                for row in desktop.session.pixels(*box)]
        return sum(contrast(point, row[0]) >= 4.5 for row in rows for point in row)
    wait_until(lambda: clear_points() > 45, 30, "an icon with a contrast of 4.5")
