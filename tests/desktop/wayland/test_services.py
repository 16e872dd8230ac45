"""What serves in the session is chosen by what it offers, and can be forced."""

import os
import signal
import socket
import time

import pytest
from accessible import accessible_processes
from driver import Tavin
from session import wait_until
from terminal import Watched

TEXT = "read whatever serves"


@pytest.fixture
def start(desktop, engine, build):
    return lambda **settings: Tavin(desktop, engine, build, settings=settings)


@pytest.fixture
def field(desktop, build):
    window = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


def said(tavin):
    """Its line about what it has chosen; the log holds those of earlier ones, too."""
    return [line for line in tavin.log().splitlines() if line.startswith("Tavin: Wayland")][-1]


def test_one_line_tells_what_was_chosen(start):
    assert said(start()).rpartition(", version ")[0] == (
        "Tavin: Wayland, clipboard wlr-data-control 2, keyboard virtual-keyboard, "
        "windows foreign-toplevel, Qt wayland, shortcuts none, with the session bus")


def test_without_processes_the_focused_program_is_found(start, desktop, field):
    tavin = start(SWAYSOCK="/nonexistent")
    assert tavin.press() == [TEXT]


def test_without_processes_a_stopped_program_keeps_nobody_waiting(start, desktop, session, engine,
                                                                  programs, field):
    other = desktop.start(["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), "never"])
    wait_until(lambda: desktop.windows("GTK 4 field"), 30, "window")
    wait_until(lambda: other.pid in accessible_processes(session), 15, "program on the bus")
    desktop.focus(field)
    start(SWAYSOCK="/nonexistent")
    other.send_signal(signal.SIGSTOP)
    try:
        since = engine.mark()
        desktop.key("alt+Escape")
        assert engine.wait_for("/speak", since=since, seconds=2) == [{"text": TEXT}]
    finally:
        other.kill()


@pytest.mark.parametrize("name", ["foot", "dropdown"])
def test_without_processes_nothing_is_typed_into_a_terminal(start, desktop, programs, tmp_path,
                                                            name):
    terminal = Watched(desktop, programs, ["foot", "--app-id", name, "--title", "watched"],
                       str(tmp_path / "record"))
    assert start(SWAYSOCK="/nonexistent").press() == []
    assert terminal.reached() == ["ready"]


def test_an_x_display_that_says_nothing_is_not_needed(start, field):
    folder = "/tmp/.X11-unix"
    os.makedirs(folder, exist_ok=True)
    number = next(n for n in range(700, 800) if not os.path.exists(f"{folder}/X{n}"))
    with socket.socket(socket.AF_UNIX) as silent:
        silent.bind(f"{folder}/X{number}")
        try:
            silent.listen()
            assert start(DISPLAY=f":{number}").press() == [TEXT]
        finally:
            os.unlink(f"{folder}/X{number}")


def test_without_a_keyboard_nothing_is_copied(start, desktop, bare_field):
    desktop.own("clipboard", "copied before")
    owner = desktop.selection_owner("clipboard")
    tavin = start(TAVIN_KEYBOARD="none")
    assert "keyboard none" in said(tavin)
    assert tavin.press() == []
    assert desktop.selection_owner("clipboard") == owner


def test_a_value_that_is_no_choice_counts_for_nothing(start, desktop, field):
    tavin = start(TAVIN_CLIPBOARD="data_control", TAVIN_KEYBOARD="x", TAVIN_WINDOWS="sway",
                  TAVIN_SHORTCUTS="xwayland")
    assert "keyboard virtual-keyboard, windows foreign-toplevel" in said(tavin)
    assert tavin.press() == [TEXT]


def test_windows_may_be_those_of_xwayland_alone(start, field):
    """Of any other only accessibility tells which is in front."""
    tavin = start(TAVIN_WINDOWS="x11")
    assert "windows Xwayland's" in said(tavin)
    assert tavin.press() == [TEXT]


def test_a_service_that_is_not_there_is_told(desktop, session, build):
    program = desktop.start([os.path.join(build, "bin/tavin")], log="forced.log",
                            env={**session.env, "TAVIN_CLIPBOARD": "x11"})
    assert program.wait(10) == 1
    assert session.log("forced.log") == "tavin: the clipboard of this session cannot be reached\n"


@pytest.mark.parametrize("seconds", [2, 0.05])
def test_a_shortcut_is_one_action_however_long_it_is_held(start, desktop, engine, seconds):
    start()
    engine.status = {**engine.status, "state": "speaking"}
    since = engine.mark()
    desktop.press("alt+Escape")
    time.sleep(seconds)
    desktop.release("alt+Escape")
    engine.wait_for("/stop", since=since)
    # Whatever else the key led to has started meanwhile.
    desktop.key("alt+shift+Escape")
    engine.wait_for("/toggle-pause", since=since)
    assert len(engine.requests("/stop", since)) == 1
    assert len(engine.requests("/toggle-pause", since)) == 1


def test_without_any_display_one_line_is_said(desktop, session, build):
    program = desktop.start([os.path.join(build, "bin/tavin")], log="nowhere.log",
                            env={**session.env, "WAYLAND_DISPLAY": "wayland-9"})
    assert program.wait(10) == 1
    assert len(session.log("nowhere.log").splitlines()) == 1
