"""A selected password is never captured, and nothing is tried to get at it."""

import os

import pytest
from session import wait_until

PASSWORD = "correct horse battery staple"
COPIED = "what was copied before"
OLDER = "selected in another program"


@pytest.fixture(params=["qt6", "gtk4"])
def select_password(request, desktop, build, programs):
    """Opens a password field and selects the whole password, with a clipboard that is in use."""
    command = {
        "qt6": [os.path.join(build, "bin/qt6_field"), PASSWORD, "--password"],
        "gtk4": ["/usr/bin/python3", os.path.join(programs, "gtk4_password.py"), PASSWORD],
    }[request.param]

    def selected():
        desktop.key("ctrl+a")
        return desktop.windows(", all selected")

    def run():
        desktop.own("clipboard", COPIED)
        desktop.open(command, "Password field")
        wait_until(selected, 15, "selection in the field", interval=0.2)
    return run


def press_reads_nothing(tavin, desktop):
    owner = desktop.selection_owner("CLIPBOARD")
    assert owner != 0
    assert tavin.press() == []
    assert desktop.selection_owner("CLIPBOARD") == owner
    assert desktop.clipboard_text() == COPIED
    # The password was selected all the time.
    assert desktop.windows(", all selected")


def test_password_is_not_captured(tavin, desktop, select_password):
    select_password()
    press_reads_nothing(tavin, desktop)


def test_older_selection_is_not_read_in_its_place(tavin, desktop, select_password):
    desktop.own("primary", OLDER)
    select_password()
    # GTK 4 puts dots in its place, as the font has them.
    assert desktop.primary() in (OLDER, "•" * len(PASSWORD), "●" * len(PASSWORD))
    press_reads_nothing(tavin, desktop)
