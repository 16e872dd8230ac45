"""What a soak kills and stops: all that Tavin reads from, speaks through or shows itself in."""

import contextlib
import os
import signal
import subprocess

from own_engine import engines, listening
from panel import start_xfce4_panel
from session import stop, wait_until

ENGINE, WORKER, PLAYER = "tavin.server", "tavin.synthesis.worker", "tavin.sound.player"
# Runs only while it shows something.
WINDOWS = "windows' program"
# A session whose own bus has gone is over.
NEVER_KILLED = ("session bus",)
# An engine that ended five times is not started again.
MOST_ENGINE_KILLS = 4


def arguments_of(pid):
    with contextlib.suppress(OSError), open(f"/proc/{pid}/cmdline", encoding="utf-8", errors="replace") as f:
        return f.read().split("\0")
    return []


def engine_processes(session, module):
    return [pid for pid in engines(session) if module in arguments_of(pid)]


def processes(session, is_wanted):
    """Those of the session that are."""
    home = f"HOME={session.env['HOME']}".encode()
    found = []
    for pid in map(int, filter(str.isdigit, os.listdir("/proc"))):
        with contextlib.suppress(OSError), open(f"/proc/{pid}/environ", "rb") as f:
            if is_wanted(pid) and home in f.read().split(b"\0"):
                found.append(pid)
    return found


def processes_with(session, *words):
    """Whose command lines hold all of these."""
    return processes(session, lambda pid: all(word in " ".join(arguments_of(pid)) for word in words))


def window_programs(session):
    """By their executable, which Tavin starts by a descriptor."""
    return processes(session, lambda pid: os.path.basename(os.readlink(f"/proc/{pid}/exe")) == "tavin-windows")


class Victims:
    """`sound` is the session's sound server, `fields` the programs that texts are selected in."""

    def __init__(self, session, desktop, sound, fields):
        self._session, self._desktop, self._sound, self._fields = session, desktop, sound, fields
        self._panel = start_xfce4_panel(desktop)
        self._engine_kills = 0
        self._stopped, self._killed = [], []
        self._find = {
            "engine": lambda: engine_processes(session, ENGINE),
            "worker": lambda: engine_processes(session, WORKER),
            "player": lambda: engine_processes(session, PLAYER),
            "sound server": lambda: [process.pid for process in sound.processes],
            "panel": lambda: [self._panel.pid],
            "session bus": lambda: processes_with(session, "dbus-daemon", "--session"),
            "accessibility bus": lambda: processes_with(session, "dbus-daemon", "accessibility.conf"),
            "selected program": lambda: [fields.front.pid],
            WINDOWS: lambda: window_programs(session),
        }

    def new_tavin(self):
        self._engine_kills = 0

    def choose(self, chance):
        """A victim, and what happens to it."""
        name = chance.choice(list(self._find))
        stops = name in NEVER_KILLED or chance.random() < 0.5
        if not stops and name == "engine":
            self._engine_kills += 1
            stops = self._engine_kills > MOST_ENGINE_KILLS
        return name, signal.SIGSTOP if stops else signal.SIGKILL

    def strike(self, name, number):
        for pid in self._find[name]():
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, number)
                (self._stopped if number == signal.SIGSTOP else self._killed).append((name, pid))

    def revive(self):
        """Those that were stopped go on, and what does not come back by itself is started again."""
        for _, pid in self._stopped:
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, signal.SIGCONT)
        killed = {name for name, _ in self._killed}
        self._stopped, self._killed = [], []
        if "sound server" in killed:
            self._sound.end()
            self._sound.start()
        if "panel" in killed:
            stop(self._panel)
            self._panel = start_xfce4_panel(self._desktop)
        if "accessibility bus" in killed:
            # Programs do not look for another one.
            wait_until(self._enable_accessibility, 30, "another accessibility bus")
            self._fields.start_again()
        elif "selected program" in killed:
            self._fields.start_again()
        wait_until(listening, 60, "the engine's port")

    def _enable_accessibility(self):
        """Not while the service of the one before is on its way out."""
        with contextlib.suppress(subprocess.SubprocessError):
            self._session.enable_accessibility()
            return True
        return False
