"""From exec to the icon registered and the shortcuts grabbed."""

import threading
import time

from driver import Tavin
from gi.repository import Gio, GLib
from keys import GrabRecord
from session import wait_until

WATCHER = "org.kde.StatusNotifierWatcher"


class TrayWatch:
    """Notes when the panel announces an icon, on a thread of its own."""

    def __init__(self, address):
        self.announced = []
        self._context = GLib.MainContext()
        self._loop = GLib.MainLoop.new(self._context, False)
        ready = threading.Event()
        self._thread = threading.Thread(target=self._run, args=(address, ready))
        self._thread.start()
        ready.wait(10)

    def _run(self, address, ready):
        self._context.push_thread_default()
        flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
                 | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        bus.signal_subscribe(WATCHER, WATCHER, "StatusNotifierItemRegistered", None, None,
                             Gio.DBusSignalFlags.NONE, self._note)
        # The bus has taken the subscription when it answers what came after.
        bus.call_sync("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetId", None, None,
                      Gio.DBusCallFlags.NONE, 5000, None)
        ready.set()
        self._loop.run()

    def _note(self, *_):
        self.announced.append(time.monotonic())

    def close(self):
        self._loop.quit()
        self._thread.join(5)


# Where Qt's plug-in for GTK's look is installed, it is loaded into programs with windows there.
DESKTOP = {"XDG_CURRENT_DESKTOP": "XFCE"}


def measure(desktop, engine, build, count):
    """Starts Tavin `count` times. Returns the last one, running, and the seconds of each start."""
    tray, grabs = TrayWatch(desktop.session.env["DBUS_SESSION_BUS_ADDRESS"]), None
    starts = []
    try:
        grabs = GrabRecord(desktop.session.env["DISPLAY"])
        while True:
            tray.announced.clear()
            begun = time.monotonic()
            tavin = Tavin(desktop, engine, build, settings=DESKTOP)
            icon = wait_until(lambda: tray.announced and tray.announced[0], 10, "the icon")
            keys = wait_until(lambda: grabs.both_since(begun), 10, "the grabs")
            starts.append({"icon": icon - begun, "shortcuts": keys - begun,
                           "ready": max(icon, keys) - begun})
            if len(starts) == count:
                return tavin, starts
            tavin.quit()
            time.sleep(0.3)
    finally:
        tray.close()
        if grabs:
            grabs.close()
