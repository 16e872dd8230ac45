"""What the icon must look like in every panel. A test file imports these and gives the fixtures
`tray`, which is light, and `make_dark`, which makes it dark, where it can while it runs."""

from pixels import luminance
from session import SessionError, wait_until

TEXT = "read while the icon is looked at"
# Of the 24 by 24 points that it stands in: a line around it, or a part of its bars.
CLEAR = 45


def assert_clear(tray, is_meant=lambda panel, clear: True):
    """Once the panel has the look that is meant; some fade into it. Returns that."""
    look = None

    def shown():
        nonlocal look
        look = tray.look()
        return is_meant(*look) and look[1] >= CLEAR
    try:
        wait_until(shown, 10)
    except SessionError:
        raise AssertionError(f"the panel and the icon's clear points are {look}") from None
    return look


def is_light(panel, _clear):
    return luminance(panel) > 0.5


def is_dark(panel, _clear):
    return luminance(panel) < 0.1


def start_reading(desktop, engine):
    since = engine.mark()
    desktop.key("alt+Escape")
    engine.wait_for("/speak", since=since)
    engine.status = {**engine.status, "state": "speaking"}


def test_the_icon_is_clear_on_light_and_when_the_panel_turns_dark(tray, make_dark, tavin):
    assert_clear(tray, is_light)
    tray.wait_for_icon()
    make_dark()
    assert_clear(tray, is_dark)


def test_the_icon_is_clear_while_speaking(tray, make_dark, desktop, build, engine, tavin):
    desktop.open_bare_field(build, TEXT)
    silent = assert_clear(tray, is_light)
    start_reading(desktop, engine)
    assert_clear(tray, lambda *look: is_light(*look) and look != silent)
    tray.wait_for_icon()
    make_dark()
    assert_clear(tray, is_dark)
