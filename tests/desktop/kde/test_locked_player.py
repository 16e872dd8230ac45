"""The player on Plasma's locked screen."""

import glob

import pytest
from accessible import Tree
from kwin_desktop import KwinDesktop
from kwin_session import KwinSession
from own_engine import post, status, tavin_with_its_engine, wait_for
from session import wait_until

TEXT = "One is read" + " and on and on" * 20 + ". Two is read. Three is read."
BUTTONS = {"previous": "Previous track", "play": "Play or Pause media", "next": "Next track"}


@pytest.fixture(scope="module")
def session(tmp_path_factory, build):
    with KwinSession(str(tmp_path_factory.mktemp("session")), build, native=True, sound=True) as private:
        yield private


@pytest.fixture
def desktop(session):
    programs = KwinDesktop(session)
    yield programs
    programs.close()


def greeter():
    path, = glob.glob("/usr/lib/*/libexec/kscreenlocker_greet")
    return path


@pytest.fixture
def locked(desktop, build):
    """What the screen shows while it is locked, without the lock: that takes a session of logind's."""
    with tavin_with_its_engine(desktop, build):
        post("/speak", text=TEXT)
        post("/toggle-pause")
        wait_for("paused")
        tree = Tree(desktop.session)  # First: programs ask at their start whether anybody listens.
        desktop.start([greeter(), "--testing"])
        yield LockedScreen(desktop, tree)
        post("/stop")
        wait_for("idle")


class LockedScreen:
    def __init__(self, desktop, tree):
        self._desktop, self._tree, self._moves = desktop, tree, 0

    def wake(self):
        """It hides all but the clock where nobody moves the pointer for ten seconds."""
        self._moves += 1
        self._desktop.session.move(100 + self._moves % 2, 100)

    def shows(self, begin):
        self.wake()
        return any(name.startswith(begin) for name, _ in self._tree.shown("label"))

    def click(self, name):
        self.wake()
        x, y, width, height = wait_until(lambda: self._tree.box("push button", BUTTONS[name]), 20, name)
        self._desktop.click_at(x + width // 2, y + height // 2)


def test_a_locked_screen_shows_the_sentence_and_steers_the_reading(locked):
    wait_until(lambda: locked.shows("One is read"), 60, "the first sentence")
    locked.click("next")
    wait_until(lambda: locked.shows("Two is read"), 20, "the second sentence")
    locked.click("previous")
    wait_until(lambda: locked.shows("One is read"), 20, "the first sentence again")
    assert status()["state"] == "paused"
    locked.click("play")
    wait_for("speaking")
    post("/stop")
    wait_until(lambda: not locked.shows("One is read"), 20, "the end of the player")
