"""Programs that accessibility does not see into: their selection is copied."""

import pytest

TEXT = "Grüße, copied by key.\nSecond line"
COPIED = "what was copied before"


@pytest.fixture(params=["gedit", "mousepad"])
def editor(request, desktop, tmp_path):
    """A GTK 3 editor that is not on the accessibility bus, its text selected."""
    path = tmp_path / "letter.txt"
    path.write_text(TEXT, encoding="utf-8")
    command = {"gedit": ["gedit", "--standalone"], "mousepad": ["mousepad", "--disable-server"]}
    desktop.own("clipboard", COPIED)
    window = desktop.open([*command[request.param], str(path)], "letter.txt",
                          env={**desktop.session.env, "NO_AT_BRIDGE": "1"})
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


def test_text_is_copied_and_the_clipboard_given_back(tavin, desktop, editor):
    before = desktop.clipboard()
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() == before
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() == before


def test_what_the_user_holds_down_does_not_matter(tavin, desktop, engine, editor):
    since = engine.mark()
    desktop.press("alt")
    try:
        desktop.key("Escape")
        assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]
    finally:
        desktop.release("alt")
