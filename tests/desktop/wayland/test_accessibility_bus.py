"""The accessibility bus ends and starts again while Tavin runs."""

import os
import signal

import pytest
from accessible import accessibility_address, accessible_processes, bus_connection
from driver import Tavin
from gi.repository import GLib
from session import stop, wait_until

BEFORE, AFTER = "read over the first bus", "read over the second bus"


@pytest.fixture
def tavin(desktop, engine, build):
    """What it reads has come over that bus: it copies nothing."""
    return Tavin(desktop, engine, build, settings={"TAVIN_KEYBOARD": "none"})


def process_of(address, name):
    """The process that owns a name on the message bus there."""
    bus = "org.freedesktop.DBus"
    return bus_connection(address).call_sync(
        bus, "/org/freedesktop/DBus", bus, "GetConnectionUnixProcessID",
        GLib.Variant("(s)", (name,)), None, 0, 5000, None).unpack()[0]


def bus_process(session):
    return process_of(accessibility_address(session), "org.freedesktop.DBus")


def restarted(session, old):
    try:
        return bus_process(session) != old
    except GLib.Error:
        return False  # Nobody has noticed yet that it has ended.


def times_switched_on(tavin):
    return tavin.log().count("switched it on again")


@pytest.mark.parametrize("ends", ["bus", "launcher"])
def test_programs_on_a_new_bus_are_read(tavin, desktop, session, build, ends):
    """Accessibility is off then, until Tavin looks at the next press: programs that start later are
    on the bus. So it is each time."""
    def open_field(text):
        desktop.open([os.path.join(build, "bin/qt6_field"), text], "Qt 6 field")
        field = desktop.last_program
        desktop.select_until(text, lambda: desktop.key("ctrl+a"))
        wait_until(lambda: field.pid in accessible_processes(session), 15, "program on the bus")
        return field
    field = open_field(BEFORE)
    assert tavin.press() == [BEFORE]
    for _ in range(2):
        already = times_switched_on(tavin)
        old = bus_process(session)
        if ends == "launcher":
            os.kill(process_of(session.env["DBUS_SESSION_BUS_ADDRESS"], "org.a11y.Bus"),
                    signal.SIGKILL)
        os.kill(old, signal.SIGKILL)
        stop(field)
        wait_until(lambda: restarted(session, old), 15, "another bus")
        assert tavin.press() == []
        assert times_switched_on(tavin) == already + 1
        field = open_field(AFTER)
        assert tavin.press() == [AFTER]
