"""What a user does in a session under KWin, told in the same words as on X11."""

import os
import re
import subprocess
import time

from data_control import DataControlDesktop
from session import stop, wait_until
from wayland_session import WaylandDesktop

LEFT, RIGHT = 0x110, 0x111


class KwinDesktop(DataControlDesktop, WaylandDesktop):
    PASTE_SECONDS = 4

    @staticmethod
    def terminal(title):
        """A terminal's command line, for a program's to follow, and where its first row is."""
        # Accessibility would see into it.
        return ["env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent", "konsole", "--nofork",
                "--hide-menubar", "-p", f"LocalTabTitleFormat={title}", "-e"], 48

    def _paste(self, *options):
        # Of an empty selection KWin tells nothing, and then this waits for ever.
        try:
            return super()._paste(*options)
        except subprocess.TimeoutExpired:
            return None

    def own(self, selection, text):
        if selection == "clipboard" or self.primary() is not None:
            super().own(selection, text)
            return
        # For the same reason wl-copy believes that there is no such selection.
        field = self.start([os.path.join(self.session.programs, "qt6_field"), "the first"])
        wait_until(lambda: self.windows("Qt 6 field"), 30, "field")
        self.select_until("the first", lambda: self.key("ctrl+a"))
        super().own(selection, text)
        stop(field)

    @property
    def screen(self):
        return self.session.size

    def windows(self, name):
        windows = self.session.windows()
        for field in ("title", "program"):
            found = [w.uuid for w in windows if re.search(name, getattr(w, field), re.I)]
            if found:
                return found
        return []

    def window(self, wid):
        return next(w for w in self.session.windows() if w.uuid == wid)

    def box(self, wid):
        return self.window(wid).box

    def focus(self, wid):
        self.session.activate(wid)
        wait_until(lambda: self.has_keyboard(wid), 10, "focus")

    def titled(self, name):
        return [w.uuid for w in self.session.windows() if w.title == name]

    def has_keyboard(self, wid):
        return any(w.active for w in self.session.windows() if w.uuid == wid)

    def click(self, wid, x, y, times=1):
        left, top, _, _ = self.window(wid).box
        self.click_at(left + x, top + y, times)

    def click_at(self, x, y, times=1, button=LEFT):
        self.session.move(x, y)
        for _ in range(times):
            self.session.button(button, True)
            self.session.button(button, False)

    def drag(self, *points):
        (x, y), *others = points
        self.session.move(x, y)
        self.session.button(LEFT, True)
        for x, y in others:
            time.sleep(0.1)
            self.session.move(x, y)
        time.sleep(0.1)
        self.session.button(LEFT, False)

    def picture(self, x, y, width, height):
        """What is to be seen there, as bytes that differ where it does."""
        return b"".join(self.session.pixels(x, y, width, height))
