"""A private desktop session on X11: display, session bus, accessibility, window manager, sound.

`Session` starts the servers and builds the environment in which programs reach them and nothing of
the user's own session. Use it as a context manager; leaving it ends what it started.
"""

import contextlib
import os
import select
import shlex
import shutil
import signal
import socket
import subprocess
import sys
import time

from isolation import open_lock_file, try_lock

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.append(os.path.join(HERE, "../../speech/tests"))
from sound_server import start_sound_server  # noqa: E402

WINDOW_MANAGERS = {
    # Without key bindings: openbox's own take Alt+Escape.
    "openbox": ["openbox", "--config-file", os.path.join(HERE, "openbox.xml")],
    "xfwm4": ["xfwm4", "--compositor=off"],
    "mutter": ["mutter", "--x11"],
}
# Of the surrounding session; none of it may reach the programs in this one.
FOREIGN_PREFIXES = ("DBUS_", "XDG_", "PULSE_", "GTK_", "QT_", "AT_SPI", "GNOME_", "LC_", "GIO_")
FOREIGN = {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "NO_AT_BRIDGE", "SESSION_MANAGER",
           "LANGUAGE", "DESKTOP_STARTUP_ID", "ICEAUTHORITY", "SNAP", "FLATPAK_ID"}
FIRST_DISPLAY, LAST_DISPLAY = 640, 999


class SessionError(Exception):
    """The session or a program in it did not come up in time."""


