"""A new user's first hours with the installed program, as docs/first-minute.md tells them, on the
desktop as it comes: start from the applications menu, select, press, hear; another voice, another
shortcut; log out and in; quit for good, which leaves only what README says to remove."""

import configparser
import contextlib
import os
import shlex
import shutil
import subprocess

import own_engine
import pytest
from gi.repository import Gio, GLib
from gnome_desktop import NativeGnome
from kwin_session import KwinSession
from package import Package
from session import Session, stop, wait_until
from sound import speech_seconds, start_recorder
from sway_session import SwaySession
from trays import STARTERS, Tray
from wayland_session import connect

NAME, ENTRY = "app.tavin.Tavin", "app.tavin.Tavin.desktop"
DESKTOP = os.environ.get("TAVIN_TEST_DESKTOP", "x11")
IS_GNOME = DESKTOP.startswith("gnome")
PACKAGE = os.environ.get("TAVIN_PACKAGE")
TEXT = "Hello! This text stands in an editor.\nTavin reads aloud what you have selected in it."
VOICE = "English (Scotland)"
TAKEN = "⚠︎ ⌥ Esc is taken by the desktop or another program"
IMPOSSIBLE = "⚠︎ ⌥ Esc cannot work on this desktop"
START = {"x11": lambda folder, _: Session(folder, sound=True),
         "sway": lambda folder, build: SwaySession(folder, build, sound=True),
         "kwin": lambda folder, build: KwinSession(folder, build, native=True, linked=False,
                                                   sound=True),
         **dict.fromkeys(("gnome", "gnome-portal"), lambda folder, _: NativeGnome(
             folder, keeps_keys=True, sound=True))}
# Chosen later on. GNOME has shortcuts of its own among the others; on sway what its configuration says
# holds, and the choice is only shown.
SHORTCUTS = {**dict.fromkeys(("gnome", "gnome-portal"), ("⌃ Esc", "ctrl+Escape")), "sway": ("⌃⌥ R", "alt+Escape")}
KEPT = {".config/tavin", ".local/share/tavin", "Library/Logs/Tavin"}
WARNING = {"gnome": TAKEN, "gnome-portal": TAKEN, "sway": IMPOSSIBLE}.get(DESKTOP)


@pytest.fixture(scope="module")
def package(tmp_path_factory):
    """The Debian package, where TAVIN_PACKAGE names it."""
    installed = Package(PACKAGE, str(tmp_path_factory.mktemp("machine"))) if PACKAGE else None
    yield installed
    if installed:
        assert installed.purge() == set()


@pytest.fixture(scope="module")
def prefix(tmp_path_factory, build, package):
    """Where the program is installed: from the package, else from the build."""
    if package:
        return "/usr"
    path = tmp_path_factory.mktemp("installed")
    subprocess.run(["cmake", "--install", build, "--prefix", str(path)], check=True, timeout=60,
                   stdout=subprocess.DEVNULL)
    return str(path)


@pytest.fixture(scope="module")
def session(tmp_path_factory, build, prefix):
    """One that finds what is installed as desktops do, and nothing in the user's home."""
    private = START[DESKTOP](str(tmp_path_factory.mktemp("session")), build)
    private.env["XDG_DATA_DIRS"] = f"{prefix}/share:/usr/local/share:/usr/share"
    private.env["LANG"] = "en_US.UTF-8"
    with private:
        yield private


class Menu:
    """The menu as a panel gets it from the program on the session bus."""

    def __init__(self, session):
        self._bus = connect(session.env["DBUS_SESSION_BUS_ADDRESS"])
        self._session = session

    def _ask(self, method, kind, *arguments):
        return self._call(self._owner(), "/MenuBar", "com.canonical.dbusmenu", method,
                          GLib.Variant(kind, arguments))

    def _call(self, *call):
        return self._bus.call_sync(*call, None, 0, 10000, None).unpack()

    def _owner(self):
        """The connection that the program has for its icon."""
        daemon = "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"
        own = process(self._session)
        for name in self._call(*daemon, "ListNames", None)[0]:
            with contextlib.suppress(GLib.Error):  # It may leave meanwhile.
                if name.startswith(":") and own == self._call(
                        *daemon, "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))[0]:
                    # A connection of GLib's has nothing there, and says even that.
                    found, = self._call(name, "/MenuBar", "org.freedesktop.DBus.Introspectable", "Introspect", None)
                    if "com.canonical.dbusmenu" in found:
                        return name
        raise AssertionError("no menu on the bus")

    def _lines(self):
        self._ask("AboutToShow", "(i)", 0)
        _, (_, _, below) = self._ask("GetLayout", "(iias)", 0, -1, [])
        while below:
            number, properties, children = below.pop(0)
            if properties.get("visible", True):
                yield number, properties
                below = children + below

    def titles(self):
        return [properties.get("label", "") for _, properties in self._lines()]

    def choose(self, title):
        """Once it is there: the list of voices is fetched at the first opening."""
        number = wait_until(lambda: next((number for number, properties in self._lines()
                                          if properties.get("label") == title), None), 15, title)
        self._ask("Event", "(isvu)", number, "clicked", GLib.Variant("s", ""), 0)

    def chosen(self, title):
        return any(properties.get("label") == title and properties.get("toggle-state") == 1
                   for _, properties in self._lines())


@pytest.fixture
def menu(session):
    return Menu(session)


def process(session):
    """Of the program that runs, or None."""
    answer = session.run(["dbus-send", "--session", "--print-reply=literal",
                          "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                          "org.freedesktop.DBus.GetConnectionUnixProcessID", "string:" + NAME],
                         check=False, stderr=subprocess.DEVNULL)
    return int(answer.split()[-1]) if answer else None


def is_started(session, prefix):
    number = wait_until(lambda: process(session), 20, "Tavin on the bus")
    assert os.readlink(f"/proc/{number}/exe") == f"{prefix}/bin/tavin"
    own_engine.wait_for("idle")


def quit_from_the_menu(session, menu):
    try:
        menu.choose("Quit Tavin")
    except GLib.Error as error:  # It may be gone before it has answered.
        assert error.matches(Gio.DBusError.quark(), Gio.DBusError.NO_REPLY), error
    wait_until(lambda: process(session) is None, 10, "Tavin's end")
    wait_until(lambda: own_engine.status() is None, 10, "the engine's end")


def start_from_the_applications_menu(desktop, prefix):
    """GNOME and Plasma ask the bus for the program, which shows its menu then."""
    if not IS_GNOME and DESKTOP != "kwin":
        desktop.start(command(f"{prefix}/share/applications/{ENTRY}"))
        return
    desktop.session.run(["gapplication", "launch", NAME], seconds=30)
    window = wait_until(lambda: desktop.windows(NAME), 20, "the menu")[0]
    wait_until(lambda: desktop.has_keyboard(window), 10, "the menu with the keyboard")

    def is_closed():  # It has the keyboard a moment before it takes keys.
        desktop.key("Escape")
        return not desktop.windows(NAME)
    wait_until(is_closed, 10, "the menu's end", interval=0.5)


def select(desktop):
    path = os.path.join(desktop.session.env["HOME"], "letter.txt")
    with open(path, "w", encoding="utf-8") as f:
        f.write(TEXT)
    desktop.open(["mousepad", "--disable-server", path], "letter.txt")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))


