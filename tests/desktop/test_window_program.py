"""Alerts are shown by a program of their own: whatever becomes of it closes an alert and no more."""

import contextlib
import os
import shutil
import signal

import pytest
from alerts import FAILED, shown, wait_for_alert
from driver import Tavin
from engine import IDLE
from own_engine import engines, listening
from scripted_engine import Pair, make_tree
from session import SessionError, wait_until
from trays import Tray, rests

PROGRAM = "tavin-windows"
LOSS = "the program that shows its windows"
TYPED = "sk-typed-by-hand-4711"


def children(pid):
    with open(f"/proc/{pid}/task/{pid}/children", encoding="ascii") as f:
        return [int(number) for number in f.read().split()]


def window_programs(tavin):
    """Its processes, by their executable."""
    found = []
    for pid in children(tavin.process.pid):
        try:
            if os.path.basename(os.readlink(f"/proc/{pid}/exe")) == PROGRAM:
                found.append(pid)
        except OSError:
            pass
    return found


def told(tavin):
    """What this one has logged: the tests' files follow each other in one."""
    return tavin.log().rpartition("Tavin: X11, shortcuts")[2]


def read(pid, name):
    with open(f"/proc/{pid}/{name}", "rb") as f:
        return f.read()


def is_gone(pid):
    try:
        return read(pid, "stat").rpartition(b") ")[2][:1] == b"Z"
    except OSError:
        return True


@pytest.fixture
def press(desktop, engine, tavin):
    """A press that leads to an alert, each time another."""
    well, count = engine.status, 0

    def press_once():
        nonlocal count
        count += 1
        engine.status = {**well, **FAILED, "setup_error": f"failure {count}"}
        desktop.key("alt+Escape")
    return press_once


@pytest.fixture
def program(desktop, tavin, press):
    """The process, with an alert open."""
    press()
    wait_for_alert(desktop)
    pid, = window_programs(tavin)
    return pid


def test_without_a_window_there_is_no_such_program_and_no_library_for_windows(tavin):
    assert window_programs(tavin) == []
    mapped = read(tavin.process.pid, "maps").decode()
    assert "libQt6Core" in mapped
    for library in ("libQt6Gui", "libQt6Widgets", "libgtk-", "libgdk-"):
        assert library not in mapped


@pytest.mark.parametrize("number", [signal.SIGKILL, signal.SIGSEGV, signal.SIGTERM])
def test_its_end_closes_the_alert_and_the_next_one_appears(desktop, tavin, program, press, number):
    os.kill(program, number)
    wait_until(lambda: not shown(desktop), 5, "the alert's end")
    wait_until(lambda: f"{LOSS}: it ended by itself" in told(tavin), 5, "the log's line")
    press()
    wait_for_alert(desktop)
    assert window_programs(tavin) != [program]
    assert tavin.process.poll() is None


def test_a_crash_leaves_no_core_dump(program):
    limits = read(program, "limits").decode().splitlines()
    line, = (line for line in limits if line.startswith("Max core file size"))
    assert line.split()[4:6] in (["1", "1"], ["0", "0"])


def test_one_that_is_stopped_is_closed_after_a_while_and_the_next_one_appears(desktop, tavin,
                                                                             program, press):
    os.kill(program, signal.SIGSTOP)
    wait_until(lambda: is_gone(program), 30, "its end")
    wait_until(lambda: f"{LOSS}: it does not answer" in told(tavin), 5, "the log's line")
    press()
    wait_for_alert(desktop)


def test_tavin_goes_on_while_it_is_stopped(desktop, engine, tavin, program):
    os.kill(program, signal.SIGSTOP)
    tavin.action("pause")
    engine.wait_for("/toggle-pause")
    code, seconds = tavin.quit()
    assert code == 0
    assert seconds < 1
    wait_until(lambda: is_gone(program), 5, "its end")


