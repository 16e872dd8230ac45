"""Trays at the lower right corner of the screen, and the menu under Tavin's icon in them."""

import contextlib
import os
import subprocess
import time

from accessible import Focus, OpenMenu
from panel import start_lxqt_panel, start_xfce4_panel, wait_for_no_tray
from pixels import contrast, on_screen
from session import wait_until

ICON = (1588, 1184)


def start_trayer(desktop, colour=None):
    """A tray that knows XEmbed alone, where its colour matters wider than its icons; returns its
    process."""
    wait_for_no_tray(desktop)
    look = (["--widthtype", "request"] if colour is None else
            ["--widthtype", "pixel", "--width", "100", "--transparent", "true", "--alpha", "0",
             "--tint", colour])
    process = desktop.start(["trayer", "--edge", "bottom", "--align", "right", "--height", "32",
                             *look])
    wait_until(lambda: desktop.windows("trayer"), 30, "trayer")
    return process


def processor_time(pid):
    """Of the process and its descendants so far; it tells whether they do anything."""
    own, spent = [pid], {}
    for process in own:
        with contextlib.suppress(OSError):
            for task in os.listdir(f"/proc/{process}/task"):
                with open(f"/proc/{process}/task/{task}/schedstat", encoding="ascii") as f:
                    spent[task] = f.read().split()[0]
                with open(f"/proc/{process}/task/{task}/children", encoding="ascii") as f:
                    own += map(int, f.read().split())
    return spent


def rests(pid):
    """Whether the process and its descendants do nothing for a moment."""
    before = processor_time(pid)
    time.sleep(0.15)
    return processor_time(pid) == before


def has_drawing(picture):
    """Unlike a panel, also one whose colour runs from its upper edge to its lower."""
    width, height = picture.size
    return any(picture.colour(column, row) != picture.colour(0, row)
               for row in range(height) for column in range(width))


STARTERS = {"xfce4-panel": start_xfce4_panel, "lxqt-panel": start_lxqt_panel,
            "trayer": start_trayer}


class Tray:
    """Without a session bus nobody tells what the menu holds."""

    def __init__(self, desktop, name, has_bus=True, **look):
        self.desktop, self.name = desktop, name
        # First: programs ask at their start who wants to hear of the focus.
        self._focus = Focus(desktop.session) if has_bus else None
        self.process = STARTERS[name](desktop, **look)

    def start_again(self, **look):
        self.process = STARTERS[self.name](self.desktop, **look)

    def wait_for_icon(self):
        """Until something is drawn where the icon belongs, and the panel has done what follows,
        such as fetching the menu: no hand is as fast as this one."""
        x, y = ICON
        wait_until(lambda: has_drawing(on_screen(self.desktop, x - 8, y - 8, 16, 16)), 20,
                   "the icon")
        wait_until(lambda: rests(self.process.pid), 20, "the panel at rest")

    def look(self):
        """The panel's colour beside the icon, and how many points of the icon have a contrast of
        4.5 or more to the panel in their row."""
        x, y = ICON
        picture = on_screen(self.desktop, x - 60, y - 12, 72, 24)
        clear = sum(contrast(picture.colour(column, row), picture.colour(0, row)) >= 4.5
                    for row in range(24) for column in range(48, 72))
        return picture.colour(0, 12), clear

    def click_icon(self, button="1"):
        """Opens the menu. Returns once the panel has drawn it."""
        self.wait_for_icon()
        before = self._windows()
        self.desktop.session.run(["xdotool", "mousemove", *map(str, ICON), "click", button])
        wait_until(lambda: any(self._is_high(window) for window in self._windows() - before), 10,
                   "the menu")

    def _windows(self):
        return set(self.desktop.session.run(
            ["xdotool", "search", "--onlyvisible", "--name", ""], check=False).split())

    def _is_high(self, window):
        """Unlike a hint or an icon."""
        shape = self.desktop.session.run(["xdotool", "getwindowgeometry", "--shell", window],
                                         check=False, stderr=subprocess.DEVNULL)
        return any(int(line[7:]) > 150 for line in shape.splitlines()
                   if line.startswith("HEIGHT="))

    def open_menu(self, button="1"):
        self.click_icon(button)
        return OpenMenu(self.desktop, self._focus)
