"""Another program of the X display that holds key combinations, by the core protocol or XInput2."""

import contextlib
import ctypes as c

MODIFIERS = {"shift": 1, "ctrl": 4, "alt": 8}
XINPUT2_MASTERS = 1
KEY_PRESS_MASK = b"\x04"  # Of XInput2: the bit of event 2.
SYNC, ASYNC = 0, 1


class EventMask(c.Structure):
    _fields_ = [("device", c.c_int), ("length", c.c_int), ("mask", c.c_char_p)]


class GrabModifiers(c.Structure):
    _fields_ = [("modifiers", c.c_int), ("status", c.c_int)]


ErrorHandler = c.CFUNCTYPE(c.c_int, c.c_void_p, c.c_void_p)


class KeyGrabs:
    """One client of the display. `grab` and `grab_by_xinput2` tell whether it was granted."""

    def __init__(self, display):
        self._x11, self._xi = c.CDLL("libX11.so.6"), c.CDLL("libXi.so.6")
        self._x11.XOpenDisplay.restype = c.c_void_p
        self._x11.XDefaultRootWindow.restype = self._x11.XStringToKeysym.restype = c.c_ulong
        self._x11.XKeysymToKeycode.restype = c.c_ubyte
        self._refusals = 0
        self._on_error = ErrorHandler(self._refused)  # Kept: the library holds only a pointer.
        self._x11.XSetErrorHandler(self._on_error)
        self._display = c.c_void_p(self._x11.XOpenDisplay(display.encode()))
        self._root = c.c_ulong(self._x11.XDefaultRootWindow(self._display))
        self._xi.XIQueryVersion(self._display, c.byref(c.c_int(2)), c.byref(c.c_int(2)))

    def close(self):
        self._x11.XCloseDisplay(self._display)
        self._x11.XSetErrorHandler(None)

    def _refused(self, *_):
        self._refusals += 1
        return 0

    def _key(self, chord):
        *modifiers, name = chord.split("+")
        keysym = c.c_ulong(self._x11.XStringToKeysym(name.encode()))
        keycode = self._x11.XKeysymToKeycode(self._display, keysym)
        return keycode, sum(MODIFIERS[modifier] for modifier in modifiers)

    def grab(self, chord):
        before = self._refusals
        self._x11.XGrabKey(self._display, *self._key(chord), self._root, 0, ASYNC, ASYNC)
        self._x11.XSync(self._display, 0)
        return self._refusals == before

    def ungrab(self, chord):
        self._x11.XUngrabKey(self._display, *self._key(chord), self._root)
        self._x11.XSync(self._display, 0)

    def grab_by_xinput2(self, chord):
        keycode, mask = self._key(chord)
        events = EventMask(XINPUT2_MASTERS, len(KEY_PRESS_MASK), KEY_PRESS_MASK)
        return self._xi.XIGrabKeycode(self._display, XINPUT2_MASTERS, keycode, self._root, ASYNC, ASYNC,
                                      0, c.byref(events), 1, c.byref(GrabModifiers(mask, 0))) == 0

    def ungrab_by_xinput2(self, chord):
        keycode, mask = self._key(chord)
        self._xi.XIUngrabKeycode(self._display, XINPUT2_MASTERS, keycode, self._root, 1,
                                 c.byref(GrabModifiers(mask, 0)))
        self._x11.XSync(self._display, 0)

    @contextlib.contextmanager
    def held(self, chord, by_xinput2=False):
        grab, ungrab = ((self.grab_by_xinput2, self.ungrab_by_xinput2) if by_xinput2
                        else (self.grab, self.ungrab))
        assert grab(chord)
        try:
            yield
        finally:
            ungrab(chord)

    def is_free(self, chord):
        """Whether nobody holds it."""
        with contextlib.suppress(AssertionError), self.held(chord):
            return True
        return False
