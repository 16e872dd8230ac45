"""A program that keeps what was copied, beside Tavin: what the user copied last stays in both."""

import signal
import time

import pytest
from late_copies import COPIED, MOMENT, TEXT, end_after, has_copied, moments
from session import wait_until
from test_late_copy import press_and_let_it_copy


@pytest.fixture(autouse=True)
def manager(desktop):
    program = desktop.start(["xfce4-clipman"])
    wait_until(lambda: desktop.selection_owner("CLIPBOARD_MANAGER"), 20, "the clipboard manager")
    yield program
    assert program.poll() is None


@pytest.mark.parametrize("busy", [0, 0.2, 0.45, 0.7, 1.5, 3])
def test_what_was_there_comes_back_however_late_the_copy_is(tavin, desktop, build, busy):
    press_and_let_it_copy(desktop, build, busy)
    has_copied(desktop)
    wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")


@pytest.mark.parametrize(("busy", "after"), map(moments, range(8)))
def test_what_came_back_outlives_tavin_that_quits(tavin, desktop, build, busy, after):
    press_and_let_it_copy(desktop, build, busy)
    before = end_after(tavin, desktop, signal.SIGTERM, after)
    if before > MOMENT:
        wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")
    elif before < -MOMENT:
        assert desktop.clipboard_text() == TEXT


def what_came_back_is_there(desktop, build):
    press_and_let_it_copy(desktop, build, 0.6)
    has_copied(desktop)
    wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")


# This one never says that it keeps what it is asked to keep: it keeps what it has read.
def test_a_slow_manager_reads_what_came_back_before_tavin_ends(tavin, desktop, build, manager):
    manager.send_signal(signal.SIGSTOP)
    what_came_back_is_there(desktop, build)
    tavin.process.send_signal(signal.SIGTERM)
    time.sleep(0.7)
    assert tavin.process.poll() is None
    manager.send_signal(signal.SIGCONT)
    assert tavin.process.wait(5) == 0
    wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")


def test_a_manager_that_hangs_is_waited_for_two_seconds(tavin, desktop, build, manager):
    manager.send_signal(signal.SIGSTOP)
    what_came_back_is_there(desktop, build)
    code, seconds = tavin.quit()
    manager.send_signal(signal.SIGCONT)
    assert code == 0
    assert 1.9 < seconds < 3


# Nobody hands the manager anything then: whether it has what came back is its own affair.
@pytest.mark.parametrize(("busy", "after"), map(moments, range(8)))
def test_what_was_undone_does_not_come_back_when_tavin_is_killed(tavin, desktop, build, busy, after):
    press_and_let_it_copy(desktop, build, busy)
    before = end_after(tavin, desktop, signal.SIGKILL, after)
    if before > MOMENT:
        time.sleep(0.3)  # Nothing brings it back.
        assert desktop.clipboard_text() in (COPIED, None)
    elif before < -MOMENT:
        assert desktop.clipboard_text() == TEXT
