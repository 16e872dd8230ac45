"""The alerts come to the front, one after the other, and hold nothing up."""

import os

import pytest
from alerts import FAILED, shown, take_permission_away, wait_for_alert
from session import wait_until
from test_clipboard import own_clipboard

TEXT = "text beside an alert"


@pytest.fixture
def field(desktop, build):
    """Another program, which the user works in, with all of its text selected."""
    window = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


@pytest.fixture
def alert(desktop, engine, tavin, field):
    """The alert that the voice's setup failed; the engine is well again behind it."""
    well = engine.status
    engine.status = {**well, **FAILED}
    desktop.key("alt+Escape")
    window = wait_for_alert(desktop)
    engine.status = well
    return window


@pytest.fixture
def without_permission(session, tavin):
    take_permission_away(tavin)
    yield
    session.enable_accessibility()


def test_it_takes_the_keyboard_from_the_program_in_front(desktop, alert):
    desktop.key("Return")
    wait_until(lambda: not shown(desktop), 5, "the alert's end")


def test_closing_it_does_not_quit(desktop, tavin, alert, field):
    desktop.key("Escape")
    wait_until(lambda: not shown(desktop), 5, "the alert's end")
    desktop.focus(field)
    assert tavin.press() == [TEXT]


def test_speech_goes_on_beside_it(desktop, tavin, alert, field):
    desktop.focus(field)
    assert tavin.press() == [TEXT]
    assert tavin.press() == [TEXT]
    assert shown(desktop) == [alert]


def test_two_presses_without_permission_show_two_one_after_the_other(
        desktop, engine, tavin, without_permission):
    def press():
        since = engine.mark()
        desktop.key("alt+Escape")
        engine.wait_for("/status", count=2, since=since)
    press()
    first = wait_for_alert(desktop)
    press()
    tavin.action("pause")
    engine.wait_for("/toggle-pause")
    assert shown(desktop) == [first]
    desktop.key("Escape")
    second = wait_for_alert(desktop, other_than=first)
    desktop.key("Escape")
    wait_until(lambda: second not in shown(desktop), 5, "the second alert's end")
    assert shown(desktop) == []
    assert engine.requests("/speak") == []


@pytest.fixture
def given_back(desktop, tavin, programs, build):
    """What Tavin put back on the clipboard after a copy, and serves itself."""
    before = own_clipboard(desktop, programs)
    desktop.open_bare_field(build, TEXT)
    assert tavin.press() == [TEXT]
    return before


def test_the_clipboard_is_served_beside_an_alert(desktop, engine, given_back):
    engine.status = {**engine.status, **FAILED}
    desktop.key("alt+Escape")
    wait_for_alert(desktop)
    assert desktop.clipboard() == given_back


def test_the_clipboard_is_served_while_the_engine_hangs(desktop, engine, given_back):
    engine.hang()
    since = engine.mark()
    desktop.key("alt+Escape")
    engine.wait_for("/status", since=since)
    assert desktop.clipboard() == given_back
