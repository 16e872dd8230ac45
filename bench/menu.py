"""What opening the menu costs the panel: AboutToShow until its answer."""

import time

from gi.repository import Gio, GLib
from panel import tray_items
from session import SessionError


def measure(desktop, tavin, engine, count):
    """Seconds of each opening: until the answer, and without the engine's share of it."""
    items = tray_items(desktop)
    if not items:
        raise SessionError("no icon in the tray")
    service, _, path = items[0].partition("/")
    menu = _call(tavin.bus, service, "/" + (path or "StatusNotifierItem"),
                 "org.freedesktop.DBus.Properties", "Get",
                 GLib.Variant("(ss)", ("org.kde.StatusNotifierItem", "Menu"))).unpack()[0]
    openings = []
    for number in range(count):
        # Pause is enabled in one state and not in the other: each opening has something to change.
        engine.status = {**engine.status, "state": "speaking" if number % 2 else "idle"}
        time.sleep(0.1)
        since, begun = engine.mark(), time.monotonic()
        _call(tavin.bus, service, menu, "com.canonical.dbusmenu", "AboutToShow",
              GLib.Variant("(i)", (0,)))
        answered = time.monotonic() - begun
        asked = engine.requests("/status", since)
        openings.append({"answer": answered, "own": answered - sum(a.took for a in asked[:1])})
    engine.status = {**engine.status, "state": "idle"}
    return openings


def _call(bus, service, path, interface, method, arguments):
    return bus.call_sync(service, path, interface, method, arguments, None,
                         Gio.DBusCallFlags.NO_AUTO_START, 5000, None)
