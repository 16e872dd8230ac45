"""The icon in xfce4-panel and in a tray that knows XEmbed alone."""

import pytest

pytest.register_assert_rewrite("icon_tests")
from icon_tests import *  # noqa: E402,F401,F403
from icon_tests import assert_clear  # noqa: E402
from session import stop  # noqa: E402
from trays import Tray  # noqa: E402

def set_dark_mode(desktop, on):
    """Of xfce4-panel; kept by a daemon that outlives it."""
    desktop.session.run(["xfconf-query", "-c", "xfce4-panel", "-p", "/panels/dark-mode", "-s",
                         on])


@pytest.fixture(params=["xfce4-panel", "trayer"])
def tray(request, desktop):
    if request.param == "trayer":
        return Tray(desktop, "trayer", colour="0xe0e0e0")
    return Tray(desktop, "xfce4-panel", dark=False)


@pytest.fixture
def make_dark(desktop, tray):
    """Begun anew: switched while it runs, xfce4-panel sometimes keeps the icon that it drew."""
    def start_again():
        stop(tray.process)
        if tray.name == "trayer":
            tray.start_again(colour="0x202020")
            return
        set_dark_mode(desktop, "true")
        tray.start_again()
    yield start_again
    if tray.name != "trayer":
        set_dark_mode(desktop, "false")  # It stays set.


@pytest.mark.parametrize("grey", ["0x606060", "0x6c6c6c", "0x757575", "0x808080", "0x909090"])
def test_the_icon_is_clear_on_a_grey_between(desktop, tavin, grey):
    assert_clear(Tray(desktop, "trayer", colour=grey))
