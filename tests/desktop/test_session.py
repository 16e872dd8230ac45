"""The private sessions themselves: what runs in one stays in it and ends with it."""

import os
import signal
import subprocess
import time

import pytest
from session import wait_until

IN_SESSION = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../tools/in-session")


def run(*arguments):
    return subprocess.run([IN_SESSION, *arguments], stdout=subprocess.PIPE, text=True, timeout=60)


def alive(marker):
    """Whether a process has the marker among its arguments."""
    for entry in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{entry}/cmdline", "rb") as f:
                if marker.encode() in f.read().split(b"\0"):
                    return True
        except OSError:
            continue
    return False


@pytest.fixture
def marker():
    """A number of seconds that no other process sleeps."""
    return f"{os.getpid()}{time.monotonic_ns() % 10**6}"


def test_the_exit_code_is_the_commands():
    assert run("--wm", "none", "--", "sh", "-c", "exit 7").returncode == 7
    assert run("--wm", "none", "--", "sh", "-c", "kill -9 $$").returncode == 137
    assert run("--bare", "--", "/nonexistent").returncode == 127


def test_home_is_private_and_removed():
    home = run("--wm", "none", "--no-bus", "--", "sh", "-c", "echo $HOME").stdout.strip()
    assert home and home != os.environ["HOME"]
    assert not os.path.exists(home)


def test_nothing_started_survives(marker):
    assert run("--bare", "--", "sh", "-c", f"setsid sleep {marker} &").returncode == 0
    assert not alive(marker)


@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGKILL])
def test_nothing_survives_its_killing(marker, number):
    process = subprocess.Popen([IN_SESSION, "--bare", "--", "sh", "-c",
                                f"setsid sleep {marker} & exec sleep {marker}"])
    wait_until(lambda: alive(marker), 10, "the command")
    process.send_signal(number)
    process.wait(10)
    wait_until(lambda: not alive(marker), 10, "its end")


def test_a_session_without_a_bus_has_none():
    ask = ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
           "org.freedesktop.DBus.ListNames"]
    assert run("--wm", "none", "--no-bus", "--", *ask).returncode != 0
    assert run("--wm", "none", "--", *ask).returncode == 0


@pytest.mark.parametrize("options, value", [([], "true"), (["--no-a11y"], "false")])
def test_accessibility_is_on_unless_asked(options, value):
    answer = run("--wm", "none", *options, "--", "dbus-send", "--session", "--print-reply",
                 "--dest=org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties.Get",
                 "string:org.a11y.Status", "string:IsEnabled").stdout
    assert f"boolean {value}" in answer


def test_a_missing_window_manager_is_an_error():
    assert run("--wm", "no-such-manager", "--", "true").returncode == 125
