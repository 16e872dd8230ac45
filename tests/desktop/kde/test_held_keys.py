"""What the user still holds down when the copy is made, and afterwards."""

import pytest

TEXT = "only a copy brings this text"


@pytest.fixture
def editor(desktop, tmp_path):
    """An editor that is not on the accessibility bus, its text selected."""
    path = tmp_path / "letter.txt"
    path.write_text(TEXT, encoding="utf-8")
    window = desktop.open(["gedit", "--standalone", str(path)], "letter.txt",
                          env={**desktop.session.env, "NO_AT_BRIDGE": "1"})
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


@pytest.mark.parametrize("held", ["alt", "alt+super", "alt+shift+ctrl"])
def test_held_keys_neither_spoil_the_copy_nor_stay_down(tavin, desktop, engine, editor, held):
    since = engine.mark()
    desktop.press("alt")
    desktop.key("Escape")
    rest = held.partition("+")[2]
    if rest:
        desktop.press(rest)
    try:
        assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]
    finally:
        desktop.release(held)
    # Plain letters take the place of the selected text.
    desktop.key("a", "s")
    desktop.select_until("as", lambda: desktop.key("ctrl+a"))
    assert tavin.press() == ["as"]
