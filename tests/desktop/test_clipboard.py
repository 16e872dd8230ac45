"""The clipboard after a press holds what it held before, byte for byte and in its order."""

import os

from session import wait_until

TEXT = "only a copy brings this text"


def own_clipboard(desktop, programs):
    desktop.open(["/usr/bin/python3", os.path.join(programs, "clipboard_owner.py")],
                 "clipboard owner")

    def copied():
        desktop.key("c")
        return desktop.clipboard()
    return wait_until(copied, 15, "clipboard", interval=0.3)


def test_rich_contents_come_back(tavin, desktop, programs, bare_field):
    before = own_clipboard(desktop, programs)
    assert "image/png" in dict(before)
    desktop.focus(bare_field)
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() == before
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() == before


def test_an_empty_clipboard_stays_empty(tavin, desktop, bare_field):
    assert desktop.clipboard() is None
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() is None


def test_reading_a_visible_selection_leaves_the_owner_alone(tavin, desktop, build, programs):
    before = own_clipboard(desktop, programs)
    field = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    desktop.focus(field)
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() == before
    # Their owner's window is untouched: the clipboard was never taken over.
    assert dict(before)["application/x-tavin-test"] == bytes(range(256)) * 300
