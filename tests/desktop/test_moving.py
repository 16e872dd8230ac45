"""The actions that move about in the text that is being read, from the session bus to the real engine.

A paused reading stays where it is, so the number of steps to its end tells where that is.
"""

import pytest
from driver import Desktop
from gi.repository import Gio, GLib
from own_engine import post, status, tavin_with_its_engine, wait_for
from session import Session, wait_until

TEXT = "One is read. Two is read. Three is read.\n\nFour is read. Five is read. Six is read."


@pytest.fixture(scope="module")
def session(tmp_path_factory):
    with Session(str(tmp_path_factory.mktemp("session")), sound=True) as private:
        yield private


@pytest.fixture
def tavin(session, build):
    with tavin_with_its_engine(Desktop(session), build) as program:
        yield program


def do(tavin, *actions):
    """Returns when the engine has carried all of them out: they reach it one after the other."""
    for action in actions:
        tavin.action(action)
    before = status()["speed"]
    tavin.action("faster")
    wait_until(lambda: status()["speed"] != before, 10, "the last of the actions")
    tavin.action("slower")
    wait_until(lambda: status()["speed"] == before, 10, "the speed as it was")


@pytest.mark.parametrize(
    "actions, steps",
    [((), 6), (("next",), 5), (("next", "next", "previous"), 5), (("previous",), 6), (("next", "repeat"), 5),
     (("next-paragraph",), 3), (("next-paragraph", "next", "previous-paragraph"), 3),
     (("next-paragraph", "previous-paragraph"), 6)])
def test_each_move_is_carried_out_by_the_engine(tavin, actions, steps):
    post("/speak", text=TEXT)
    post("/toggle-pause")
    do(tavin, *actions)
    for _ in range(steps - 1):
        do(tavin, "next")
    assert status()["state"] == "paused"
    tavin.action("next")
    wait_for("idle")


def test_faster_and_slower_change_the_speed_by_a_step(tavin):
    post("/speak", text=TEXT)
    post("/toggle-pause")
    for action, speed in (("faster", 1.1), ("faster", 1.25), ("slower", 1.1), ("slower", 1.0), ("slower", 0.9)):
        tavin.action(action)
        wait_until(lambda speed=speed: status()["speed"] == speed, 10, f"the speed after {action}")
    assert status()["state"] == "paused"
    tavin.action("faster")
    tavin.action("stop")
    wait_for("idle")


def test_the_desktop_sees_a_player_while_a_text_is_read(tavin):
    def has_player():
        name = GLib.Variant("(s)", ("org.mpris.MediaPlayer2.tavin",))
        return tavin.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                   "NameHasOwner", name, None, Gio.DBusCallFlags.NONE, 5000, None)[0]

    assert not has_player()
    post("/speak", text=TEXT)
    post("/toggle-pause")
    wait_until(has_player, 10, "the player")
    tavin.action("stop")
    wait_until(lambda: not has_player(), 10, "no player")
