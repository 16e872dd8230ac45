"""What a user does in a sway session, told in the same words as on X11."""

import time

from data_control import DataControlDesktop
from session import wait_until
from sway_input import HEIGHT, WIDTH


class SwayDesktop(DataControlDesktop):
    screen = WIDTH, HEIGHT

    @staticmethod
    def terminal(title):
        """A terminal's command line, for a program's to follow, and where its first row is."""
        return ["foot", "--title", title], 12

    def windows(self, name):
        return [str(window["id"]) for window in self.session.windows_matching(name)]

    def focus(self, wid):
        self.session.command(f"[con_id={wid}] focus")
        wait_until(lambda: self.window(wid)["focused"], 10, "focus")

    def window(self, wid):
        return next(w for w in self.session.windows() if str(w["id"]) == wid)

    def box(self, wid):
        rect = self.window(wid)["rect"]
        return [rect[side] for side in ("x", "y", "width", "height")]

    def key(self, *keys):
        for names in keys:
            self.session.input.chord(names)

    def press(self, chord):
        for name in chord.split("+"):
            self.session.input.hold(name)

    def release(self, chord):
        for name in reversed(chord.split("+")):
            self.session.input.let_go(name)

    def click(self, wid, x, y, times=1):
        window = self.window(wid)
        self.session.input.move(window["rect"]["x"] + window["window_rect"]["x"] + x,
                        window["rect"]["y"] + window["window_rect"]["y"] + y)
        for _ in range(times):
            self.session.input.press()
            self.session.input.release()

    def drag(self, *points):
        (x, y), *others = points
        self.session.input.move(x, y)
        self.session.input.press()
        for x, y in others:
            time.sleep(0.1)
            self.session.input.move(x, y)
        time.sleep(0.1)
        self.session.input.release()

    def titled(self, name):
        return [str(w["id"]) for w in self.session.windows() if w["name"] == name]

    def has_keyboard(self, wid):
        return self.window(wid)["focused"]

    def picture(self, x, y, width, height):
        """What is to be seen there, as bytes that differ where it does."""
        return self.session.run(["grim", "-t", "ppm", "-g", f"{x},{y} {width}x{height}", "-"],
                                text=False)
