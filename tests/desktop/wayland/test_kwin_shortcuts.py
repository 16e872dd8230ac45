"""Tavin's shortcuts under KWin, on Wayland."""

import contextlib
import os

import pytest
from bus_panel import BusPanel
from driver import Tavin
from kwin_session import GlobalAccel, KwinSession
from session import wait_until
from wayland_session import WaylandDesktop

pytest.register_assert_rewrite("shortcut_tests")
from shortcut_tests import *  # noqa: E402,F401,F403
from shortcut_tests import CHORDS, pause, presses  # noqa: E402

COMPONENT = "app.tavin.Tavin"


@pytest.fixture(scope="module")
def session(tmp_path_factory, build):
    with KwinSession(str(tmp_path_factory.mktemp("session")), build) as private:
        yield private


@pytest.fixture
def desktop(session):
    programs = WaylandDesktop(session)
    yield programs
    programs.close()
    with contextlib.suppress(FileNotFoundError):
        os.unlink(os.path.join(session.env["XDG_CONFIG_HOME"], "tavin/tavin.conf"))


@pytest.fixture
def preset():
    return "opt-esc"


@pytest.fixture
def panel(session):
    panel = BusPanel(session)
    yield panel
    panel.close()


@pytest.fixture
def accel(session):
    return GlobalAccel(session)


@pytest.fixture
def registered(accel):
    return lambda: accel.actions(COMPONENT)


@pytest.fixture
def holder(accel):
    """Another program that holds a key for a while."""
    bits = {"shift": accel.SHIFT, "ctrl": accel.CONTROL, "alt": accel.ALT, "Escape": accel.ESCAPE}

    @contextlib.contextmanager
    def hold(chord):
        key = sum(bits[name] for name in chord.split("+"))
        assert accel.take("holder", "hold", key) == key
        yield
        accel.give_back("holder", "hold")
    return hold


def test_the_way_is_found_without_being_told(tavin):
    assert "Tavin: shortcuts by way of kde\n" in tavin.log()


def test_nothing_is_registered_twice(tavin, accel):
    assert sorted(accel.actions(COMPONENT)) == ["pause", "speak"]
    assert accel.action_at(accel.ALT | accel.ESCAPE) == (COMPONENT, "speak")


def test_a_stored_key_of_an_earlier_start_does_not_come_back(desktop, engine, build, tavin, panel,
                                                              accel):
    panel.click("⌃ Esc")
    wait_until(lambda: accel.action_at(accel.CONTROL | accel.ESCAPE), 10, "the new key")
    assert tavin.quit()[0] == 0
    Tavin(desktop, engine, build)
    assert accel.action_at(accel.CONTROL | accel.ESCAPE) == (COMPONENT, "speak")
    assert accel.action_at(accel.ALT | accel.ESCAPE) is None