@pytest.mark.parametrize("stopped", [False, True], ids=["running", "stopped"])
def test_it_ends_with_a_tavin_that_is_killed(tavin, program, stopped):
    if stopped:
        os.kill(program, signal.SIGSTOP)
    tavin.quit(signal.SIGKILL)
    wait_until(lambda: is_gone(program), 5, "its end")


def test_it_ends_after_the_last_alert(desktop, tavin, program, press):
    desktop.key("Escape")
    wait_until(lambda: not shown(desktop), 5, "the alert's end")
    wait_until(lambda: window_programs(tavin) == [], 10, "its end")
    assert LOSS not in told(tavin)
    press()
    wait_for_alert(desktop)


@pytest.mark.parametrize("keys", [("Return", "Escape"), ("Escape", "Escape"), ("Return", "Return")],
                         ids="-".join)
def test_keys_that_come_all_at_once_answer_one_alert_once(desktop, tavin, program, press, keys):
    # Now and then it reads the second key only after the answer to the first.
    for _ in range(5):
        pid, = window_programs(tavin)
        os.kill(pid, signal.SIGSTOP)
        desktop.key(*keys)
        os.kill(pid, signal.SIGCONT)
        wait_until(lambda: not shown(desktop), 5, "the alert's end")
        press()
        wait_for_alert(desktop)
        assert LOSS not in told(tavin)


def test_an_alert_sent_to_one_that_was_stopped_at_rest_is_shown_by_another(desktop, tavin, program,
                                                                           press):
    desktop.key("Escape")
    wait_until(lambda: not shown(desktop), 5, "the alert's end")
    wait_until(lambda: rests(program), 1.5, "the answer's way")
    os.kill(program, signal.SIGSTOP)
    press()
    wait_until(lambda: shown(desktop), 25, "the alert")
    wait_for_alert(desktop)
    assert window_programs(tavin) != [program]


def mark_text(desktop, window, marked):
    """Where the text lies is the fonts' matter: one stroke below the other, until it is marked."""
    shape = desktop.session.run(["xdotool", "getwindowgeometry", "--shell", window])
    sizes = {name: int(value) for name, value in (line.split("=") for line in shape.split())}
    left, right = sizes["X"] + 15, sizes["X"] + sizes["WIDTH"] - 15
    for y in range(sizes["Y"] + 5, sizes["Y"] + sizes["HEIGHT"], 10):
        desktop.drag((left, y), (right, y + 20))
        if marked():
            return marked()
    raise SessionError("no text to mark")


def test_what_was_marked_in_an_alert_stays_the_primary_selection(desktop, program):
    desktop.own("primary", "before")
    window, = shown(desktop)
    marked = mark_text(desktop, window,
                       lambda: desktop.primary() not in ("before", None) and desktop.primary())
    desktop.focus(window)
    desktop.key("Escape")
    wait_until(lambda: not shown(desktop), 5, "the alert's end")
    with pytest.raises(SessionError):
        wait_until(lambda: desktop.primary() != marked, 5)
    desktop.own("primary", "after")
    wait_until(lambda: is_gone(program), 10, "its end")


def test_what_was_copied_from_an_alert_stays_on_the_clipboard(desktop, tavin, program):
    desktop.key("Tab", "Tab")
    desktop.own("clipboard", "before")
    window, = shown(desktop)
    def copied_text():
        desktop.key("ctrl+c")
        return desktop.clipboard_text() not in ("before", None) and desktop.clipboard_text()
    copied = mark_text(desktop, window, copied_text)
    desktop.own("primary", "of another program")
    desktop.focus(window)
    desktop.key("Escape")
    wait_until(lambda: not shown(desktop), 5, "the alert's end")
    with pytest.raises(SessionError):
        wait_until(lambda: is_gone(program), 5)
    assert desktop.clipboard_text() == copied
    desktop.own("clipboard", "after")
    wait_until(lambda: is_gone(program), 10, "its end")


