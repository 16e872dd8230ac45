"""The selections of a session whose compositor lets programs without a window read and set them."""

import subprocess

from driver import Desktop
from session import wait_until


class DataControlDesktop(Desktop):
    PASTE_SECONDS = 10

    def __init__(self, session):
        super().__init__(session)
        self._owners = {}  # They end when another program takes the selection over.

    def _paste(self, *options):
        result = subprocess.run(["wl-paste", "--no-newline", *options], env=self.session.env,
                                capture_output=True, timeout=self.PASTE_SECONDS)
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
