"""What a screen reader is told: the menu that is open, whoever draws it."""

import contextlib
from dataclasses import dataclass, field

from gi.repository import Gio, GLib
from session import SessionError, wait_until

ACCESSIBLE = "org.a11y.atspi.Accessible"
# Of AT-SPI's states.
ACTIVE, CHECKED, EDITABLE, ENABLED, FOCUSED, SHOWING, DEFAULT = 1, 4, 7, 8, 12, 25, 39
PASSWORD_TEXT = 40  # of its roles
REGISTRY_ROOT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")


@dataclass
class Entry:
    """A line of a menu; a separator has no title. `box` is where it stands on the screen."""
    title: str
    enabled: bool = True
    checked: bool = False
    below: list = field(default_factory=list)
    box: tuple = field(default=None, compare=False)


@dataclass
class Thing:
    """A window or something in it."""
    role: str
    name: str
    description: str
    states: set
    node: tuple


def bus_connection(address):
    return Gio.DBusConnection.new_for_address_sync(
        address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
        | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)


def accessibility_address(session):
    """Where the accessibility bus of `session` listens."""
    desktop_bus = bus_connection(session.env["DBUS_SESSION_BUS_ADDRESS"])
    return desktop_bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                 None, None, 0, 5000, None).unpack()[0]


def accessible_processes(session):
    """Whose connections the programs on the accessibility bus have, by process number."""
    bus = bus_connection(accessibility_address(session))

    def ask(name, path, interface, method, arguments=None):
        return bus.call_sync(name, path, interface, method, arguments, None, 0, 5000,
                             None).unpack()[0]
    programs = ask(*REGISTRY_ROOT, ACCESSIBLE, "GetChildren")
    return {ask("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))
            for name, _ in programs}


class Tree:
    """The programs on the accessibility bus of `session`, and what they show."""

    def __init__(self, session):
        self._bus = bus_connection(accessibility_address(session))

    def box(self, role, name):
        """Where the first thing shown with that role and name is on the screen, or None."""
        return next((box for shown, box in self.shown(role) if shown == name), None)

    def shown(self, role):
        """The names of the things shown with that role, and where they are on the screen."""
        below = [REGISTRY_ROOT]
        while below:
            node = below.pop(0)
            with contextlib.suppress(GLib.Error):  # It may leave meanwhile.
                if self._role(node) == role and SHOWING in self._states(node):
                    name, box = self._get(node, "Name"), self._box(node)
                    if box[2] > 0:
                        yield name, box
                below += self._call(node, ACCESSIBLE, "GetChildren")

    def knows_its_focus(self, program):
        """Whether a window of the program says that it is the active one. A compositor says so a
        moment before the program does."""
        with contextlib.suppress(GLib.Error):  # It may leave meanwhile.
            return any(ACTIVE in self._states(window) for window in self._windows(program))
        return False

    def things(self, program):
        """The windows of a program and all that is shown in them, from the outside in."""
        below, found = self._windows(program), []
        while below:
            node = below.pop(0)
            with contextlib.suppress(GLib.Error):  # It may leave meanwhile.
                states = self._states(node)
                if SHOWING in states:
                    found.append(Thing(self._role(node), self._get(node, "Name"),
                                       self._get(node, "Description"), states, node))
                below = self._call(node, ACCESSIBLE, "GetChildren") + below
        return found

    def text(self, thing):
        """What it says that stands in it, and of how many characters."""
        text = "org.a11y.atspi.Text"
        return (self._call(thing.node, text, "GetText", GLib.Variant("(ii)", (0, -1))),
                self._call(thing.node, "org.freedesktop.DBus.Properties", "Get",
                           GLib.Variant("(ss)", (text, "CharacterCount"))))

    def is_secret(self, thing):
        """Qt gives it the number of such a role, and the name of a role for any text."""
        return self._call(thing.node, ACCESSIBLE, "GetRole") == PASSWORD_TEXT

    def _windows(self, program):
        return [window for node in self._call(REGISTRY_ROOT, ACCESSIBLE, "GetChildren")
                if self._get(node, "Name") == program
                for window in self._call(node, ACCESSIBLE, "GetChildren")]

    def _call(self, node, interface, method, arguments=None):
        answer = self._bus.call_sync(*node, interface, method, arguments, None, 0, 3000, None)
        return answer.unpack()[0] if answer.n_children() else None

    def _get(self, node, name):
        return self._call(node, "org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", (ACCESSIBLE, name)))

    def _role(self, node):
        return self._call(node, ACCESSIBLE, "GetRoleName")

    def _states(self, node):
        low, high = self._call(node, ACCESSIBLE, "GetState")
        return {bit for bit in range(64) if (high << 32 | low) >> bit & 1}

    def _box(self, node):
        return self._call(node, "org.a11y.atspi.Component", "GetExtents", GLib.Variant("(u)", (0,)))