def test_what_is_typed_stands_in_no_argument_and_no_variable(desktop, engine, tavin):
    # The icon in this tray keeps the program, so that it can be looked into after the alert.
    menu = Tray(desktop, "trayer").open_menu()
    menu.choose_with_keys("Set API Key")
    desktop.key("Return")
    wait_for_alert(desktop)
    desktop.session.run(["xdotool", "type", TYPED])
    pid, = window_programs(tavin)

    def assert_nowhere():
        for process in (pid, tavin.process.pid):
            for name in ("cmdline", "environ"):
                assert TYPED.encode() not in read(process, name)
    assert_nowhere()
    desktop.key("Return")
    assert [body["key"] for body in engine.wait_for("/key")] == [TYPED]
    assert_nowhere()
    assert not [name for name in os.listdir(f"/proc/{pid}/fd") if "deleted" in
                os.readlink(f"/proc/{pid}/fd/{name}")]


@pytest.fixture
def own_tree(tmp_path, build):
    for part in ("bin", "lib", "share"):
        shutil.copytree(os.path.join(build, part), tmp_path / part, symlinks=True,
                        ignore=lambda folder, names: [name for name in names if folder.endswith("bin")
                                                      and name != "tavin"])
    return tmp_path


def test_an_upgrade_leaves_a_running_tavin_its_own(desktop, engine, own_tree):
    tavin = Tavin(desktop, engine, own_tree)
    program = own_tree / "lib/tavin/tavin-windows"
    program.unlink()
    program.write_text("#!/bin/sh\nexit 1\n")
    program.chmod(0o755)
    engine.status = {**engine.status, **FAILED}
    desktop.key("alt+Escape")
    wait_for_alert(desktop)
    assert tavin.process.poll() is None


def sockets(pid):
    """By their inodes."""
    links = []
    for name in os.listdir(f"/proc/{pid}/fd"):
        with contextlib.suppress(FileNotFoundError):
            links.append(os.readlink(f"/proc/{pid}/fd/{name}"))
    return {link[len("socket:["):-1] for link in links if link.startswith("socket:[")}


def names_of_sockets():
    with open("/proc/net/unix", encoding="utf-8", errors="replace") as f:
        lines = [line.split(maxsplit=7) for line in f.readlines()[1:]]
    return {line[6]: line[7].strip() if len(line) > 7 else "" for line in lines}


def test_its_socket_has_no_name_by_which_others_could_reach_it(program, tavin):
    names = names_of_sockets()
    local = [names[inode] for pid in (program, tavin.process.pid) for inode in sockets(pid)
             if inode in names]
    assert len(local) >= 2
    assert set(local) == {""}


@pytest.fixture
def pair(desktop, tmp_path, build):
    yield Pair(desktop, make_tree(str(tmp_path / "tree"), build))
    desktop.close()
    wait_until(lambda: not listening(), 10, "end of the engine")


def test_its_socket_is_no_other_childs(desktop, pair):
    """Also not of an engine that is started while the program runs."""
    engine, = engines(desktop.session)
    pair.answer({**IDLE, **FAILED})
    desktop.key("alt+Escape")
    wait_for_alert(desktop)
    program, = window_programs(pair.tavin)
    os.kill(engine, signal.SIGKILL)
    wait_until(lambda: listening() and engines(desktop.session) not in ([], [engine]), 20,
               "another engine")
    engine, = engines(desktop.session)
    assert os.readlink(f"/proc/{program}/fd/0") == "/dev/null"
    held = [sockets(pid) for pid in (program, engine, pair.tavin.process.pid)]
    assert all(held)
    assert len(set.union(*held)) == sum(map(len, held))


def test_it_lives_as_long_as_an_old_style_tray_has_the_icon(desktop, tavin):
    tray = Tray(desktop, "trayer")
    tray.wait_for_icon()
    pid, = window_programs(tavin)
    os.kill(pid, signal.SIGKILL)
    wait_until(lambda: window_programs(tavin) not in ([], [pid]), 10, "another")
    tray.wait_for_icon()
    tray.open_menu().close()
    tray.process.terminate()
    wait_until(lambda: window_programs(tavin) == [], 15, "its end")
