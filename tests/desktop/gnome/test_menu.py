"""The menu: under its icon where GNOME has the extension for that, and as a window where not."""

import contextlib
import os

import pytest
from accessible import Tree
from gi.repository import GLib
from gnome_desktop import PLACE
from photographs import of_window, once_drawn
from pixels import on_screen
from session import SessionError, wait_until

TEXT = "read from the menu"
EXTENSION = "ubuntu-appindicators@ubuntu.com"
ICON = """Object.entries(Main.panel.statusArea)
    .filter(([name, _]) => name.startsWith('appindicator')).map(([_, icon]) => icon)"""
SEPARATORS = ICON + """[0].menu._getMenuItems()
    .filter(i => i.constructor.name === 'PopupSeparatorMenuItem' && i.mapped && i.height > 0)"""
LINES = ICON + """[0].menu._getMenuItems().filter(i => i.visible && i.label?.text)"""


@pytest.fixture(scope="module")
def session(start_session):
    with start_session(extensions=[EXTENSION]) as private:
        # A busy shell takes a tapped key for one that is held.
        private.set("org.gnome.desktop.peripherals.keyboard", "repeat", "false")
        yield private


@pytest.fixture
def field(desktop, programs):
    window = desktop.open(["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), TEXT],
                          "GTK 4 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


class Icon:
    def __init__(self, desktop):
        self._desktop = desktop
        wait_until(lambda: self._desktop.look(f"{ICON}.length") == 1, 15, "the icon")

    def open(self):
        def is_open():
            # The icon stands in the bar a moment before it takes clicks.
            if not self._desktop.look(ICON + "[0].menu.isOpen"):
                self._desktop.click_actor(ICON + "[0]")
            with contextlib.suppress(SessionError):
                return wait_until(lambda: self._desktop.look(ICON + "[0].menu.isOpen") and self.titles(), 3)
            return False
        wait_until(is_open, 20, "the menu")

    def titles(self):
        return self._desktop.look(LINES + ".map(i => i.label.text)")

    def separators(self):
        """Those that are drawn: between which lines they stand."""
        return self._desktop.look(SEPARATORS + """.map(s => {
            const box = s.get_parent().get_children().filter(c => c.visible);
            const at = box.indexOf(s);
            return [at - 1, at + 1].map(n => box[n]?._delegate?.label?.text ?? box[n]?.label?.text);
        })""")

    def picture(self):
        """Once all of it is drawn: it grows while lines are put into it."""
        return once_drawn(lambda: on_screen(self._desktop, *wait_until(self._place, 5, "the menu's place")))

    def _place(self):
        place = self._desktop.look(PLACE.format(ICON + "[0].menu.box"))
        return None if None in place else [round(part) for part in place]  # it is not laid out yet

    def choose(self, title):
        self._desktop.click_actor(f"{LINES}.find(i => i.label.text.startsWith('{title}'))")


def test_the_icons_menu_has_its_lines(tavin, desktop):
    icon = Icon(desktop)
    icon.open()
    # The extension puts line after line into the menu that is open already.
    wait_until(lambda: icon.titles()[0].startswith("Speak Selection"), 10, "the first line")
    titles = icon.titles()
    assert titles[-1] == "Quit Tavin"
    assert "Engine: eSpeak NG" in titles
    desktop.key("Escape")


def test_three_lines_are_drawn_between_the_parts(tavin, desktop):
    """The shell decides which separators it draws, hidden ones too, when it opens a menu that has its lines
    already."""
    icon = Icon(desktop)
    for _ in range(2):
        icon.open()
        wait_until(lambda: icon.titles()[0].startswith("Speak Selection"), 10, "the first line")
        assert icon.picture().rules() == 3, icon.separators()
        desktop.key("Escape")
        # One that is opened again while it fades is hidden by the end of that.
        wait_until(lambda: not desktop.look(ICON + "[0].menu.actor.visible"), 5, "the menu's end")


def test_speak_selection_reads_the_program_before_the_menu(tavin, desktop, engine, field):
    icon = Icon(desktop)
    for _ in range(2):
        icon.open()
        since = engine.mark()
        icon.choose("Speak Selection")
        assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]


def test_an_extension_that_comes_later_shows_the_icon(tavin, desktop, session, field):
    shell = "org.gnome.shell"
    session.set(shell, "enabled-extensions", "[]")
    wait_until(lambda: session.evaluate(f"{ICON}.length") == "0", 15, "no icon")
    assert tavin.press() == [TEXT]
    session.set(shell, "enabled-extensions", f"['{EXTENSION}']")
    Icon(desktop)


def click_line(session, tavin, title):
    """What the extension says when a line is clicked, wherever the line stands."""
    watcher, daemon = "org.kde.StatusNotifierWatcher", "org.freedesktop.DBus"

    def process(name):
        with contextlib.suppress(GLib.Error):  # Items outlive their programs by a moment.
            return session.call(daemon, "/org/freedesktop/DBus", daemon,
                                "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))[0]

    def item():
        found, = session.call(watcher, "/StatusNotifierWatcher", daemon + ".Properties", "Get",
                              GLib.Variant("(ss)", (watcher, "RegisteredStatusNotifierItems")))
        names = [place.split("/")[0].split("@")[0] for place in found]
        return next((name for name in names if process(name) == tavin.process.pid), None)
    name = wait_until(item, 10, "the icon")

    def ask(method, kind, *arguments):
        return session.call(name, "/MenuBar", "com.canonical.dbusmenu", method,
                            GLib.Variant(kind, arguments))
    ask("AboutToShow", "(i)", 0)
    _, (_, _, lines) = ask("GetLayout", "(iias)", 0, -1, [])
    while lines:
        number, properties, below = lines.pop()
        if properties.get("label") == title:
            ask("Event", "(isvu)", number, "clicked", GLib.Variant("s", ""), 0)
            return
        lines += below
    raise AssertionError(f"no line {title}")


def test_the_key_dialog_has_the_keyboard(tavin, desktop, session, engine, field):
    click_line(session, tavin, "ElevenLabs…")
    wait_until(lambda: any(w["focused"] and w["wm_class"] == "app.tavin.Tavin"
                           for w in desktop.all_windows()), 10, "the dialog")
    since = engine.mark()
    desktop.key("k", "e", "y", "Return")
    assert engine.wait_for("/key", since=since) == [{"engine": "elevenlabs", "key": "key"}]
    wait_until(lambda: no_window(desktop), 5, "the dialog's end")
    desktop.focus(field)
    assert tavin.press() == [TEXT]


def show_window(tavin, desktop):
    tavin.call("org.freedesktop.Application", "Activate", GLib.Variant("(a{sv})", ({},)))
    return wait_until(lambda: next((w for w in desktop.all_windows() if w["focused"]
                                    and w["wm_class"] == "app.tavin.Tavin"), None), 10, "the menu")


def no_window(desktop):
    return not any(w["wm_class"] == "app.tavin.Tavin" for w in desktop.all_windows())


@pytest.fixture
def without_icon(session):
    session.set("org.gnome.shell", "enabled-extensions", "[]")
    wait_until(lambda: session.evaluate(f"{ICON}.length") == "0", 15, "no icon")


def test_window_is_small_and_reads_the_program_before_it(without_icon, tavin, desktop, engine,
                                                         field):
    for _ in range(2):
        left, top, width, height = show_window(tavin, desktop)["rect"]
        assert width < 500 and height < 500
        since = engine.mark()
        desktop.key("Down", "Return")
        assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]
        wait_until(lambda: no_window(desktop), 5, "the menu's end")
        wait_until(lambda: desktop.has_keyboard(field), 5, "the program in front")


def test_three_lines_are_drawn_in_the_window(without_icon, tavin, desktop):
    assert of_window(desktop, show_window(tavin, desktop)["id"]).rules() == 3


def test_window_closes_by_key(without_icon, tavin, desktop, field):
    show_window(tavin, desktop)
    desktop.key("Escape")
    wait_until(lambda: no_window(desktop), 5, "the menu's end")


def test_window_closes_when_another_is_clicked(without_icon, tavin, desktop, field):
    show_window(tavin, desktop)
    # A focus that came and went within one answer of the compositor is none to Qt.
    tree = Tree(desktop.session)
    wait_until(lambda: tree.knows_its_focus("tavin"), 10, "a menu with the keyboard")
    desktop.click_at(1200, 700)  # Nobody's.
    desktop.click(field, 400, 200)
    wait_until(lambda: no_window(desktop), 5, "the menu's end")
