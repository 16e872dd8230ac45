"""What the private sessions under a Wayland compositor have in common."""

import contextlib
import glob
import os
import subprocess
import time

import isolation
from driver import Desktop
from gi.repository import Gio
from session import Session, wait_until

# Kernel key codes; those of letters stand for the key in that place of an ANSI keyboard.
KEYS = {"Escape": 1, "BackSpace": 14, "Tab": 15, "ctrl": 29, "shift": 42, "alt": 56, "super": 125,
        "Caps_Lock": 58, "Num_Lock": 69, "Return": 28, "Home": 102, "Up": 103, "Left": 105,
        "Right": 106, "End": 107, "Down": 108, "Insert": 110, "space": 57,
        **dict(zip("qwertyuiop", range(16, 26))), **dict(zip("asdfghjkl", range(30, 39))),
        **dict(zip("zxcvbnm", range(44, 51))), "XF86AudioNext": 163, "XF86AudioPlay": 164,
        "XF86AudioPrev": 165, "XF86AudioStop": 166}
X_SOCKETS = "/tmp/.X11-unix"


def codes(chord):
    """The key codes of a chord such as "alt+Escape", in the order of pressing."""
    return [KEYS[name] for name in chord.split("+")]


def keep_x_sockets_apart():
    """Compositors take the first display whose number no living process holds, and process
    numbers mean nothing across process namespaces: with a mount namespace of its own, a session
    has a folder of X sockets of its own too."""
    if os.environ[isolation.KIND] != "namespaces" or os.path.ismount(X_SOCKETS):
        return
    with contextlib.suppress(FileExistsError):
        os.mkdir(X_SOCKETS)
    subprocess.run(["mount", "-t", "tmpfs", "-o", "mode=1777", "tavin", X_SOCKETS], check=True)


def connect(address):
    """A connection of our own to a message bus."""
    return Gio.DBusConnection.new_for_address_sync(
        address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
        | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)


class WaylandSession(Session):
    """A compositor in place of display and window manager. A subclass starts it and works its
    keyboard. Programs run through Xwayland unless they choose otherwise."""

    DESKTOP = None  # As XDG_CURRENT_DESKTOP has it.

    def __init__(self, folder, size=(1280, 800), sound=False):
        super().__init__(folder, wm=None, sound=sound)
        self.size = size
        self.env.update(XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP=self.DESKTOP,
                        QT_QUICK_BACKEND="software")
        self.env.pop("GSETTINGS_BACKEND", None)

    def __enter__(self):
        self._started = time.time()
        try:
            keep_x_sockets_apart()
            self._prepare()
            if self._sound:
                self._start_sound()
            self._start_bus()
            self._start_compositor()
            self.enable_accessibility()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        ours = {str(service.pid) for service in self._services}
        super().__exit__()
        self._unlock_displays(ours)

    def _unlock_displays(self, processes):
        """A compositor that is ended hard leaves its displays locked, and one of those that come
        after it, whose processes have the same numbers, finds none free some day."""
        for lock in glob.glob("/tmp/.X*-lock"):
            with contextlib.suppress(OSError), open(lock, encoding="ascii") as f:
                if f.read().strip() in processes and os.path.getmtime(lock) >= self._started - 1:
                    os.unlink(lock)

    def _prepare(self):
        """What comes before the session bus."""

    def _start_compositor(self):
        raise NotImplementedError

    def send_key(self, code, down):
        """Presses or releases the key with a kernel code."""
        raise NotImplementedError

    def picture(self, path):
        """Writes what the screen shows to a PNG file."""
        raise NotImplementedError

    def tell_activated_programs(self, *names):
        """Programs that the bus starts get these variables too."""
        self.run(["dbus-update-activation-environment", *names])

    def wait_for_socket(self, name, seconds=30):
        path = os.path.join(self.env["XDG_RUNTIME_DIR"], name)
        wait_until(lambda: os.path.exists(path), seconds, name)

    def owner(self, name):
        """The process on the session bus that owns a name, or None."""
        answer = self.run(["dbus-send", "--session", "--print-reply=literal",
                           "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus.GetConnectionUnixProcessID", "string:" + name],
                          check=False, stderr=subprocess.DEVNULL)
        return int(answer.split()[-1]) if answer else None


class WaylandDesktop(Desktop):
    """Keys go through the compositor. What the last test's programs said is gone."""

    def __init__(self, session):
        super().__init__(session)
        for name in ("tavin.log", "again.log"):
            with contextlib.suppress(FileNotFoundError):
                os.unlink(os.path.join(session.folder, name))

    PACE = 0  # The seconds between two chords.

    def key(self, *chords):
        for chord in chords:
            time.sleep(self.PACE)
            self.press(chord)
            self.release(chord)

    def press(self, chord):
        for code in codes(chord):
            self.session.send_key(code, True)

    def release(self, chord):
        for code in reversed(codes(chord)):
            self.session.send_key(code, False)

