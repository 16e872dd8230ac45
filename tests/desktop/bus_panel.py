"""A panel without a screen: notes the icon that registers on the session bus, and reads and works
its menu as panels do."""

import threading

from gi.repository import Gio, GLib
from session import SessionError, wait_until
from wayland_session import connect

WATCHER = "org.kde.StatusNotifierWatcher"
DESCRIPTION = """<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
</interface></node>"""
MENU_PATH, MENU = "/MenuBar", "com.canonical.dbusmenu"


class BusPanel:
    """Serves from construction until `close`."""

    def __init__(self, session):
        self._address = session.env["DBUS_SESSION_BUS_ADDRESS"]
        self._item = None
        self._loop = None
        ready = threading.Event()
        self._thread = threading.Thread(target=self._serve, args=(ready,), daemon=True)
        self._thread.start()
        if not ready.wait(10):
            raise SessionError("the panel is not on the bus")

    def close(self):
        self._loop.quit()
        self._thread.join(10)
        self._bus.close_sync(None)

    def _serve(self, ready):
        context = GLib.MainContext()
        context.push_thread_default()
        self._bus = connect(self._address)
        interface = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
        self._bus.register_object("/StatusNotifierWatcher", interface, self._called,
                                  lambda *_: GLib.Variant("b", True), None)
        self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                            "org.freedesktop.DBus", "RequestName",
                            GLib.Variant("(su)", (WATCHER, 0)), None, 0, 10000, None)
        self._loop = GLib.MainLoop(context)
        ready.set()
        self._loop.run()

    def _called(self, _bus, sender, _path, _interface, _method, _arguments, invocation):
        self._item = sender
        invocation.return_value(None)

    def _ask(self, method, arguments, interface=MENU):
        return wait_until(
            lambda: self._item and self._answer(self._item, interface, method, arguments), 15,
            "the icon")[0]

    def _answer(self, item, interface, method, arguments):
        """None where the program has ended, as one that another test has started may have."""
        try:
            answer = self._bus.call_sync(item, MENU_PATH, interface, method, arguments, None,
                                         Gio.DBusCallFlags.NO_AUTO_START, 10000, None)
            return [answer.unpack()]
        except GLib.Error as error:
            if not error.matches(Gio.DBusError.quark(), Gio.DBusError.NAME_HAS_NO_OWNER):
                raise
            return None

    def lines(self):
        """The menu as it opens now: pairs of id and label, with those of submenus."""
        self._ask("AboutToShow", GLib.Variant("(i)", (0,)))
        _, root = self._ask("GetLayout", GLib.Variant("(iias)", (0, -1, [])))
        return [(item, properties.get("label", "").replace("__", "_"))
                for item, properties in _flat(root) if properties.get("visible", True)]

    def property(self, name):
        """One of the menu as a whole."""
        return self._ask("Get", GLib.Variant("(ss)", (MENU, name)),
                         "org.freedesktop.DBus.Properties")[0]

    def titles(self):
        return [label for _, label in self.lines()]

    def click(self, title):
        item = next(item for item, label in self.lines() if label == title)
        self._ask("Event", GLib.Variant("(isvu)", (item, "clicked", GLib.Variant("s", ""), 0)))


def _flat(node):
    item, properties, children = node
    yield item, properties
    for child in children:
        yield from _flat(child)
