"""What a user does in a sway session, told in the same words as on X11."""

import subprocess
import time

from driver import Desktop
from session import wait_until
from sway_input import HEIGHT, WIDTH


class SwayDesktop(Desktop):
    screen = WIDTH, HEIGHT

    def __init__(self, session):
        super().__init__(session)
        self._owners = {}  # They end when another program takes the selection over.

    def windows(self, name):
        return [str(window["id"]) for window in self.session.windows_matching(name)]

    def focus(self, wid):
        self.session.command(f"[con_id={wid}] focus")
        wait_until(lambda: self.window(wid)["focused"], 10, "focus")

    def window(self, wid):
        return next(w for w in self.session.windows() if str(w["id"]) == wid)

    def key(self, *keys):
        for names in keys:
            self.session.input.chord(names)

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

    def _paste(self, *options):
        result = subprocess.run(["wl-paste", "--no-newline", *options], env=self.session.env,
                                capture_output=True, timeout=10)
        return result.stdout if result.returncode == 0 else None

    def _selection(self, name):
        options = ["--primary"] if name == "primary" else []
        text = self._paste(*options, "--type", "text/plain;charset=utf-8")
        if text is None:
            text = self._paste(*options, "--type", "text/plain")
        return text.decode(errors="replace") if text is not None else None

    def own(self, selection, text):
        options = ["--primary"] if selection == "primary" else []
        self._owners[selection] = self.start(["wl-copy", "--foreground", *options, text])
        owned = self.primary if selection == "primary" else self.clipboard_text
        wait_until(lambda: owned() == text, 10, f"owner of {selection}")

    def selection_owner(self, name):
        """The process that was made to own the selection, 0 once it owns it no more."""
        owner = self._owners[name.lower()]
        return owner.pid if owner.poll() is None else 0

    def clipboard(self):
        names = self._paste("--list-types")
        return self.clipboard_types(names.decode().splitlines()) if names is not None else None

    def clipboard_types(self, names):
        """Those types of the clipboard with their bytes."""
        return [(name, self._paste("--type", name)) for name in names]

    def picture(self, x, y, width, height):
        """What is to be seen there, as bytes that differ where it does."""
        return self.session.run(["grim", "-t", "ppm", "-g", f"{x},{y} {width}x{height}", "-"],
                                text=False)
