"""What the user still holds down when the copy is made, and afterwards."""

import os

import pytest
from driver import Tavin

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


@pytest.fixture
def ctrl_opt_r(session):
    path = os.path.join(session.env["XDG_CONFIG_HOME"], "tavin/tavin.conf")
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as f:
        f.write("[General]\nshortcut=ctrl-opt-r\n")
    yield
    os.unlink(path)


def test_the_key_again_before_the_others_are_let_go_of_is_the_programs(
        ctrl_opt_r, desktop, engine, build, editor):
    """KWin 5 takes what the copy released for up, and tells nobody what the hand still holds."""
    Tavin(desktop, engine, build)
    since = engine.mark()
    desktop.press("ctrl+alt")
    try:
        desktop.key("r")
        assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]
        engine.status = {**engine.status, "state": "speaking"}
        desktop.key("r")
    finally:
        desktop.release("ctrl+alt")
    # In the place of the selected text.
    desktop.select_until("r", lambda: desktop.key("ctrl+a"))
    assert engine.requests("/stop", since) == []
    desktop.key("ctrl+alt+r")
    engine.wait_for("/stop", since=since)
