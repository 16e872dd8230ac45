"""Sessions whose bus hangs or that have none: Tavin works without it and starts none."""

import contextlib
import os
import signal
import time

import pytest
from driver import Desktop
from session import Session, wait_until
from trays import Tray

WITHOUT = "Tavin: X11, shortcuts x11, without a session bus"


def buses(session):
    """The process numbers of the session's buses and of what starts them."""
    home = b"HOME=" + session.env["HOME"].encode()
    found = set()
    for entry in filter(str.isdigit, os.listdir("/proc")):
        with contextlib.suppress(OSError):
            with open(f"/proc/{entry}/comm", encoding="utf-8") as f:
                name = f.read().strip()
            with open(f"/proc/{entry}/environ", "rb") as f:
                inside = home in f.read().split(b"\0")
            if inside and name in ("dbus-daemon", "dbus-launch"):
                found.add(int(entry))
    return found


@pytest.fixture
def no_bus(tmp_path):
    with Session(str(tmp_path), bus=False) as session:
        yield session


def launch(desktop, build):
    """Returns the process once it is launched, and the seconds that took."""
    start = time.monotonic()
    tavin = desktop.start([os.path.join(build, "bin/tavin")], log="tavin.log")
    wait_until(lambda: WITHOUT in desktop.session.log("tavin.log"), 10, "the launch")
    return tavin, time.monotonic() - start


def end(tavin):
    start = time.monotonic()
    tavin.send_signal(signal.SIGTERM)
    assert tavin.wait(10) == 0
    assert time.monotonic() - start < 1


@pytest.fixture
def hung_bus(tmp_path):
    with Session(str(tmp_path)) as session:
        before = buses(session)
        assert before
        for daemon in before:
            os.kill(daemon, signal.SIGSTOP)
        yield session
        for daemon in before:
            os.kill(daemon, signal.SIGCONT)


def test_a_bus_that_hangs_is_done_without(hung_bus, engine, build):
    desktop = Desktop(hung_bus)
    tavin, seconds = launch(desktop, build)
    assert seconds < 5
    engine.wait_for("/status", seconds=5)
    end(tavin)
    desktop.close()


def test_a_hung_launch_can_be_ended(hung_bus, engine, build):
    desktop = Desktop(hung_bus)
    tavin = desktop.start([os.path.join(build, "bin/tavin")])
    wait_until(lambda: is_handled(tavin.pid, signal.SIGTERM), 10, "the beginning of the launch")
    start = time.monotonic()
    tavin.send_signal(signal.SIGTERM)
    assert tavin.wait(10) == 0
    assert time.monotonic() - start < 1
    desktop.close()


def is_handled(pid, number):
    with open(f"/proc/{pid}/status", encoding="utf-8") as f:
        mask = next(line.split()[1] for line in f if line.startswith("SigCgt"))
    return int(mask, 16) >> (number - 1) & 1


@pytest.mark.parametrize("given", [None, "", "unix:path=/nowhere", "autolaunch:"])
def test_no_bus_is_started(no_bus, engine, build, given):
    no_bus.env.pop("DBUS_SESSION_BUS_ADDRESS")
    if given is not None:
        no_bus.env["DBUS_SESSION_BUS_ADDRESS"] = given
    desktop = Desktop(no_bus)
    tray = Tray(desktop, "trayer", has_bus=False)
    before = buses(no_bus)
    tavin, seconds = launch(desktop, build)
    assert seconds < 5
    engine.wait_for("/status", seconds=5)
    tray.click_icon()  # Widgets, for which Qt looks for screen readers.
    desktop.key("Escape")
    end(tavin)
    assert buses(no_bus) <= before
    desktop.close()
