"""The installed program, its engine and its files for the desktop work together."""

import configparser
import os
import shlex
import signal

import own_engine
import reader
from appstream import problems
from bus_panel import BusPanel
from gi.repository import GLib
from session import stop, wait_until
from wayland_session import connect


def entry(path):
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    parser.read(path, encoding="utf-8")
    return parser


def running_program(desktop):
    """The process number of the Tavin on the session's bus; None without one."""
    bus = connect(desktop.session.env["DBUS_SESSION_BUS_ADDRESS"])
    try:
        return bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                             GLib.Variant("(s)", ("app.tavin.Tavin",)), None, 0, 10000,
                             None).unpack()[0]
    except GLib.Error:
        return None
    finally:
        bus.close_sync(None)


def end(pid):
    os.kill(pid, signal.SIGTERM)
    wait_until(lambda: not os.path.exists(f"/proc/{pid}"), 10, "Tavin's end")


def test_a_key_is_pressed_and_the_selected_text_is_heard(desktop, prefix):
    tavin = reader.start(desktop, prefix)
    reader.select(desktop)
    assert reader.seconds_spoken(desktop) > 2
    assert tavin.quit()[0] == 0
    wait_until(lambda: own_engine.status() is None, 10, "the engine's end")


def test_a_desktop_action_starts_the_program_over_the_bus(desktop, prefix):
    actions = entry(f"{prefix}/share/applications/app.tavin.Tavin.desktop")
    command = shlex.split(actions["Desktop Action stop"]["Exec"])
    desktop.session.run(command, seconds=30)
    pid = wait_until(lambda: running_program(desktop), 15, "Tavin on the bus")
    assert os.readlink(f"/proc/{pid}/exe") == f"{prefix}/bin/tavin"
    own_engine.wait_for("idle")
    end(pid)


def test_the_login_item_starts_the_installed_program(desktop, prefix):
    panel = BusPanel(desktop.session)
    tavin = reader.start(desktop, prefix)
    panel.click("Launch at Login")
    path = os.path.join(desktop.session.env["XDG_CONFIG_HOME"],
                        "autostart/app.tavin.Tavin.desktop")
    wait_until(lambda: os.path.exists(path), 10, "the login item")
    panel.close()
    assert tavin.quit()[0] == 0
    item = entry(path)["Desktop Entry"]
    assert item["TryExec"] == f"{prefix}/bin/tavin"
    started = desktop.start(shlex.split(item["Exec"]))
    assert wait_until(lambda: running_program(desktop), 15, "Tavin on the bus") == started.pid
    own_engine.wait_for("idle")
    assert stop(started) == 0


def test_kwin_finds_its_permission_in_the_desktop_file(desktop, prefix):
    """It compares Exec with the path of the running program."""
    tavin = reader.start(desktop, prefix)
    main = entry(f"{prefix}/share/applications/app.tavin.Tavin.desktop")["Desktop Entry"]
    running = os.readlink(f"/proc/{tavin.process.pid}/exe")
    assert shlex.split(main["Exec"]) == [running]
    assert "org_kde_kwin_fake_input" in main["X-KDE-Wayland-Interfaces"].split(",")


def test_the_appstream_data_are_valid_for_this_release(prefix):
    assert problems(f"{prefix}/share/metainfo/app.tavin.Tavin.metainfo.xml") == set()
