"""Plasma's own clipboard manager beside Tavin: what the user copied last stays in the clipboard and in it."""

import contextlib
import time

import pytest
from gi.repository import Gio
from late_copies import COPIED, TEXT, has_copied, press_until_asked
from session import SessionError, wait_until
from wayland_session import connect


class Klipper:
    def __init__(self, desktop):
        self._bus = connect(desktop.session.env["DBUS_SESSION_BUS_ADDRESS"])
        self.program = desktop.start(["klipper"])
        wait_until(lambda: desktop.session.owner("org.kde.klipper"), 30, "Klipper")
        # It has its name before it looks at the clipboard.
        wait_until(lambda: self._hears(desktop), 30, "Klipper's first text")

    def _hears(self, desktop):
        text = f"copied at {time.monotonic()}"
        desktop.own("clipboard", text)
        with contextlib.suppress(SessionError):
            return wait_until(lambda: self.newest() == text, 2, "the text in Klipper", interval=0.2)
        return False

    def newest(self):
        """Of the texts that it keeps."""
        return self._bus.call_sync("org.kde.klipper", "/klipper", "org.kde.klipper.klipper",
                                   "getClipboardContents", None, None, Gio.DBusCallFlags.NONE,
                                   10000, None).unpack()[0]


@pytest.fixture
def klipper(desktop):
    manager = Klipper(desktop)
    yield manager
    assert manager.program.poll() is None


@pytest.mark.parametrize("busy", [0, 0.2, 0.45, 0.7, 1.5, 3])
def test_what_was_there_comes_back_however_late_the_copy_is(tavin, desktop, build, klipper, busy):
    desktop.own("clipboard", COPIED)
    wait_until(lambda: klipper.newest() == COPIED, 10, "the text in Klipper", interval=0.2)
    desktop.open_bare_field(build, TEXT, busy)
    press_until_asked(desktop)
    has_copied(desktop)
    wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")
    wait_until(lambda: klipper.newest() == COPIED, 10, "the user's text as Klipper's newest",
               interval=0.2)
