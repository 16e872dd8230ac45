"""What the desktop's own player must do while Tavin reads. A test file imports these and gives the fixture
`player`:

  shows(begin)  whether it shows a sentence that begins so
  is_there()    whether it shows a reading at all
  click(name)   clicks at its button "previous", "play", "pause" or "next"
"""

import pytest
from own_engine import post, status, tavin_with_its_engine, wait_for
from session import wait_until

# The first goes on for longer than a test.
TEXT = "One is read" + " and on and on" * 20 + ". Two is read. Three is read."


@pytest.fixture
def tavin(desktop, player, build):
    with tavin_with_its_engine(desktop, build) as program:
        yield program
        if status()["state"] != "idle":
            post("/stop")
            wait_for("idle")


@pytest.fixture
def paused(tavin, player):
    """Where it is paused a reading stays."""
    post("/speak", text=TEXT)
    post("/toggle-pause")
    wait_for_sentence(player, "One is read")


def wait_for_sentence(player, begin):
    wait_until(lambda: player.shows(begin), 20, f"the player with {begin}")


def test_it_shows_the_sentence_while_a_text_is_read_or_paused_and_only_then(tavin, player):
    assert not player.is_there()
    post("/speak", text=TEXT)
    wait_for_sentence(player, "One is read")
    post("/toggle-pause")
    wait_for("paused")
    assert player.is_there()
    post("/next")
    wait_for_sentence(player, "Two is read")
    post("/stop")
    wait_until(lambda: not player.is_there(), 20, "the end of the player")


def test_its_buttons_steer_the_reading(paused, player):
    player.click("next")
    wait_for_sentence(player, "Two is read")
    player.click("previous")
    wait_for_sentence(player, "One is read")
    assert status()["state"] == "paused"
    player.click("play")
    wait_for("speaking")
    player.click("pause")
    wait_for("paused")


def test_media_keys_steer_the_reading(paused, player, desktop):
    desktop.key("XF86AudioNext")
    wait_for_sentence(player, "Two is read")
    desktop.key("XF86AudioPrev")
    wait_for_sentence(player, "One is read")
    desktop.key("XF86AudioPlay")
    wait_for("speaking")
    desktop.key("XF86AudioPlay")
    wait_for("paused")
    desktop.key("XF86AudioStop")
    wait_for("idle")


__all__ = ["tavin", "paused", *[name for name in dir() if name.startswith("test_")]]
