"""A private session under KWin, without a screen: its own bus, home and Xwayland."""

import contextlib
import os
import shutil
import subprocess
import threading
from typing import NamedTuple

import gi

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf, Gio, GLib  # noqa: E402
from session import SessionError, _readable, stop, wait_until  # noqa: E402
from wayland_session import WaylandSession, connect  # noqa: E402

SOCKET = "wayland-tavin"
TAVIN_ENTRY = "app.tavin.Tavin.desktop"


class Window(NamedTuple):
    """`box` is where it stands: x, y, width, height; `program` its application's name."""
    uuid: str
    pid: int
    active: bool
    box: tuple
    program: str
    title: str


class KwinSession(WaylandSession):
    """`build` is the build tree with Tavin and with the program that works the keyboard. With
    `native`, programs speak Wayland. As for every user, KWin looks for a desktop file before it lets
    a program type or see the windows; Tavin's is there unless `linked` is off. `layout` is the
    keyboard's and its variant, `scale` the screen's. Without `frames`, what a program shows begins where
    its window begins."""

    DESKTOP = "KDE"

    def __init__(self, folder, build, native=False, linked=True, layout=None, scale=1,
                 frames=False, **kwargs):
        super().__init__(folder, **kwargs)
        self._scale, self._frames = scale, frames
        self._layout = layout
        self._linked_entry = linked and os.path.join(build, "share/applications", TAVIN_ENTRY)
        if native:
            self.env.update(GDK_BACKEND="wayland", QT_QPA_PLATFORM="wayland",
                            MOZ_ENABLE_WAYLAND="1")
        if native and not frames:
            self.env["QT_WAYLAND_DISABLE_WINDOWDECORATION"] = "1"
        self.programs = os.path.join(build, "bin")
        self._input_program = os.path.join(self.programs, "fake_input")
        self._input = None
        self.compositor = None
        self.env.update(KDE_FULL_SESSION="true", KWIN_COMPOSE="O2",
                        KWIN_SCREENSHOT_NO_PERMISSION_CHECKS="1")

    def __exit__(self, *_):
        if self._input:
            stop(self._input)
            self._input = None
        super().__exit__()

    def _prepare(self):
        # The installed file asks for a capability that a container may not give, and then it
        # does not start at all; a copy asks for none.
        self._program = os.path.join(self.folder, "kwin_wayland")
        source = shutil.which("kwin_wayland")
        if not source:
            raise SessionError("kwin_wayland is not installed")
        shutil.copyfile(source, self._program)
        os.chmod(self._program, 0o755)
        version = self.run([self._program, "--version"]).split()[-1]
        self.env["KDE_SESSION_VERSION"] = version.split(".", maxsplit=1)[0]
        if self.env["KDE_SESSION_VERSION"] == "6":
            self.env["XDG_MENU_PREFIX"] = "plasma-"  # Else no desktop file is found.
        self._display_file = os.path.join(self.folder, "display")
        self._tell_display = os.path.join(self.folder, "tell-display")
        with open(self._tell_display, "w", encoding="utf-8") as f:
            f.write(f'#!/bin/sh\necho "$DISPLAY" >{self._display_file}.new\n'
                    f"mv {self._display_file}.new {self._display_file}\n")
        os.chmod(self._tell_display, 0o755)
        if not self._frames:
            self._configure("kwinrc", "org.kde.kdecoration2", NoPlugin="true")
        # Drawn by the processor, animations take its time for as long as they last.
        self._configure("kdeglobals", "KDE", AnimationDurationFactor="0")
        if self._layout:
            layout, variant = self._layout
            self._configure("kxkbrc", "Layout", Use="true", LayoutList=layout, VariantList=variant)
        self._allow_programs()

    def _configure(self, name, group, **values):
        with open(os.path.join(self.env["XDG_CONFIG_HOME"], name), "w", encoding="utf-8") as f:
            f.write(f"[{group}]\n" + "".join(f"{key}={value}\n" for key, value in values.items()))

    def _allow_programs(self):
        """What tests work the desktop with has what an installed program of KDE's has."""
        folder = os.path.join(self.env["XDG_DATA_HOME"], "applications")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, "fake_input.desktop"), "w", encoding="utf-8") as f:
            f.write("[Desktop Entry]\nType=Application\nName=fake_input\n"
                    f"Exec={self._input_program}\n"
                    "X-KDE-Wayland-Interfaces=org_kde_kwin_fake_input,"
                    "org_kde_plasma_window_management\n")
        if self._linked_entry:
            os.symlink(self._linked_entry, os.path.join(folder, TAVIN_ENTRY))

    def _start_compositor(self):
        self.env["WAYLAND_DISPLAY"] = SOCKET
        self.tell_activated_programs("WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE",
                                     "KDE_FULL_SESSION", "KDE_SESSION_VERSION")
        self.start_kwin()
        self.env["DISPLAY"] = wait_until(self._x_display, 30, "Xwayland")

    def start_kwin(self):
        env = {k: v for k, v in self.env.items() if k not in ("DISPLAY", "QT_QPA_PLATFORM")}
        del env["WAYLAND_DISPLAY"]
        width, height = self.size
        files = self._files_to_inherit()
        options = [word for file in files for word in ("--wayland-fd", str(file))]
        self.compositor = self._start_service(
            [self._program, "--virtual", "--no-lockscreen", "--xwayland", "--socket", SOCKET,
             *options, "--width", str(width), "--height", str(height), "--scale", str(self._scale),
             self._tell_display],
            env=env, pass_fds=files)
        self.wait_for_socket(SOCKET)
        wait_until(lambda: self.owner("org.kde.kglobalaccel") == self.compositor.pid, 30,
                   "KWin's shortcuts")
        self._open_input()

    def _files_to_inherit(self):
        """The listening socket, where KWin does not make its own."""
        return []

    def kill_kwin(self):
        self.compositor.kill()
        self.compositor.wait()
        self._services.remove(self.compositor)

    def start_other_display(self):
        """An X display for programs that shall outlive KWin."""
        self._start_display()

    def write_shortcut(self, program, action, key):
        """The one shortcut that KWin finds stored at its next start."""
        path = os.path.join(self.env["XDG_CONFIG_HOME"], "kglobalshortcutsrc")
        with open(path, "w", encoding="utf-8") as f:
            f.write(f"[{program}]\n_k_friendly_name={program}\n{action}={key},none,{action}\n")

    def _x_display(self):
        """KWin tells its own programs alone which display it has taken; the server itself may not
        run before the first of them needs it."""
        with contextlib.suppress(FileNotFoundError), open(self._display_file,
                                                          encoding="utf-8") as f:
            return f.read().strip()
        return None

    def _open_input(self):
        """One for the session: a keyboard that comes and goes takes the focus along."""
        if self._input:
            stop(self._input)
        self._input = self.spawn([self._input_program], stdin=subprocess.PIPE,
                                 stdout=subprocess.PIPE)
        self._await_input("its start")

    def _await_input(self, what):
        answer = self._input.stdout
        wait_until(lambda: _readable(answer), 10, f"keyboard: {what}")
        lines = []
        for line in iter(answer.readline, b"ok\n"):
            if not line:
                raise SessionError(f"keyboard: {what}: {self.log('fake_input.log')}")
            lines.append(line.decode().rstrip("\n"))
        return lines

    def picture(self, path):
        """Writes what the screen shows to a PNG file."""
        in_its_points = {"native-resolution": GLib.Variant("b", True)}
        shape, pixels = self._capture("CaptureWorkspace",
                                      GLib.Variant("(a{sv}h)", (in_its_points, 0)))
        pixels[0::4], pixels[2::4] = pixels[2::4], pixels[0::4]  # From blue first to red first.
        GdkPixbuf.Pixbuf.new_from_bytes(
            GLib.Bytes.new(pixels), GdkPixbuf.Colorspace.RGB, True, 8, shape["width"],
            shape["height"], shape["stride"]).savev(path, "png", [], [])

    def pixels(self, x, y, width, height):
        """What is to be seen there: rows of four bytes for each pixel."""
        shape, pixels = self._capture("CaptureArea", GLib.Variant(
            "(iiuua{sv}h)", (x, y, width, height, {}, 0)))
        row = shape["stride"]
        return [bytes(pixels[n * row:n * row + 4 * width]) for n in range(height)]

    def _capture(self, method, arguments):
        reader, writer = os.pipe()
        pixels = bytearray()
        pump = threading.Thread(target=_read_all, args=(reader, pixels), daemon=True)
        pump.start()
        bus = connect(self.env["DBUS_SESSION_BUS_ADDRESS"])
        end = Gio.UnixFDList.new_from_array([writer])  # Which closes it with itself.
        answer, _ = bus.call_with_unix_fd_list_sync(
            "org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2", method,
            arguments, None, 0, 10000, end, None)
        del end
        pump.join(20)
        return answer.unpack()[0], pixels

    def _ask_input(self, line):
        self._input.stdin.write(line.encode() + b"\n")
        self._input.stdin.flush()
        return self._await_input(line)

    def use_layout(self, number):
        """Of several, which KWin counts from 0."""
        bus = connect(self.env["DBUS_SESSION_BUS_ADDRESS"])

        def layouts(method, arguments=None):
            return bus.call_sync("org.kde.keyboard", "/Layouts", "org.kde.KeyboardLayouts", method,
                                 arguments, None, Gio.DBusCallFlags.NONE, 10000, None).unpack()[0]
        assert layouts("setLayout", GLib.Variant("(u)", (number,)))
        assert layouts("getLayout") == number

    def send_key(self, code, down):
        self._ask_input(f"key {code} {int(down)}")

    def move(self, x, y):
        self._ask_input(f"move {round(x)} {round(y)}")

    def button(self, code, down):
        self._ask_input(f"button {code} {int(down)}")

    def windows(self):
        """All windows, as KWin tells them to a taskbar."""
        found = []
        for line in self._ask_input("windows"):
            numbers, program, title = line.split("\t", 2)
            uuid, pid, active, *box = numbers.split(" ")
            found.append(Window(uuid, int(pid), active == "1", tuple(map(int, box)), program,
                                title))
        return found

    def activate(self, uuid):
        self._ask_input(f"activate {uuid}")


