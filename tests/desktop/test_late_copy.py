"""A program that copies long after it was asked to leaves the clipboard to its user all the same."""

import signal
import time

import pytest
from driver import SPEAK, Tavin
from late_copies import COPIED, MOMENT, TEXT, end_after, has_copied, moments, press_until_asked
from session import wait_until

# Of the capture's wait for the copy.
PATIENCE = 0.4


def press_and_let_it_copy(desktop, build, busy):
    """Returns when the program was asked to copy."""
    desktop.own("clipboard", COPIED)
    desktop.open_bare_field(build, TEXT, busy)
    press_until_asked(desktop)


def press_in_time(desktop, engine):
    """Presses the shortcut. False where this machine was so busy that the press may have been on its way for
    longer than the second, or have ended later after its arrival than the half, that Tavin allows it."""
    since = engine.mark()
    begun = time.monotonic()
    desktop.key(SPEAK)
    pressed = time.monotonic() - begun
    engine.wait_for("/status", since=since)
    return pressed < 0.4 and time.monotonic() - begun < 0.9


def repeat_until_in_time(attempt):
    """At most three times."""
    assert any(attempt(number) for number in (1, 2, 3)), "each press was on its way for too long"


def press_in_vain(tavin, desktop, build, busy):
    """Returns when the capture is over, and what is pressed now is not the shortcut's end."""
    desktop.own("clipboard", COPIED)
    desktop.open_bare_field(build, TEXT, busy)
    assert tavin.press() == []
    time.sleep(0.2)


@pytest.mark.parametrize("busy", [0, 0.2, 0.35, 0.45, 0.55, 0.7, 1, 1.5, 2, 3])
def test_what_was_there_comes_back_however_late_the_copy_is(tavin, desktop, engine, build, busy):
    since = engine.mark()
    press_and_let_it_copy(desktop, build, busy)
    has_copied(desktop)
    wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")
    if busy < PATIENCE - 0.1:
        engine.wait_for("/speak", since=since)
    elif busy > PATIENCE:
        assert engine.requests("/speak", since) == []


def test_an_empty_clipboard_is_empty_again(tavin, desktop, build):
    desktop.open_bare_field(build, TEXT, 1)
    assert desktop.clipboard_text() is None
    desktop.key(SPEAK)
    has_copied(desktop)
    wait_until(lambda: desktop.clipboard_text() is None, 5, "the empty clipboard")


# The second press comes while the program is busy; the first copy, before its command or after.
@pytest.mark.parametrize("again", [0.6, 0.9, 1, 1.1, 1.15, 1.2])
def test_two_presses_that_are_both_answered_late_leave_it_too(tavin, desktop, engine, build, again):
    def attempt(number):
        desktop.own("clipboard", COPIED)
        press_until_asked(desktop)
        time.sleep(again)
        in_time = press_in_time(desktop, engine)
        has_copied(desktop, 2 * number)
        if in_time:
            wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")
        return in_time

    desktop.open_bare_field(build, TEXT, 1.2)
    repeat_until_in_time(attempt)


def test_a_copy_between_the_next_press_and_its_capture_is_undone(tavin, desktop, engine, build):
    def attempt(number):
        desktop.own("clipboard", COPIED)
        press_until_asked(desktop)
        time.sleep(0.6)
        engine.hang()  # Which the next press asks for its status first, and waits.
        in_time = press_in_time(desktop, engine)
        has_copied(desktop, number)
        if in_time:
            wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")
        engine.answer_again()
        return in_time

    desktop.open_bare_field(build, TEXT, 1.2)
    repeat_until_in_time(attempt)


def test_what_the_user_copies_meanwhile_stays(tavin, desktop, build):
    press_in_vain(tavin, desktop, build, 2)
    assert tavin.press() == []  # One copy of Tavin's is awaited when the user's comes.
    time.sleep(0.2)
    desktop.key("ctrl+Insert")
    has_copied(desktop, 3)
    assert desktop.clipboard_text() == TEXT
    time.sleep(0.3)  # Nothing takes it away again.
    assert desktop.clipboard_text() == TEXT


def test_what_the_user_does_right_before_a_press_still_counts(tavin, desktop, engine, build):
    press_in_vain(tavin, desktop, build, 2)
    desktop.key("ctrl+Insert")
    engine.hang()  # Which the next press asks for its status first, and waits.
    desktop.key(SPEAK)
    has_copied(desktop)
    time.sleep(0.3)  # Nothing takes it away again.
    assert desktop.clipboard_text() == TEXT


@pytest.mark.parametrize("key", ["a", None])
def test_what_another_program_copies_meanwhile_stays(tavin, desktop, build, key):
    press_in_vain(tavin, desktop, build, 30)
    if key:
        desktop.key(key)
    desktop.own("clipboard", "from elsewhere")
    time.sleep(0.3)  # Nothing takes it away again.
    assert desktop.clipboard_text() == "from elsewhere"


# The copy comes before Tavin has waited for half a second.
@pytest.mark.parametrize(("busy", "after"), [(0.1, 0.05), (0.1, 0.1), (0.1, 0.12), (0.1, 0.15),
                                             (0.6, 0.2), (0.6, 0.35), (0.6, 0.5), (2, 1.7)])
def test_quitting_waits_for_a_copy_that_lands_soon(tavin, desktop, build, busy, after):
    press_and_let_it_copy(desktop, build, busy)
    time.sleep(after)
    code, seconds = tavin.quit()
    assert code == 0
    assert seconds < 1.2
    has_copied(desktop)
    # What Tavin gave back has ended with it, unless a clipboard manager keeps it.
    assert desktop.clipboard_text() != TEXT


def test_quitting_waits_half_a_second_at_most(tavin, desktop, build):
    press_and_let_it_copy(desktop, build, 30)
    code, seconds = tavin.quit()
    assert code == 0
    assert 0.4 < seconds < 1
    assert desktop.clipboard_text() == COPIED


@pytest.mark.parametrize(("busy", "after"), map(moments, range(8)))
@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGKILL])
def test_whenever_tavin_ends_only_a_copy_that_comes_later_stays(tavin, desktop, build, number, busy, after):
    press_and_let_it_copy(desktop, build, busy)
    before = end_after(tavin, desktop, number, after)
    if before > MOMENT:
        # What Tavin gave back has ended with it.
        assert desktop.clipboard_text() != TEXT
    elif before < -MOMENT:
        assert desktop.clipboard_text() == TEXT


def test_after_a_kill_the_next_start_leaves_the_clipboard_to_its_user(tavin, desktop, engine, build):
    press_and_let_it_copy(desktop, build, 0.6)
    tavin.quit(signal.SIGKILL)
    has_copied(desktop)
    desktop.own("clipboard", "copied since")
    Tavin(desktop, engine, build)
    press_until_asked(desktop)
    has_copied(desktop, 2)
    wait_until(lambda: desktop.clipboard_text() == "copied since", 5, "the user's clipboard")
