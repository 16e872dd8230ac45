"""What a user does in a session: windows, keys, selections, and the Tavin that serves them."""

import contextlib
import ctypes
import os
import signal
import subprocess
import time

from gi.repository import Gio, GLib
from key_grabs import ErrorHandler
from session import SessionError, stop, wait_until

SPEAK = "alt+Escape"
PAUSE = "alt+shift+Escape"


CLIENT_MESSAGE = 33


class ClientMessage(ctypes.Structure):
    """Xlib's event of that kind, as long as the longest of them."""
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("sent", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("kind", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 20)]


class Desktop:
    """The programs that a test starts in `session`; `close` ends them."""

    screen = 1600, 1200

    def __init__(self, session):
        self.session = session
        self._programs = []

    def close(self):
        for program in reversed(self._programs):
            stop(program)
        self._programs.clear()

    @property
    def last_program(self):
        return self._programs[-1]

    def start(self, command, **kwargs):
        program = self.session.spawn(command, **kwargs)
        self._programs.append(program)
        return program

    def open(self, command, name, seconds=30.0, **kwargs):
        """Starts a program and returns its window, found by title or class, or by its process where
        `name` is None, once it is shown and has the keyboard."""
        wid = self.show(command, name, seconds, **kwargs)
        self.focus(wid)
        return wid

    def open_bare_field(self, build, text, busy=0.0, name="Qt 6 field", **environment):
        """A program that tells accessibility nothing and owns no selection, with `text` selected:
        only a copy gets anything out of it, `busy` seconds after it was asked for."""
        nowhere = {**self.session.env, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
        return self.open([os.path.join(build, "bin/qt6_field"), text, "--bare",
                          str(int(busy * 1000))], name,
                         env={**nowhere, **environment})

    def show(self, command, name, seconds=30.0, **kwargs):
        """The same for a window that takes no focus."""
        program = self.start(command, **kwargs)

        def window():
            if program.poll() not in (None, 0):
                raise SessionError(f"{command[0]} ended with {program.returncode}")
            found = self.windows(name) if name else self.windows_of(program.pid)
            return found[-1] if found else None
        return wait_until(window, seconds, f"window of {command[0]}")

    def windows(self, name):
        out = self.session.run(["xdotool", "search", "--onlyvisible", "--name", name], check=False)
        out = out or self.session.run(["xdotool", "search", "--onlyvisible", "--class", name],
                                      check=False)
        return out.split()

    def windows_of(self, pid):
        return self.session.run(["xdotool", "search", "--onlyvisible", "--pid", str(pid)], check=False).split()

    def box(self, wid):
        """Where a window is on the screen, without its frame."""
        told = self.session.run(["xwininfo", "-id", wid]).splitlines()
        return [int(next(line for line in told if label in line).split(":")[1]) for label in (
            "Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]

    def menus(self):
        """How many windows without a frame are shown, such as menus."""
        out = self.session.run(["xdotool", "search", "--onlyvisible", "--name", ""], check=False)
        return len(out.split())

    def focus(self, wid):
        self.session.run(["xdotool", "windowactivate", "--sync", wid])

        def asked(what):
            return self.session.run(["xdotool", what], check=False,
                                    stderr=subprocess.DEVNULL).strip()

        def focused():
            return asked("getactivewindow") == wid and asked("getwindowfocus") not in ("", "1")
        wait_until(focused, 10, "focus")

    def key(self, *keys):
        self.session.run(["xdotool", "key", *keys])

    def press(self, chord):
        self.session.run(["xdotool", "keydown", chord])

    def release(self, chord):
        self.session.run(["xdotool", "keyup", chord])

    def let_go(self):
        """What tells the desktop that no shortcut is held any more, where it needs that."""

    def gives_permission(self, _tavin):
        """Whether the press made Tavin ask for permission to copy, and it was given."""
        return False

    def click(self, wid, x, y, times=1):
        self.session.run(["xdotool", "mousemove", "--window", wid, str(x), str(y),
                          "click", "--repeat", str(times), "--delay", "60", "1"])

    def drag(self, *points):
        """Slowly over points of the screen, with the button held."""
        (x, y), *others = points
        steps = ["mousemove", str(x), str(y), "mousedown", "1"]
        for right, down in others:
            steps += ["sleep", "0.1", "mousemove", str(right), str(down)]
        self.session.run(["xdotool", *steps, "sleep", "0.1", "mouseup", "1"])

    def titled(self, name):
        """The windows with exactly that title."""
        return self.session.run(["xdotool", "search", "--onlyvisible", "--name", f"^{name}$"],
                                check=False, stderr=subprocess.DEVNULL).split()

    def has_keyboard(self, wid):
        return self.session.run(["xdotool", "getactivewindow"], check=False,
                                stderr=subprocess.DEVNULL).strip() == wid

    def primary(self):
        """The selected text as the display knows it, or None."""
        return self._selection("primary")

    def clipboard_text(self):
        return self._selection("clipboard")

    def _selection(self, name):
        result = subprocess.run(["xclip", "-o", "-selection", name, "-t", "UTF8_STRING"],
                                env=self.session.env, capture_output=True, timeout=10)
        return result.stdout.decode(errors="replace") if result.returncode == 0 else None

    def select_until(self, text, action, seconds=10.0):
        """Repeats the selecting `action` until the display has `text` selected: a window takes
        keys a moment after it is shown."""
        self.select_until_matching(lambda selected: selected == text, action, seconds)

    def select_until_matching(self, matches, action, seconds=10.0):
        def selected():
            action()
            with contextlib.suppress(SessionError):
                return wait_until(lambda: matches(self.primary() or ""), 0.5)
            return False
        wait_until(selected, seconds, f"selection (it is {self.primary()!r})")

    def own(self, selection, text):
        """A program without a window owns "primary" or "clipboard" with `text` from now on."""
        path = os.path.join(self.session.folder, f"own-{selection}.txt")
        with open(path, "w", encoding="utf-8") as f:
            f.write(text)
        self.start(["xclip", "-quiet", "-i", "-selection", selection, path])
        owned = self.primary if selection == "primary" else self.clipboard_text
        wait_until(lambda: owned() == text, 10, f"owner of {selection}")

    def selection_owner(self, name):
        """The window that owns an X selection, 0 where none does. Of the clipboard it tells, unlike
        the contents, that it was taken over and given back."""
        with self._xlib() as (x11, display):
            return x11.XGetSelectionOwner(display, self._atom(x11, display, name))

    def ask_to_close(self, wid):
        """As the button in its frame does: without a key, which a user would have pressed."""
        with self._xlib() as (x11, display):
            protocols, deletion = (self._atom(x11, display, name) for name in ("WM_PROTOCOLS", "WM_DELETE_WINDOW"))
            message = ClientMessage(CLIENT_MESSAGE, 0, 1, display, int(wid), protocols.value, 32,
                                    (ctypes.c_long * 20)(deletion.value))
            x11.XSendEvent(display, ctypes.c_ulong(int(wid)), 0, ctypes.c_long(0), ctypes.byref(message))

    @contextlib.contextmanager
    def _xlib(self):
        """A window may be gone meanwhile; the library would end the process for it."""
        x11 = ctypes.CDLL("libX11.so.6")
        x11.XSetErrorHandler.restype = ctypes.c_void_p
        ignore = ErrorHandler(lambda *_: 0)  # Kept: the library holds only a pointer.
        before = ctypes.c_void_p(x11.XSetErrorHandler(ignore))
        x11.XOpenDisplay.restype = ctypes.c_void_p
        x11.XInternAtom.restype = x11.XGetSelectionOwner.restype = ctypes.c_ulong
        display = ctypes.c_void_p(x11.XOpenDisplay(self.session.env["DISPLAY"].encode()))
        try:
            yield x11, display
        finally:
            x11.XCloseDisplay(display)  # Which waits for the errors.
            x11.XSetErrorHandler(before)

    @staticmethod
    def _atom(x11, display, name):
        return ctypes.c_ulong(x11.XInternAtom(display, name.encode(), 0))

    def clipboard(self):
        """The clipboard's targets in order with their bytes; None where it is empty."""
        def read(target):
            result = subprocess.run(["xclip", "-o", "-selection", "clipboard", "-t", target],
                                    env=self.session.env, capture_output=True, timeout=10)
            return result.stdout if result.returncode == 0 else None
        targets = read("TARGETS")
        if targets is None:
            return None
        names = [t for t in targets.decode().split("\n")
                 if t and t not in ("TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS")]
        return [(name, read(name)) for name in names]


class Tavin:
    """A running Tavin. `build` is the build or install tree; `log` its output; `settings` changes
    its environment."""

    BUS_NAME, BUS_PATH = "app.tavin.Tavin", "/app/tavin/Tavin"

    def __init__(self, desktop, engine, build, log="tavin.log", settings=None):
        self.desktop, self.engine, self.log_name = desktop, engine, log
        self.session = desktop.session
        since = engine.mark() if engine else 0
        self.process = desktop.start([os.path.join(build, "bin/tavin")], log=log,
                                     env={**desktop.session.env, **(settings or {})})
        if engine:
            try:
                engine.wait_for("/status", since=since, seconds=15)
            except SessionError as error:
                raise SessionError(f"{error}; tavin said: {self.log()}") from None
        self.bus = self._connect_to_bus()
        if self.bus:
            wait_until(self._serves, 15, f"tavin on the bus; it said: {self.log()}")

    def _connect_to_bus(self):
        flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
                 | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        with contextlib.suppress(GLib.Error):
            return Gio.DBusConnection.new_for_address_sync(
                self.session.env["DBUS_SESSION_BUS_ADDRESS"], flags, None, None)
        return None

    def log(self):
        return self.session.log(self.log_name)

    def call(self, interface, method, arguments=None, seconds=10.0):
        return self.bus.call_sync(self.BUS_NAME, self.BUS_PATH, interface, method, arguments, None,
                                  Gio.DBusCallFlags.NO_AUTO_START, int(seconds * 1000), None)

    def _serves(self):
        # Answered by the main thread's loop, so after the launch is through.
        if self.process.poll() is not None:
            raise SessionError(f"tavin ended with {self.process.returncode}: {self.log()}")
        with contextlib.suppress(GLib.Error):
            return self.call("org.freedesktop.DBus.Introspectable", "Introspect", None, 2.0)
        return None

    def action(self, name):
        self.call("org.freedesktop.Application", "ActivateAction",
                  GLib.Variant("(sava{sv})", (name, [], {})))

    def press(self, keys=SPEAK):
        """The speak shortcut. Returns the texts that the engine was then asked to speak."""
        since = self.engine.mark()
        self.desktop.key(keys)
        # The second question comes from the item that captures and posts; a pause is handled after
        # it, on the same queue. One of the questions may be another's, such as the menu's: then the
        # first pause comes before that item, but the second after it.
        self.engine.wait_for("/status", count=2, since=since)
        self.desktop.let_go()
        for count in (1, 2):
            self.action("pause")
            self.engine.wait_for("/toggle-pause", count=count, since=since, seconds=15)
        texts = [body["text"] for body in self.engine.requests("/speak", since)]
        if texts:
            # The watch over the playback asks once and finds the engine idle.
            self.engine.wait_for("/status", count=3, since=since)
        elif self.desktop.gives_permission(self):
            return self.press(keys)
        return texts

    def times_asleep(self):
        """How often its threads have gone to sleep so far, by their numbers."""
        tasks = f"/proc/{self.process.pid}/task"
        counts = {}
        for thread in os.listdir(tasks):
            with open(f"{tasks}/{thread}/status", encoding="utf-8") as f:
                line = next(line for line in f if line.startswith("voluntary_ctxt_switches"))
                counts[thread] = int(line.split()[1])
        return counts

    def quit(self, number=signal.SIGTERM):
        """Sends the signal; returns the exit code and the seconds until the end."""
        start = time.monotonic()
        self.process.send_signal(number)
        return self.process.wait(10), time.monotonic() - start