class Focus(Tree):
    """Hears on the accessibility bus of `session` where the focus goes."""

    def __init__(self, session):
        super().__init__(session)
        self._focused = None
        self._bus.signal_subscribe(None, "org.a11y.atspi.Event.Object", "StateChanged", None, None,
                                   Gio.DBusSignalFlags.NONE, self._changed)
        self._call(("org.a11y.atspi.Registry", "/org/a11y/atspi/registry"),
                   "org.a11y.atspi.Registry", "RegisterEvent",
                   GLib.Variant("(s)", ("object:state-changed:focused",)))

    def _changed(self, _bus, sender, path, _interface, _name, arguments):
        what, on = arguments.unpack()[:2]
        if what == "focused" and on:
            self._focused = (sender, path)

    def forget(self):
        """What was heard so far."""
        self._listen()
        self._focused = None

    def menu_item(self):
        """The item that has the focus, once it is one of a menu; else None."""
        self._listen()
        if self._focused:
            with contextlib.suppress(GLib.Error):
                if "menu item" in self._role(self._focused) or self._is_submenu(self._focused):
                    return self._focused
        return None

    def name_of(self, item):
        return self._get(item, "Name")

    def name_of_menu(self, item):
        return self._get(self._get(item, "Parent"), "Name")

    def menu_of(self, item):
        """The lines that are shown in the menu which holds `item`."""
        return self._entries(self._get(item, "Parent"))

    def _listen(self):
        while GLib.MainContext.default().iteration(False):
            pass

    def _is_submenu(self, node):
        # GTK calls the item that opens a menu a menu; the menu itself has no name.
        return self._role(node) == "menu" and self._get(node, "Name") != ""

    def _entries(self, menu, shown_only=True):
        entries = []
        for node in self._call(menu, ACCESSIBLE, "GetChildren"):
            states = self._states(node)
            if shown_only and SHOWING not in states:
                continue
            separator = self._role(node) == "separator"
            entries.append(Entry("" if separator else self._get(node, "Name"),
                                 separator or ENABLED in states, CHECKED in states,
                                 self._below(node), self._box(node)))
        return entries

    def _below(self, item):
        """What opens from an item: its children in GTK, the children of its one child in Qt."""
        children = self._call(item, ACCESSIBLE, "GetChildren")
        if len(children) == 1 and self._role(children[0]) == "popup menu":
            item = children[0]
        return self._entries(item, shown_only=False) if children else []


class OpenMenu:
    """The menu that was just opened, with its first item highlighted."""

    def __init__(self, desktop, focus):
        self._desktop, self._focus = desktop, focus
        focus.forget()
        self._item = self._go_down() or self._go_down() or self._go_down()
        if not self._item:
            raise SessionError("no item of the menu took the focus")

    def _go_down(self):
        """The first item. Now and then a panel draws its menu long before that takes keys."""
        self._desktop.key("Down")
        with contextlib.suppress(SessionError):
            return wait_until(self._focus.menu_item, 5, "the menu's first item")
        return None

    def entries(self):
        return self._focus.menu_of(self._item)

    def entry(self, title):
        """The line whose title begins so."""
        entries = self.entries()
        for entry in entries:
            if entry.title.startswith(title):
                return entry
        raise SessionError(f"no {title} among {[e.title for e in entries]}")

    def choose_with_keys(self, title):
        """Goes down to an item of the root that can be chosen, and takes it."""
        titles = [e.title for e in self.entries() if e.title and e.enabled]
        place = next(i for i, t in enumerate(titles) if t.startswith(title))
        self._desktop.key(*["Down"] * place, "Return")

    def click(self, title):
        x, y, width, height = self.entry(title).box
        self._desktop.session.run(["xdotool", "mousemove", str(x + width // 2),
                                   str(y + height // 2), "click", "1"])

    def close(self):
        self._desktop.key("Escape")
