"""What a user does in a session under KWin, told in the same words as on X11."""

import os
import re
import time

from data_control import DataControlDesktop
from kwin_session import GdkPixbuf
from session import wait_until
from wayland_session import WaylandDesktop

LEFT, RIGHT = 0x110, 0x111


class KwinDesktop(DataControlDesktop, WaylandDesktop):
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
        path = os.path.join(self.session.folder, "part.png")
        self.session.picture(path)
        whole = GdkPixbuf.Pixbuf.new_from_file(path)
        return whole.new_subpixbuf(x, y, width, height).copy().get_pixels()
