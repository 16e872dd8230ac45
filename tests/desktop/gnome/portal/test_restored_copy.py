"""What GNOME 48 remembers of the permission to copy."""

import os

from driver import Tavin
from gnome_portal import PERMISSION
from session import wait_until

COPIED = "what was copied before"


def token_file_in(session):
    return os.path.join(session.env["XDG_CONFIG_HOME"], PERMISSION)


def test_the_next_start_asks_nothing(granted, desktop, session, engine, build, copied_text):
    desktop.own("clipboard", COPIED)
    assert granted.press() == [copied_text]
    assert os.stat(token_file_in(session)).st_mode & 0o777 == 0o600
    for log in ("second.log", "third.log"):  # Each word serves once.
        assert granted.quit()[0] == 0
        granted = Tavin(desktop, engine, build, log=log)
        assert granted.press() == []
        wait_until(lambda: "lets Tavin press" in granted.log(), 10, "permission")
        assert desktop.no_dialog()
        assert granted.press() == [copied_text]
        assert desktop.clipboard_text() == COPIED


def test_a_word_that_gnome_does_not_know_is_answered_by_its_dialog(desktop, session, tavin,
                                                                  bare_field, copied_text):
    os.makedirs(os.path.dirname(token_file_in(session)), exist_ok=True)
    with open(token_file_in(session), "w", encoding="utf-8") as f:
        f.write("00000000-0000-0000-0000-000000000000")
    assert tavin.press() == []
    desktop.share()
    wait_until(lambda: "lets Tavin press" in tavin.log(), 10, "permission")
    wait_until(lambda: desktop.has_keyboard(bare_field), 10, "the program in front")
    assert tavin.press() == [copied_text]
