"""A copy that lands long after the capture is over leaves the clipboard to its user, on GNOME too."""

import signal

import pytest
from late_copies import COPIED, MOMENT, TEXT, end_after, has_copied, moments, press_until_asked
from session import wait_until


@pytest.fixture
def bare_field(request, desktop, build):
    """Whose parameter is after how many seconds it copies."""
    return desktop.open_bare_field(build, TEXT, request.param, QT_QPA_PLATFORM="xcb")


@pytest.mark.parametrize("bare_field", [0.6, 1.5, 3], indirect=True)
def test_what_was_there_comes_back_however_late_the_copy_is(granted, desktop, engine):
    since = engine.mark()
    desktop.own("clipboard", COPIED)
    press_until_asked(desktop)
    has_copied(desktop)
    wait_until(lambda: desktop.clipboard_text() == COPIED, 5, "the user's clipboard")
    assert engine.requests("/speak", since) == []


# Of the seeds of other desktops those with a copy well before the end, or well after it.
@pytest.mark.parametrize(("bare_field", "after"), map(moments, [1, 3, 4, 7]), indirect=["bare_field"])
@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGKILL])
def test_whenever_tavin_ends_only_a_copy_that_comes_later_stays(granted, desktop, number, after):
    desktop.own("clipboard", COPIED)
    press_until_asked(desktop)
    before = end_after(granted, desktop, number, after)
    if before > MOMENT:
        assert desktop.clipboard_text() != TEXT
    elif before < -MOMENT:
        assert desktop.clipboard_text() == TEXT
