"""Keys pressed without a process between, and a record of who grabs them."""

import sys
import threading
import time

from Xlib import XK, X, display
from Xlib.ext import record, xtest

GRAB_KEY = 33  # The request's number in the X protocol.
ALT, SHIFT = 0x8, 0x1


class Keyboard:
    """Taps keys on the display `name`; they are let go at once."""

    def __init__(self, name):
        self._display = display.Display(name)

    def close(self):
        self._display.close()

    def tap(self, *names):
        """Presses the keys in order and releases them backwards; returns the time at which they
        were sent."""
        codes = [self._display.keysym_to_keycode(XK.string_to_keysym(name)) for name in names]
        for code in codes:
            xtest.fake_input(self._display, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self._display, X.KeyRelease, code)
        sent = time.monotonic()
        self._display.flush()
        return sent


class GrabRecord:
    """Sees every key grab that programs started from now on ask for, as the display server does."""

    def __init__(self, name):
        self._control, self._data = display.Display(name), display.Display(name)
        nothing = {"core_replies": (0, 0), "ext_requests": (0, 0, 0, 0),
                   "ext_replies": (0, 0, 0, 0), "delivered_events": (0, 0),
                   "device_events": (0, 0), "errors": (0, 0),
                   "client_started": False, "client_died": False}
        self._context = self._data.record_create_context(
            0, [record.FutureClients], [{"core_requests": (GRAB_KEY, GRAB_KEY), **nothing}])
        self._data.sync()
        self._grabs = []  # (time, modifiers)
        self._thread = threading.Thread(
            target=self._data.record_enable_context, args=(self._context, self._note))
        self._thread.start()

    def _note(self, reply):
        now, data = time.monotonic(), reply.data
        # Requests that were sent together come together.
        while reply.category == record.FromClient and data[:1] == bytes([GRAB_KEY]):
            self._grabs.append((now, int.from_bytes(data[8:10], sys.byteorder)))
            data = data[4 * int.from_bytes(data[2:4], sys.byteorder):]

    def both_since(self, start):
        """When the last grab came, once both shortcuts are among them; else None."""
        grabs = [(when, mask) for when, mask in self._grabs if when >= start]
        if {ALT, ALT | SHIFT} <= {mask for _, mask in grabs}:
            return grabs[-1][0]
        return None

    def close(self):
        self._control.record_disable_context(self._context)
        self._control.sync()
        self._thread.join(5)
        self._control.close()
        self._data.close()
