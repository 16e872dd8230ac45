"""From the key's press to the request to speak, for each way to a selection."""

import os
import time
from dataclasses import dataclass
from typing import Callable

from gi.repository import Gio
from session import SessionError, stop, wait_until

TEXT = "Two sentences stand in an editor. They are what is read aloud, umlauts included: äöü."
WORD = "Zeichenkettenverarbeitung"
TAVIN_KEYS, PIPE_KEYS = ("Alt_L", "Escape"), ("Alt_L", "F8")
PIPE = ("xsel -o | curl -s -o /dev/null -H 'X-Tavin: 1' --data-binary @- "
        "http://127.0.0.1:47632/speak")
REST = 0.15  # Programs draw what was selected, and the engine's last answers are through.


@dataclass
class Way:
    """A window with `text` selected by `select`. `piped`: the selection can be piped too."""
    name: str
    text: str
    window: str
    select: Callable[[], None]
    piped: bool = True


def start_hotkey_daemon(desktop):
    """The usual way without Tavin: a key bound to a pipe."""
    config = os.path.join(desktop.session.folder, "sxhkdrc")
    with open(config, "w", encoding="utf-8") as f:
        f.write(f"alt + F8\n\t{PIPE}\n")
    env = {**desktop.session.env, "SXHKD_SHELL": "/bin/sh"}
    return desktop.start(["sxhkd", "-c", config], env=env)


def open_programs(desktop, build, programs, count=10):
    """Fills the accessibility bus, beside the ways' own programs, with `count` or more; returns
    how many there are."""
    for number in range(3):
        desktop.start(["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), TEXT])
        desktop.start([os.path.join(build, "bin/qt6_field"), TEXT])
    for number in range(2):
        path = os.path.join(desktop.session.folder, f"other{number}.txt")
        with open(path, "w", encoding="utf-8") as f:
            f.write(TEXT)
        desktop.start(["mousepad", "--disable-server", path])
    # All at rest before the first press: a window that opens late takes the keyboard.
    for title, windows in (("GTK 4 field", 3), ("Qt 6 field", 4), ("other", 2)):
        wait_until(lambda: len(desktop.windows(title)) >= windows, 60, f"windows {title}")
    return wait_until(lambda: _on_the_bus(desktop, count), 60, "programs on the accessibility bus")


def _on_the_bus(desktop, least):
    def connect(address):
        return Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)

    def call(bus, *arguments):
        return bus.call_sync(*arguments, None, None, Gio.DBusCallFlags.NONE, 5000, None).unpack()[0]
    session = connect(desktop.session.env["DBUS_SESSION_BUS_ADDRESS"])
    bus = connect(call(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"))
    try:
        found = call(bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root",
                     "org.a11y.atspi.Accessible", "GetChildren")
    finally:
        bus.close_sync(None)
        session.close_sync(None)
    return len(found) if len(found) >= least else None


def ways(desktop, build):
    folder = desktop.session.folder
    path = os.path.join(folder, "letter.txt")
    with open(path, "w", encoding="utf-8") as f:
        f.write(TEXT)
    editor = desktop.open(["mousepad", "--disable-server", path], "letter.txt")
    xterm = desktop.open(["xterm", "-T", "watched", "-e", "sh", "-c",
                          f"echo {WORD}; exec sleep 10000"], "watched")
    off_the_bus = {**desktop.session.env, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
    toy = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT, "--bare"], "Qt 6 field",
                       env=off_the_bus)
    return [
        Way("accessibility", TEXT, editor,
             lambda: desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))),
        Way("primary", WORD, xterm,
             lambda: desktop.select_until(WORD, lambda: desktop.click(xterm, 30, 12, times=2))),
        Way("copy", TEXT, toy, lambda: None, piped=False),
    ]


def press_tavin(keyboard, engine, text, seconds=10.0):
    """One press; seconds until each of the three requests that it leads to."""
    since = engine.mark()
    begun = keyboard.tap(*TAVIN_KEYS)
    spoken = engine.wait_for("/speak", since=since, seconds=seconds)[0]
    asked = engine.requests("/status", since)
    if spoken.text() != text:
        raise SessionError(f"Tavin asked to speak {spoken.text()[:80]!r}")
    # The watch over the playback asks once more and finds the engine idle.
    engine.wait_for("/status", count=3, since=since)
    return {"speak": spoken.head - begun, "complete": spoken.complete - begun,
            "first status": asked[0].head - begun, "second status": asked[1].head - begun}


def press_pipe(keyboard, engine, text, seconds=10.0):
    since = engine.mark()
    begun = keyboard.tap(*PIPE_KEYS)
    spoken = engine.wait_for("/speak", since=since, seconds=seconds)[0]
    if spoken.body.decode().rstrip("\n") != text.rstrip("\n"):
        raise SessionError(f"the pipe sent {spoken.body[:80]!r}")
    return {"speak": spoken.head - begun, "complete": spoken.complete - begun}


def measure(desktop, keyboard, engine, all_ways, count):
    """`count` presses for each way, one after the other, Tavin and the pipe taking turns in
    being first. Returns {way: {"tavin": [...], "pipe": [...]}}."""
    results = {way.name: {"tavin": [], "pipe": []} for way in all_ways}
    for number in range(count):
        for way in all_ways:
            desktop.focus(way.window)
            way.select()
            turns = [("tavin", press_tavin)] + ([("pipe", press_pipe)] if way.piped else [])
            for name, press in turns if number % 2 else reversed(turns):
                time.sleep(REST)
                try:
                    results[way.name][name].append(press(keyboard, engine, way.text))
                except SessionError as error:
                    raise SessionError(f"{way.name}, {name}, press {number + 1}: {error}; "
                                       f"selected: {desktop.primary()!r}") from None
    return results


def _wait_for_rest(pid, seconds=180.0, calm=3.0):
    """An editor lays out a long text beside its work, and GTK tells accessibility who has the
    focus only once it is through."""
    def cpu_ticks():
        with open(f"/proc/{pid}/stat", encoding="utf-8") as f:
            return sum(int(n) for n in f.read().rpartition(")")[2].split()[11:13])

    def rested():
        before = cpu_ticks()
        time.sleep(calm)
        return cpu_ticks() - before < 3
    wait_until(rested, seconds, "rest of the editor")


def measure_long(desktop, keyboard, engine, megabytes, count):
    """Seconds until a long selection in an editor has come to the engine; a press that brings
    nothing counts as "lost"."""
    line = "A line of the long text, counted among many others of its kind.\n"
    text = line * (megabytes * 1024 * 1024 // len(line))
    path = os.path.join(desktop.session.folder, "long.txt")
    with open(path, "w", encoding="utf-8") as f:
        f.write(text)
    editor = desktop.start(["mousepad", "--disable-server", path])
    window = wait_until(lambda: (desktop.windows("long.txt") or [None])[-1], 60, "the long text")
    desktop.focus(window)
    desktop.select_until(text, lambda: desktop.key("ctrl+a"), seconds=120)
    results = {"tavin": [], "pipe": [], "lost": {"tavin": 0, "pipe": 0}, "bytes": len(text)}
    for _ in range(count):
        for name, press in (("tavin", press_tavin), ("pipe", press_pipe)):
            _wait_for_rest(editor.pid)
            try:
                results[name].append(press(keyboard, engine, text))
            except SessionError:
                results["lost"][name] += 1
    stop(editor)
    return results