def wait_until(condition, seconds=10.0, what="condition", interval=0.02):
    """Polls `condition` and returns its first true value, or raises SessionError."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise SessionError(f"{what}: not within {seconds} s")
        time.sleep(interval)


def _display_in_use(number):
    for name in (f"/tmp/.X11-unix/X{number}", f"\0/tmp/.X11-unix/X{number}"):
        with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM) as s:
            with contextlib.suppress(OSError):
                s.connect(name)
                return True
    return False


def _claim_display():
    """A display number of our own and the lock that keeps it. X's lock files hold process numbers,
    which mean nothing across process namespaces, so they cannot keep two servers apart."""
    with contextlib.suppress(FileExistsError):
        os.mkdir("/tmp/.X11-unix")
        os.chmod("/tmp/.X11-unix", 0o1777)
    for number in range(FIRST_DISPLAY, LAST_DISPLAY):
        lock = open_lock_file(f"/tmp/tavin-display-{number}.lock")
        stale = (f"/tmp/.X{number}-lock", f"/tmp/.X11-unix/X{number}")
        if try_lock(lock) and not _display_in_use(number):
            for path in stale:
                with contextlib.suppress(OSError):
                    os.unlink(path)
            if not any(map(os.path.exists, stale)):
                return number, lock
        os.close(lock)
    raise SessionError("no free display number")


class Programs:
    """Starts programs in the session that `env` describes; their output goes to `folder`."""

    def __init__(self, folder, env):
        self.folder, self.env = folder, env

    def spawn(self, command, log=None, **kwargs):
        """Starts a program in the session, its output in `folder`/`log`. The caller ends it."""
        name = log or os.path.basename(command[0]) + ".log"
        with open(os.path.join(self.folder, name), "ab") as output:
            kwargs = {"stdin": subprocess.DEVNULL, "stdout": output, "stderr": output,
                      "env": self.env, **kwargs}
            return subprocess.Popen(command, **kwargs)

    def run(self, command, seconds=10.0, **kwargs):
        """Runs a short program in the session and returns what it printed."""
        kwargs = {"check": True, "text": True, "env": self.env, "stdin": subprocess.DEVNULL,
                  **kwargs}
        if "stdout" not in kwargs:
            kwargs["stdout"] = subprocess.PIPE
        return subprocess.run(command, timeout=seconds, **kwargs).stdout

    def log(self, name):
        """What a program wrote to its log so far."""
        with contextlib.suppress(FileNotFoundError):
            with open(os.path.join(self.folder, name), encoding="utf-8", errors="replace") as f:
                return f.read()
        return ""


class Session(Programs):
    """`folder` must exist and is the caller's to remove. `wm` is a name from WINDOW_MANAGERS, any
    other command line, or None."""

    def __init__(self, folder, wm="openbox", bus=True, a11y=True, sound=False,
                 screen="1600x1200x24"):
        super().__init__(folder, self._environment(folder))
        self._wm, self._bus, self._a11y, self._sound, self._screen = wm, bus, a11y, sound, screen
        self._services = []
        self._display_lock = None

    @staticmethod
    def _environment(folder):
        env = {k: v for k, v in os.environ.items()
               if k not in FOREIGN and not k.startswith(FOREIGN_PREFIXES)}
        folders = {"HOME": "home", "TMPDIR": "tmp", "XDG_RUNTIME_DIR": "run",
                   "XDG_CONFIG_HOME": "home/.config", "XDG_CACHE_HOME": "home/.cache",
                   "XDG_DATA_HOME": "home/.local/share", "XDG_STATE_HOME": "home/.local/state"}
        for variable, name in folders.items():
            env[variable] = os.path.join(folder, name)
            os.makedirs(env[variable], mode=0o700, exist_ok=True)
        nowhere = "unix:path=" + os.path.join(folder, "no-bus")
        env.update(LANG="C.UTF-8", GDK_BACKEND="x11", QT_QPA_PLATFORM="xcb",
                   XDG_SESSION_TYPE="x11", LIBGL_ALWAYS_SOFTWARE="1", GSETTINGS_BACKEND="memory",
                   DBUS_SESSION_BUS_ADDRESS=nowhere, DBUS_SYSTEM_BUS_ADDRESS=nowhere)
        os.makedirs(os.path.join(env["XDG_CONFIG_HOME"], "pulse"), exist_ok=True)
        with open(os.path.join(env["XDG_CONFIG_HOME"], "pulse/client.conf"), "w") as f:
            f.write("autospawn = no\n")
        return env

    def __enter__(self):
        try:
            self._start_display()
            if self._bus:
                self._start_bus()
            if self._bus and self._a11y:
                self.enable_accessibility()
            if self._wm:
                self._start_window_manager()
            if self._sound:
                self._start_sound()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for service in reversed(self._services):
            service.terminate()
        for service in reversed(self._services):
            stop(service)
        self._services.clear()
        if self._display_lock is not None:
            os.close(self._display_lock)
            self._display_lock = None

    def end_display(self):
        """As when the user logs out: every program's connection to the display breaks."""
        stop(self._services[0])

    @contextlib.contextmanager
    def display_hangs(self):
        """The display takes connections and says nothing, as long as this lasts."""
        self._services[0].send_signal(signal.SIGSTOP)
        try:
            yield
        finally:
            self._services[0].send_signal(signal.SIGCONT)

    def _start_service(self, command, **kwargs):
        service = self.spawn(command, **kwargs)
        self._services.append(service)
        return service

    def _start_with_answer(self, command, *options, seconds=20.0):
        """Starts a server that writes a line to the descriptor in `options` once it serves."""
        reader, writer = os.pipe()
        try:
            self._start_service([*command, *(o.format(writer) for o in options)],
                                pass_fds=[writer])
            answer = b""

            def line():
                nonlocal answer
                if _readable(reader):
                    answer += os.read(reader, 4096)
                return b"\n" in answer
            wait_until(line, seconds, command[0])
            return answer.decode().strip()
        finally:
            os.close(writer)
            os.close(reader)

    def _start_display(self):
        number, self._display_lock = _claim_display()
        self._start_with_answer(
            ["Xvfb", f":{number}", "-screen", "0", self._screen, "-nolisten", "tcp", "-noreset",
             "+extension", "XTEST"], "-displayfd", "{}")
        self.env["DISPLAY"] = f":{number}"

    def _start_bus(self):
        # After the display: what the bus activates inherits the bus's environment.
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self._start_with_answer(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile",
             "--address=unix:path=" + os.path.join(self.folder, "run/bus")], "--print-address={}")

    def enable_accessibility(self, enabled=True):
        """Starts the accessibility bus where it does not run, and tells programs to use it."""
        call = ["dbus-send", "--session", "--print-reply", "--reply-timeout=10000",
                "--dest=org.a11y.Bus", "/org/a11y/bus"]
        self.run([*call, "org.a11y.Bus.GetAddress"], seconds=15)
        self.run([*call, "org.freedesktop.DBus.Properties.Set", "string:org.a11y.Status",
                  "string:IsEnabled", f"variant:boolean:{str(enabled).lower()}"], seconds=15)

    def _start_window_manager(self):
        command = WINDOW_MANAGERS.get(self._wm) or shlex.split(self._wm)
        if not shutil.which(command[0]):
            raise SessionError(f"window manager {command[0]} is not installed")
        self._start_service(command)

        def managed():
            out = self.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"])
            return "window id" in out
        wait_until(managed, 20, command[0])
        # It may announce itself before it holds its keys, and lose a window that comes meanwhile.
        wait_until(self._shows_windows, 30, f"a window under {command[0]}")

    def _shows_windows(self):
        name = "first window"
        window = self.spawn(["xev", "-name", name, "-event", "button"], stdout=subprocess.DEVNULL)
        with contextlib.suppress(SessionError):
            try:
                return wait_until(lambda: self.run(
                    ["xdotool", "search", "--onlyvisible", "--name", name], check=False), 1)
            finally:
                stop(window)
        return False

    def picture(self, path):
        """Writes what the screen shows to a PNG file."""
        self.run(["scrot", "-o", path])

    def _start_sound(self):
        folder = os.path.join(self.folder, "sound")
        os.mkdir(folder)
        try:
            server = start_sound_server(folder, "tavin", 48000)
        except AssertionError as error:
            raise SessionError(error) from None
        self._services += server.processes
        self.env["PULSE_SERVER"] = server.address


def _readable(fd):
    return bool(select.select([fd], [], [], 0.02)[0])


def stop(process, seconds=3.0):
    """Ends a program that we started, politely first, and returns its exit code."""
    if process.poll() is None:
        process.terminate()
    try:
        return process.wait(seconds)
    except subprocess.TimeoutExpired:
        process.kill()
        return process.wait()
