"""GNOME lets no program see the clipboard, save through its X display: all of it comes back."""

import os

from session import wait_until

BIG = 30_000_000


def own_clipboard(desktop, programs, *options):
    desktop.open(["/usr/bin/python3", os.path.join(programs, "clipboard_owner.py"), *options],
                 "clipboard owner")

    def copied():
        desktop.key("c")
        found = desktop.clipboard() or []
        return found if "application/x-tavin-test" in dict(found) else None
    return wait_until(copied, 15, "clipboard", interval=0.3)


def test_an_empty_clipboard_stays_empty(granted, desktop, copied_text):
    assert desktop.clipboard() is None
    assert granted.press() == [copied_text]
    assert desktop.clipboard() is None


def test_rich_contents_of_a_wayland_program_come_back(granted, desktop, programs, bare_field,
                                                      copied_text):
    before = own_clipboard(desktop, programs)
    assert "image/png" in dict(before)
    desktop.focus(bare_field)
    for _ in range(2):
        assert granted.press() == [copied_text]
        assert desktop.clipboard() == before


def test_large_contents_come_back(granted, desktop, session, tmp_path, copied_text):
    data = os.urandom(BIG)
    (tmp_path / "data").write_bytes(data)
    desktop.start(["xclip", "-quiet", "-i", "-selection", "clipboard", "-t",
                   "application/x-tavin-test", str(tmp_path / "data")])
    wait_until(lambda: desktop.clipboard() == [("application/x-tavin-test", data)], 20, "owner")
    assert granted.press() == [copied_text]
    assert desktop.clipboard() == [("application/x-tavin-test", data)]


def test_what_comes_back_is_pasted_by_a_wayland_program(granted, desktop, programs, copied_text):
    desktop.own("clipboard", "pasted afterwards")
    assert granted.press() == [copied_text]
    desktop.open(["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), ""], "GTK 4 field")

    def pasted():
        desktop.key("ctrl+a", "ctrl+v", "ctrl+a")
        return desktop.primary() == "pasted afterwards"
    wait_until(pasted, 10, "the pasted text", interval=0.3)


def test_reading_a_visible_selection_leaves_the_owner_alone(tavin, desktop, programs):
    before = own_clipboard(desktop, programs)
    text = "read by accessibility"
    desktop.open(["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), text], "GTK 4 field")
    desktop.select_until(text, lambda: desktop.key("ctrl+a"))
    assert tavin.press() == [text]
    assert desktop.clipboard() == before
