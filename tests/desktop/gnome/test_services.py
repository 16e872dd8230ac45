"""What serves under GNOME is chosen by what it offers; how quickly, and at what cost."""

import os
import signal
import time

import pytest
from driver import Tavin
from session import stop, wait_until

TEXT = "read whatever serves"
SECONDS = 10


@pytest.fixture
def field(desktop, programs):
    window = desktop.open(["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), TEXT],
                          "GTK 4 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


def test_one_line_tells_what_was_chosen(tavin, shortcuts):
    assert tavin.log().splitlines()[0].rpartition(", version ")[0] == (
        "Tavin: Wayland, clipboard x11, keyboard portal, windows Xwayland's, Qt wayland, "
        f"shortcuts {shortcuts}, with the session bus")


def test_windows_that_the_compositor_does_not_tell_are_told_of(desktop, session, build):
    program = desktop.start([os.path.join(build, "bin/tavin")], log="forced.log",
                            env={**session.env, "TAVIN_WINDOWS": "compositor"})
    assert program.wait(10) == 1
    assert session.log("forced.log") == (
        "tavin: there is no Wayland compositor with data control\n")


def test_without_a_keyboard_nobody_is_asked(desktop, engine, build, bare_field):
    tavin = Tavin(desktop, engine, build, settings={"TAVIN_KEYBOARD": "none"})
    assert "keyboard none" in tavin.log()
    assert tavin.press() == []
    assert desktop.no_dialog()


def test_a_portal_that_is_not_there_yet(desktop, session, engine, build, bare_field, copied_text):
    """The desktop's own part of the portal failed, and is well again when the portal restarts."""
    portal = "org.freedesktop.portal.Desktop"
    if session.owner(portal):
        os.kill(session.owner(portal), 15)
        wait_until(lambda: session.owner(portal) is None, 10, "the portal's end")
    # The command that the bus starts fails now: there is another owner of the name, which serves
    # nothing.
    blocker = desktop.start(["/usr/bin/python3", "-c", f"""
from gi.repository import Gio, GLib
Gio.bus_own_name(Gio.BusType.SESSION, "{portal}", Gio.BusNameOwnerFlags.NONE, None, None, None)
GLib.MainLoop().run()"""])
    wait_until(lambda: session.owner(portal) == blocker.pid, 10, "the wrong portal")
    tavin = Tavin(desktop, engine, build)
    assert tavin.press() == []
    wait_until(lambda: "has no keyboard now" in tavin.log(), 10, "the answer")
    stop(blocker)
    assert tavin.press() == []
    desktop.share()
    wait_until(lambda: "lets Tavin press" in tavin.log(), 10, "permission")
    wait_until(lambda: desktop.has_keyboard(bare_field), 10, "the program in front")
    assert tavin.press() == [copied_text]


def test_without_its_x_display_accessibility_goes_on(desktop, session, engine, build, field):
    """As when Xwayland has crashed."""
    display, name = session.start_server_for_x()
    tavin = Tavin(desktop, engine, build, settings={"DISPLAY": name, "XAUTHORITY": ""})
    desktop.focus(field)
    assert tavin.press() == [TEXT]
    display.kill()
    display.wait(10)
    assert tavin.press() == [TEXT]
    assert tavin.process.poll() is None


def test_an_x_display_that_hangs_keeps_no_press_waiting(desktop, session, engine, build, field):
    display, name = session.start_server_for_x()
    tavin = Tavin(desktop, engine, build, settings={"DISPLAY": name, "XAUTHORITY": ""})
    desktop.focus(field)
    assert tavin.press() == [TEXT]
    display.send_signal(signal.SIGSTOP)
    assert tavin.press() == [TEXT]
    display.send_signal(signal.SIGCONT)
    assert tavin.press() == [TEXT]


def test_a_programs_actions_are_one_each(tavin, engine):
    """Unlike the runs of a held key no input comes between them."""
    engine.status = {**engine.status, "state": "speaking"}
    since = engine.mark()
    tavin.action("speak")
    engine.wait_for("/stop", count=1, since=since)
    tavin.action("speak")
    engine.wait_for("/stop", count=2, since=since)


def test_nobody_wakes_it(granted, desktop, copied_text):
    """Also with the permission to press keys."""
    assert granted.press() == [copied_text]
    time.sleep(3)  # What that has set off.
    before = granted.times_asleep()
    time.sleep(SECONDS)
    assert granted.times_asleep() == before