def seconds_heard(desktop, act):
    path = os.path.join(desktop.session.folder, "speech.wav")
    recorder = start_recorder(desktop, path)
    act()
    own_engine.wait_for("speaking")
    own_engine.wait_for("idle", seconds=90)
    stop(recorder)
    return speech_seconds(path)


def autostart(session):
    return os.path.join(session.env["XDG_CONFIG_HOME"], "autostart", ENTRY)


def command(path):
    """What a desktop runs for an entry."""
    parser = configparser.ConfigParser(interpolation=None, strict=False)
    parser.optionxform = str
    parser.read(path, encoding="utf-8")
    return shlex.split(parser["Desktop Entry"]["Exec"])


def press(desktop, chord):
    def act():
        if IS_GNOME:
            wait_until(lambda: has_shortcut(desktop), 10, "the shortcut")
            desktop.wait_for_calm()
        desktop.key(chord)
    return act


def has_shortcut(desktop):
    control, escape = 4, 9
    return desktop.session.evaluate(
        f"global.display.get_keybinding_action({escape}, {control})") not in ("", "0")


def warning(titles):
    return next((title for title in titles if title.startswith("⚠︎")), None)


@pytest.fixture(params=sorted(STARTERS) if DESKTOP == "x11" else [None])
def panel(request, desktop):
    """On X11 that with the icon; the other desktops' have tests of their own."""
    return Tray(desktop, request.param) if request.param else None


def test_the_first_hours_leave_only_what_readme_removes(session, desktop, panel, prefix, menu):
    start_from_the_applications_menu(desktop, prefix)
    is_started(session, prefix)
    if panel:
        panel.wait_for_icon()
    wait_until(lambda: warning(menu.titles()) == WARNING, 10, f"{WARNING} in {menu.titles()}")
    shortcut = "alt+Escape"
    if IS_GNOME:
        shortcut = "ctrl+Escape"
        menu.choose("⌃ Esc")
        if DESKTOP == "gnome-portal":
            desktop.add_shortcuts()
        wait_until(lambda: not warning(menu.titles()), 10, "a menu without a warning")
    select(desktop)
    assert seconds_heard(desktop, press(desktop, shortcut)) > 2

    menu.choose(VOICE)
    wait_until(lambda: menu.chosen(VOICE), 10, "the chosen voice")
    label, shortcut = SHORTCUTS.get(DESKTOP, ("⌃⌥ R", "ctrl+alt+r"))
    menu.choose(label)
    wait_until(lambda: menu.chosen(label), 10, "the chosen shortcut")
    assert seconds_heard(desktop, press(desktop, shortcut)) > 2

    menu.choose("Start at Login")
    wait_until(lambda: os.path.exists(autostart(session)), 10, "the login item")
    quit_from_the_menu(session, menu)
    desktop.start(command(autostart(session)))
    is_started(session, prefix)
    wait_until(lambda: menu.chosen(label) and menu.chosen(VOICE), 15, "what was chosen")
    assert seconds_heard(desktop, press(desktop, shortcut)) > 2

    # As README has it, before the package goes.
    menu.choose("Start at Login")
    wait_until(lambda: not os.path.exists(autostart(session)), 10, "the login item's end")
    quit_from_the_menu(session, menu)
    assert left_behind(session) <= KEPT
    for name in KEPT:
        shutil.rmtree(os.path.join(session.env["HOME"], name), ignore_errors=True)
    assert left_behind(session) == set()


def left_behind(session):
    """What has the program's name in the home, but for what lies within such a folder."""
    home = session.env["HOME"]
    found = set()
    for folder, folders, files in os.walk(home):
        own = [name for name in folders + files if "tavin" in name.lower()]
        found.update(os.path.relpath(os.path.join(folder, name), home) for name in own)
        folders[:] = [name for name in folders if name not in own]
    return found
