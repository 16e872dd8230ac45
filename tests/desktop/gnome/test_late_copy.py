"""A copy that lands long after the capture is over leaves the clipboard to its user, on GNOME too."""

import random
import signal
import time

import pytest
from driver import SPEAK
from session import wait_until

TEXT = "copied too late"
COPIED = "what the user had copied"


@pytest.fixture(params=[0.6, 1.5, 3])
def bare_field(request, desktop, build):
    return desktop.open_bare_field(build, TEXT, request.param, QT_QPA_PLATFORM="xcb")


def press(desktop):
    desktop.own("clipboard", COPIED)
    since = desktop.session.log("qt6_field.log").count("asked")
    desktop.key(SPEAK)
    wait_until(lambda: desktop.session.log("qt6_field.log").count("asked") > since, 10,
               "the copy command")


def test_what_was_there_comes_back_however_late_the_copy_is(granted, desktop, engine):
    since = engine.mark()
    press(desktop)
    wait_until(lambda: desktop.titled("Qt 6 field, copied 1"), 15, "the copy")
    wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")
    assert engine.requests("/speak", since) == []


# As on the other desktops; the busy times are those above.
@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGKILL])
def test_whenever_tavin_ends_only_a_copy_that_comes_later_stays(granted, desktop, number):
    press(desktop)
    time.sleep(random.Random(int(number)).uniform(0, 3))
    granted.quit(number)
    ended = time.monotonic()
    wait_until(lambda: desktop.titled("Qt 6 field, copied 1"), 15, "the copy")
    before = ended - float(desktop.session.log("qt6_field.log").rpartition("copied at ")[2])
    if before > 0.3:
        assert desktop.clipboard_text() != TEXT
    elif before < -0.3:
        assert desktop.clipboard_text() == TEXT
