"""A private session under GNOME Shell, without a screen: its own buses, home and Xwayland."""

import contextlib
import glob
import os

from gi.repository import Gio, GLib
from session import stop, wait_until
from wayland_session import WaylandSession, connect

SOCKET = "wayland-tavin"
MEDIA_KEYS = "/usr/libexec/gsd-media-keys"
SYSTEM_BUS = """<busconfig><type>system</type><listen>unix:path={}</listen>
<auth>EXTERNAL</auth><policy context="default"><allow send_destination="*" eavesdrop="true"/>
<allow eavesdrop="true"/><allow own="*"/></policy></busconfig>"""
INPUT, INPUT_PATH = "org.gnome.Mutter.RemoteDesktop", "/org/gnome/Mutter/RemoteDesktop"


class GnomeSession(WaylandSession):
    """The shell asks logind who is logged in: a system bus of its own has one that says it is us."""

    DESKTOP = "GNOME"

    def __init__(self, folder, **kwargs):
        super().__init__(folder, **kwargs)
        self.env.update(XDG_SESSION_DESKTOP="gnome", GNOME_SHELL_SESSION_MODE="user")
        self.bus = None
        self.media_keys = None
        self._input = None

    def _prepare(self):
        path = os.path.join(self.folder, "system-bus.conf")
        with open(path, "w", encoding="utf-8") as f:
            f.write(SYSTEM_BUS.format(os.path.join(self.folder, "run/system-bus")))
        self.env["DBUS_SYSTEM_BUS_ADDRESS"] = self._start_with_answer(
            ["dbus-daemon", "--nofork", "--nopidfile", "--config-file=" + path],
            "--print-address={}")
        self._start_service(["/usr/bin/python3", "-m", "dbusmock", "--system", "--template",
                             "logind"], log="logind.log")
        system = connect(self.env["DBUS_SYSTEM_BUS_ADDRESS"])
        wait_until(lambda: has_owner(system, "org.freedesktop.login1"), 20, "logind")
        system.close_sync(None)

    def _start_compositor(self):
        self.env["WAYLAND_DISPLAY"] = SOCKET
        self.tell_activated_programs("--all")
        # The portal's dialogs are shown before there is an X display.
        self.tell_activated_programs("GDK_BACKEND=wayland")
        self.set("org.gnome.shell", "welcome-dialog-last-shown-version", "99")
        # Drawn by the processor, they take its time for as long as they last.
        self.set("org.gnome.desktop.interface", "enable-animations", "false")
        width, height = self.size
        env = {k: v for k, v in self.env.items()
               if k not in ("DISPLAY", "WAYLAND_DISPLAY", "GDK_BACKEND", "QT_QPA_PLATFORM")}
        self._start_service(
            ["gnome-shell", "--headless", "--wayland", "--wayland-display", SOCKET, "--unsafe-mode",
             "--virtual-monitor", f"{width}x{height}"], env=env)
        self.wait_for_socket(SOCKET)
        self.bus = connect(self.env["DBUS_SESSION_BUS_ADDRESS"])
        wait_until(lambda: has_owner(self.bus, "org.gnome.Shell"), 30, "the shell")
        wait_until(lambda: has_owner(self.bus, INPUT), 30, "the shell's input")
        self._open_input()
        wait_until(self._has_started, 30, "the end of the shell's start")
        self.evaluate("Main.overview.hide()")
        wait_until(lambda: self.evaluate("Main.overview.visible") == "false", 10, "the desktop")
        self.env["DISPLAY"] = self.evaluate("imports.gi.GLib.getenv('DISPLAY')").strip('"')
        self.env["XAUTHORITY"] = glob.glob(
            os.path.join(self.env["XDG_RUNTIME_DIR"], ".mutter-Xwaylandauth.*"))[0]
        self.tell_activated_programs("DISPLAY", "XAUTHORITY")
        self.start_media_keys()

    def _has_started(self):
        with contextlib.suppress(GLib.Error):  # Its name comes before what it serves.
            return self.evaluate("Main.layoutManager._startingUp") == "false"
        return False

    def start_media_keys(self):
        self.media_keys = self._start_service([MEDIA_KEYS], env={
            k: v for k, v in self.env.items() if k != "GDK_BACKEND"})
        wait_until(lambda: has_owner(self.bus, "org.gnome.SettingsDaemon.MediaKeys"), 20,
                   "the media keys")

    def start_server_for_x(self):
        """A display beside Xwayland's: its server and its name."""
        number = self._start_with_answer(["Xvfb", "-nolisten", "tcp", "-noreset"],
                                         "-displayfd", "{}")
        return self._services[-1], f":{number}"

    def stop_media_keys(self):
        stop(self.media_keys)
        self._services.remove(self.media_keys)

    def call(self, name, path, interface, method, arguments=None):
        return self.bus.call_sync(name, path, interface, method, arguments, None,
                                  Gio.DBusCallFlags.NO_AUTO_START, 10000, None).unpack()

    def evaluate(self, script):
        """What a script gives inside the shell, as JSON."""
        done, result = self.call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell", "Eval",
                                 GLib.Variant("(s)", (script,)))
        return result if done else ""

    def picture(self, path):
        """Writes what the screen shows to a PNG file."""
        shell = "org.gnome.Shell.Screenshot"
        self.call(shell, "/org/gnome/Shell/Screenshot", shell, "Screenshot",
                  GLib.Variant("(bbs)", (True, False, path)))

    def _open_input(self):
        """One for the session: a keyboard that comes and goes takes the focus along."""
        self._input = self.call(INPUT, INPUT_PATH, INPUT, "CreateSession")[0]
        self.call(INPUT, self._input, INPUT + ".Session", "Start")

    def send_key(self, code, down):
        self.call(INPUT, self._input, INPUT + ".Session", "NotifyKeyboardKeycode",
                  GLib.Variant("(ub)", (code, down)))

    def get(self, schema, key):
        return self.run(["gsettings", "get", schema, key]).strip()

    def set(self, schema, key, value):
        self.run(["gsettings", "set", schema, key, value])


def has_owner(bus, name):
    return bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                         "NameHasOwner", GLib.Variant("(s)", (name,)), None, 0, 5000,
                         None).unpack()[0]
