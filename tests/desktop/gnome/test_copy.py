"""The synthetic copy under GNOME on Wayland: through the portal, with the user's permission."""

import json
import os

import pytest
from driver import SPEAK, Tavin
from session import wait_until

COPIED = "what was copied before"


@pytest.fixture(autouse=True)
def copied_before(desktop):
    desktop.own("clipboard", COPIED)


def test_the_first_press_asks_and_later_ones_copy(granted, desktop, copied_text):
    before = desktop.clipboard()
    assert granted.press() == [copied_text]
    assert desktop.clipboard() == before
    assert granted.press() == [copied_text]
    assert desktop.clipboard() == before
    assert desktop.no_dialog()
    assert granted.log().count("asking the desktop") == 1


def test_presses_while_the_dialog_is_open_type_nothing(tavin, desktop, bare_field):
    assert tavin.press() == []
    dialog = desktop.permission_dialog()
    assert tavin.press() == []
    assert desktop.titled(desktop.DIALOG) == [dialog]
    desktop.decline()
    assert tavin.press() == []
    assert desktop.clipboard_text() == COPIED


def test_what_was_declined_is_asked_for_again_by_the_next_start_only(tavin, desktop, bare_field,
                                                                     engine, build):
    assert tavin.press() == []
    desktop.decline()
    wait_until(lambda: "declined" in tavin.log(), 10, "the answer")
    wait_until(lambda: desktop.has_keyboard(bare_field), 10, "the program in front")
    assert tavin.press() == []
    assert desktop.no_dialog()
    assert tavin.quit()[0] == 0
    # The settings daemon lets go of a key a moment later; the next one's press would be that key's.
    wait_until(lambda: not desktop.is_shortcut(SPEAK), 10, "the key's release")
    again = Tavin(desktop, engine, build, log="again.log")
    assert again.press() == []
    desktop.permission_dialog()


def test_accessibility_goes_on_working_without_leave(tavin, desktop, bare_field, programs):
    assert tavin.press() == []
    desktop.decline()
    text = "read by accessibility"
    desktop.open(["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), text], "GTK 4 field")
    desktop.select_until(text, lambda: desktop.key("ctrl+a"))
    assert tavin.press() == [text]


@pytest.mark.parametrize("held", ["alt+Escape", "alt"])
def test_while_the_shortcut_is_held_no_chord_is_made(granted, desktop, engine, held):
    owner = desktop.selection_owner("clipboard")
    since = engine.mark()
    desktop.press(SPEAK)
    try:
        if held == "alt":
            desktop.release("Escape")
        # One from the press and one from the capture that follows.
        engine.wait_for("/status", count=2, since=since)
        granted.action("stop")
        engine.wait_for("/stop", since=since)
    finally:
        desktop.release(held)
    assert engine.requests("/speak", since) == []
    assert desktop.selection_owner("clipboard") == owner


def test_a_portal_that_restarts_is_asked_again(granted, desktop, session, bare_field, copied_text):
    os.kill(session.owner("org.freedesktop.portal.Desktop"), 15)
    wait_until(lambda: "the desktop's portal has ended" in granted.log(), 10, "its end")
    assert granted.press() == []
    desktop.share_again()
    wait_until(lambda: desktop.has_keyboard(bare_field), 10, "the program in front")
    wait_until(lambda: granted.log().count("lets Tavin press") == 2, 10, "permission")
    assert granted.press() == [copied_text]


def test_a_user_who_stops_it_is_asked_again_by_the_next_press(granted, desktop, session, bare_field,
                                                             copied_text):
    # The button in the shell's bar ends the test's own input, too, which lets go of what it pressed:
    # no release can follow.
    icon = "Main.panel.statusArea.screenSharing"
    x, y, width, height = json.loads(session.evaluate(
        f"[...{icon}.get_transformed_position(), {icon}.width, {icon}.height]"))
    desktop.move(round(x + width / 2), round(y + height / 2))
    desktop.button(True)
    wait_until(lambda: "the user has ended it" in granted.log(), 10, "the end of sharing")
    session._open_input()
    desktop.focus(bare_field)
    assert granted.press() == []
    desktop.share_again()
    wait_until(lambda: granted.log().count("lets Tavin press") == 2, 10, "permission")
    wait_until(lambda: desktop.has_keyboard(bare_field), 10, "the program in front")
    assert granted.press() == [copied_text]
