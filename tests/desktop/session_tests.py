"""A session under a compositor itself: what tests do in it works. A module that imports these has a
fixture `session`."""

import contextlib

import pixels
import pytest
from session import wait_until
from wayland_session import WaylandDesktop

BLUE = (0, 0, 255)


@pytest.fixture
def desktop(session):
    programs = WaylandDesktop(session)
    yield programs
    programs.close()


def middle(session):
    """The colour in the middle of the screen."""
    path = session.folder + "/picture.png"
    session.picture(path)
    picture = pixels.Picture(path)
    assert picture.size == session.size
    width, height = picture.size
    return picture.colour(width // 2, height // 2)


def test_a_window_is_in_the_picture(session, desktop):
    desktop.start(["xterm", "-fullscreen", "-bg", "#0000ff", "-e", "sleep", "60"])
    wait_until(lambda: middle(session) == BLUE, 20, "a blue screen")


def test_keys_reach_the_window_in_front(session, desktop):
    written = session.folder + "/typed"
    desktop.start(["xterm", "-e", "sh", "-c",
                   f"while read line; do echo $line >> {written}; done"])

    def typed():
        desktop.key("r", "s", "Return")
        with contextlib.suppress(FileNotFoundError), open(written, encoding="utf-8") as f:
            return "rs\n" in f.readlines()
        return False
    wait_until(typed, 20, "the line")


__all__ = ["desktop", "test_a_window_is_in_the_picture", "test_keys_reach_the_window_in_front"]
