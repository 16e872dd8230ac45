"""A sandboxed program: its accessibility comes through a proxy, whose process shows no window."""

import os
import signal

import pytest
from accessible import accessibility_address, accessible_processes
from session import wait_until

TEXT = "  Grüße aus dem Sandkasten — “quoted” \U0001f600.\nSecond line  "
COPIED = "what was copied before"
REGISTRY = "--call=org.a11y.atspi.Registry="
EVENTS = "org.a11y.atspi.DeviceEventController."
# What sandboxed programs are let do on the accessibility bus.
ALLOWED = ["--filter", "--sloppy-names",
           *(REGISTRY + f"org.a11y.atspi.Socket.{call}@/org/a11y/atspi/accessible/root"
             for call in ("Embed", "Unembed")),
           REGISTRY + "org.a11y.atspi.Registry.GetRegisteredEvents@/org/a11y/atspi/registry",
           *(REGISTRY + EVENTS + f"{call}@/org/a11y/atspi/registry/deviceeventcontroller"
             for call in ("GetKeystrokeListeners", "GetDeviceEventListeners",
                          "NotifyListenersSync", "NotifyListenersAsync"))]


def write(folder):
    letter = folder / "letter.txt"
    letter.write_text(TEXT, encoding="utf-8")
    return str(letter)


@pytest.fixture
def proxy(desktop, session, tmp_path):
    """The proxy's process and the environment of a program that is behind it."""
    path = str(tmp_path / "accessibility")
    process = desktop.start(["xdg-dbus-proxy", accessibility_address(session), path, *ALLOWED])
    wait_until(lambda: os.path.exists(path), 10, "proxy")
    return process, {**session.env, "AT_SPI_BUS_ADDRESS": "unix:path=" + path}


@pytest.fixture(params=["mousepad", "gtk4"])
def field(request, desktop, session, programs, proxy, tmp_path):
    process, behind_proxy = proxy
    command, title = {
        "mousepad": (["mousepad", "--disable-server", write(tmp_path)], "letter.txt"),
        "gtk4": (["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), TEXT],
                 "GTK 4 field"),
    }[request.param]
    window = desktop.open(command, title, env=behind_proxy)
    wait_until(lambda: process.pid in accessible_processes(session), 15, "program on the bus")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    # Back from another window, what the display has selected proves nothing any more.
    desktop.open(["xterm", "-T", "other"], "other")
    desktop.focus(window)
    return window


def test_selection_reaches_the_engine(tavin, desktop, field):
    desktop.own("clipboard", COPIED)
    owner = desktop.selection_owner("CLIPBOARD")
    assert tavin.press() == [TEXT]
    # Nothing was copied for it, so accessibility brought it.
    assert desktop.selection_owner("CLIPBOARD") == owner


def test_stopped_proxy_of_another_program_keeps_nothing_waiting(tavin, desktop, engine, session,
                                                                tmp_path, programs, proxy):
    # Behind a proxy, the window does not tell whose accessibility to ask: all are asked.
    process, behind_proxy = proxy
    path = str(tmp_path / "stopped")
    stopped = desktop.start(["xdg-dbus-proxy", accessibility_address(session), path, *ALLOWED])
    wait_until(lambda: os.path.exists(path), 10, "proxy")
    field = ["/usr/bin/python3", os.path.join(programs, "gtk4_field.py")]
    desktop.open([*field, "never read"], "GTK 4 field",
                 env={**behind_proxy, "AT_SPI_BUS_ADDRESS": "unix:path=" + path})
    desktop.open(["mousepad", "--disable-server", write(tmp_path)], "letter.txt", env=behind_proxy)
    wait_until(lambda: {process.pid, stopped.pid} <= accessible_processes(session), 15,
               "programs on the bus")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    stopped.send_signal(signal.SIGSTOP)
    try:
        since = engine.mark()
        desktop.key("alt+Escape")
        assert engine.wait_for("/speak", since=since, seconds=2) == [{"text": TEXT}]
    finally:
        stopped.kill()
