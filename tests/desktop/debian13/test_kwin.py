"""What differs under KWin 6: there is no picture of its screen here, and it lets no program release
a key that another keyboard holds, but tells which modifiers are held."""

import time

import pytest

pytest.register_assert_rewrite("session_tests")
from session_tests import test_keys_reach_the_window_in_front  # noqa: E402,F401

TEXT, COPIED = "only a copy brings this text", "what was copied before"


def test_the_services_are_found_without_being_told(tavin):
    assert ("Tavin: Wayland, clipboard wlr-data-control 2, keyboard fake-input, "
            "windows plasma-window-management, Qt wayland, shortcuts kde,") in tavin.log()


def test_a_copy_gives_the_clipboard_back(tavin, desktop, bare_field):
    desktop.own("clipboard", COPIED)
    before = desktop.clipboard()
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() == before
    assert tavin.press() == [TEXT]


def test_a_hand_that_lets_go_of_alt_after_the_key(tavin, desktop, engine, bare_field):
    since = engine.mark()
    desktop.press("alt")
    try:
        desktop.key("Escape")
        time.sleep(0.3)
    finally:
        desktop.release("alt")
    assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]


def test_while_alt_is_held_nothing_is_read_and_the_next_press_reads(tavin, desktop, engine,
                                                                    bare_field):
    desktop.own("clipboard", COPIED)
    since = engine.mark()
    desktop.press("alt")
    try:
        desktop.key("Escape")
        # The shortcut's question and the capture's; then a pause, on the same queue, after it.
        engine.wait_for("/status", count=2, since=since)
        tavin.action("pause")
        engine.wait_for("/toggle-pause", since=since, seconds=15)
        tavin.action("pause")
        engine.wait_for("/toggle-pause", count=2, since=since, seconds=15)
    finally:
        desktop.release("alt")
    assert engine.requests("/speak", since) == []
    assert desktop.clipboard_text() == COPIED
    assert tavin.press() == [TEXT]
