"""Tavin's shortcuts under KWin, on Wayland."""

import contextlib
import os
import signal

import pytest
from bus_panel import BusPanel
from driver import Tavin
from kwin_session import GlobalAccel, KwinSession
from session import wait_until
from wayland_session import WaylandDesktop

pytest.register_assert_rewrite("shortcut_tests")
from shortcut_tests import *  # noqa: E402,F401,F403
from shortcut_tests import CHORDS, assert_each_works, warning  # noqa: E402

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
def ready():
    return lambda chord: None  # KWin has answered.


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
        try:
            yield
        finally:
            accel.give_back("holder", "hold")
    return hold


def test_the_way_is_found_without_being_told(tavin):
    assert ", shortcuts kde, " in tavin.log()


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


@pytest.fixture
def under(tmp_path, build, engine):
    """Starts Tavin with ⌃⌥ R in a session with such layouts, of which one is used."""
    with contextlib.ExitStack() as end:
        def start(layouts, variants="", used=0):
            session = end.enter_context(
                KwinSession(str(tmp_path), build, layout=(layouts, variants)))
            if used:
                session.use_layout(used)
            folder = os.path.join(session.env["XDG_CONFIG_HOME"], "tavin")
            os.mkdir(folder)
            with open(os.path.join(folder, "tavin.conf"), "w", encoding="utf-8") as f:
                f.write("[General]\nshortcut=ctrl-opt-r\n")
            desktop = WaylandDesktop(session)
            end.callback(desktop.close)
            return desktop, Tavin(desktop, engine, build)
        yield start


@pytest.mark.parametrize("layouts, variants, used", [
    ("fr", "", 0), ("us", "dvorak", 0), ("ru", "", 0), ("il", "", 0), ("ru,us", ",", 0),
    ("us,ru", ",", 1)])
def test_the_key_in_the_place_of_r(under, engine, layouts, variants, used):
    desktop, _ = under(layouts, variants, used)
    assert_each_works(desktop, engine, CHORDS["ctrl-opt-r"])


def test_no_letter_in_the_place_of_r_is_refused(under):
    desktop, tavin = under("brai")
    assert tavin.log().count("KDE's shortcuts have no such key") == 2
    panel = BusPanel(desktop.session)
    assert warning("ctrl-opt-r") in panel.titles()
    panel.close()


class LastingDesktop(WaylandDesktop):
    """Its programs depend on KWin for their shortcuts, and for nothing else."""

    def start(self, command, **kwargs):
        env = {**(kwargs.pop("env", None) or self.session.env), "WAYLAND_DISPLAY": "none"}
        return super().start(command, env=env, **kwargs)


@pytest.fixture
def lasting(tmp_path, build, engine):
    with KwinSession(str(tmp_path), build) as session:
        session.start_other_display()
        desktop = LastingDesktop(session)
        yield desktop
        desktop.close()


def test_kwin_restarted_while_tavin_runs(lasting, engine, build):
    tavin = Tavin(lasting, engine, build)
    chord = CHORDS["opt-esc"]
    assert_each_works(lasting, engine, chord)
    lasting.session.kill_kwin()
    lasting.session.start_kwin()
    accel = GlobalAccel(lasting.session)
    wait_until(lambda: len(accel.actions(COMPONENT)) == 2, 10, "the shortcuts")
    assert_each_works(lasting, engine, chord)
    assert tavin.quit()[0] == 0
    assert accel.actions(COMPONENT) == []


def test_a_key_lost_while_kwin_was_away(lasting, engine, build):
    session = lasting.session
    tavin = Tavin(lasting, engine, build)
    panel = BusPanel(session)
    assert warning("opt-esc") not in panel.titles()
    accel = GlobalAccel(session)
    key = accel.ALT | accel.SHIFT | accel.ESCAPE
    session.kill_kwin()
    session.write_shortcut("holder", "hold", "Alt+Shift+Esc")
    session.start_kwin()
    wait_until(lambda: warning("opt-esc") in panel.titles(), 10, f"the warning: {tavin.log()}")
    assert accel.action_at(key) == ("holder", "hold")
    lasting.key(CHORDS["opt-esc"])
    engine.wait_for("/status")
    panel.close()


def test_an_answer_that_comes_late(lasting, engine, build):
    session = lasting.session
    session.compositor.send_signal(signal.SIGSTOP)
    try:
        tavin = Tavin(lasting, engine, build)
        panel = BusPanel(session)
        assert tavin.log().count("unavailable (-1)") == 2
        assert "KDE's shortcut service has not answered yet" in tavin.log()
        assert warning("opt-esc") in panel.titles()
    finally:
        session.compositor.send_signal(signal.SIGCONT)
    wait_until(lambda: warning("opt-esc") not in panel.titles(), 10, "the answer")
    assert tavin.log().count(" available") == 2
    chord = CHORDS["opt-esc"]
    assert_each_works(lasting, engine, chord)
    panel.close()


def test_quitting_while_kwin_hangs_is_quick(lasting, engine, build):
    tavin = Tavin(lasting, engine, build)
    session = lasting.session
    session.compositor.send_signal(signal.SIGSTOP)
    try:
        code, seconds = tavin.quit()
    finally:
        session.compositor.send_signal(signal.SIGCONT)
    assert code == 0
    assert seconds < 1
    accel = GlobalAccel(session)
    wait_until(lambda: accel.actions(COMPONENT) == [], 10, "the shortcuts given back")