def _read_all(reader, into):
    with open(reader, "rb") as f:
        into += f.read()


class GlobalAccel:
    """KWin's shortcuts as another program sees and takes them."""

    NAME, PATH, INTERFACE = "org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel"
    ESCAPE, SHIFT, CONTROL, ALT = 0x01000000, 0x02000000, 0x04000000, 0x08000000
    SET_PRESENT, NO_AUTOLOADING = 2, 4

    def __init__(self, session):
        self._bus = connect(session.env["DBUS_SESSION_BUS_ADDRESS"])

    def _call(self, method, arguments, path=PATH, interface=INTERFACE):
        return self._bus.call_sync(self.NAME, path, interface, method, arguments, None,
                                   Gio.DBusCallFlags.NONE, 10000, None).unpack()

    def action_at(self, key):
        """The program and the action that hold a key, or None."""
        found = self._call("action", GLib.Variant("(i)", (key,)))[0]
        return tuple(found[:2]) if found else None

    def take(self, program, action, key):
        """Returns the key that was given, 0 where none was."""
        self._call("doRegister", GLib.Variant("(as)", ([program, action, program, action],)))
        return self._call("setShortcut", GLib.Variant(
            "(asaiu)", ([program, action, program, action], [key],
                        self.SET_PRESENT | self.NO_AUTOLOADING)))[0][0]

    def give_back(self, program, action):
        self._call("unregister", GLib.Variant("(ss)", (program, action)))

    def actions(self, program):
        """The names of the actions that a program has registered."""
        path = "/component/" + "".join(c if c.isalnum() else "_" for c in program)
        if path not in self._call("allComponents", None)[0]:
            return []
        return self._call("shortcutNames", None, path, "org.kde.kglobalaccel.Component")[0]
