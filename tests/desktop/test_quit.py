"""Tavin's end, whatever brings it about, leaves no engine behind."""

import os
import signal
import time

import pytest
from driver import Desktop, Tavin
from own_engine import engines, listening
from session import Session, wait_until


@pytest.fixture
def with_real_engine(session, build):
    desktop = Desktop(session)
    tavin = Tavin(desktop, None, build)
    wait_until(listening, 30, "the engine's port")
    yield tavin
    desktop.close()
    wait_until(lambda: not engines(session) and not listening(), 10, "end of the engine")


@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGINT])
def test_a_signal_ends_both(with_real_engine, session, number):
    assert engines(session)
    code, seconds = with_real_engine.quit(number)
    assert code == 0
    assert seconds < 1
    wait_until(lambda: not engines(session), 5, "end of the engine")


def test_the_engine_ends_when_tavin_is_killed(with_real_engine, session):
    assert engines(session)
    with_real_engine.quit(signal.SIGKILL)
    wait_until(lambda: not engines(session), 5, "end of the engine")


def test_quit_with_a_recording_engine_ends_at_once(tavin):
    code, seconds = tavin.quit()
    assert code == 0
    assert seconds < 1


def test_quit_while_the_engine_hangs(tavin, desktop, engine):
    engine.hang()
    since = engine.mark()
    desktop.key("alt+Escape")
    engine.wait_for("/status", since=since)
    code, seconds = tavin.quit()
    assert code == 0
    assert seconds < 1


def test_what_a_late_copy_took_is_handed_over_to_the_clipboard_manager(tavin, desktop, build):
    manager = desktop.start(["xfsettingsd", "--no-daemon", "--replace"])
    wait_until(lambda: desktop.selection_owner("CLIPBOARD_MANAGER"), 10, "the clipboard manager")
    desktop.own("clipboard", "what the user had copied")
    desktop.open_bare_field(build, "copied too late", busy=0.8)
    desktop.key("alt+Escape")
    time.sleep(0.7)
    assert tavin.quit()[0] == 0
    wait_until(lambda: desktop.titled("Qt 6 field, copied 1"), 10, "the copy")
    assert desktop.clipboard_text() == "what the user had copied"
    assert manager.poll() is None


def test_without_a_clipboard_manager_what_came_back_ends_with_tavin(tavin, desktop, build):
    desktop.own("clipboard", "what the user had copied")
    desktop.open_bare_field(build, "copied and read")
    assert tavin.press() == ["copied and read"]
    assert desktop.clipboard_text() == "what the user had copied"
    assert tavin.quit()[0] == 0
    assert desktop.clipboard_text() is None


def test_a_second_start_hands_over_and_ends(tavin, desktop, build):
    second = desktop.start([os.path.join(build, "bin/tavin")], log="second.log")
    assert second.wait(5) == 0
    assert tavin.process.poll() is None


def test_without_a_display_it_says_so_and_fails(session, build):
    env = {k: v for k, v in session.env.items() if k != "DISPLAY"}
    desktop = Desktop(session)
    process = desktop.start([os.path.join(build, "bin/tavin")], env=env, log="no-display.log")
    assert process.wait(5) == 1
    lines = session.log("no-display.log").splitlines()
    assert len(lines) == 1
    assert "display" in lines[0]


@pytest.fixture
def hung_display(tmp_path):
    with Session(str(tmp_path), wm=None) as session, session.display_hangs():
        yield session


def test_with_a_display_that_hangs_it_says_so_and_fails(hung_display, build):
    start = time.monotonic()
    process = Desktop(hung_display).start([os.path.join(build, "bin/tavin")], log="tavin.log")
    assert process.wait(10) == 1
    assert 1.5 < time.monotonic() - start < 5
    lines = hung_display.log("tavin.log").splitlines()
    assert len(lines) == 1
    assert f"cannot connect to {hung_display.env['DISPLAY']}" in lines[0]
