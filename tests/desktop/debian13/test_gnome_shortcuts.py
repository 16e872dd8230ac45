"""Tavin's shortcuts under GNOME 48, whose portal asks once."""

import os

import pytest
from bus_panel import BusPanel
from driver import Tavin
from gnome_portal import PortalDesktop, PortalGnome
from session import wait_until

pytest.register_assert_rewrite("shortcut_tests")
from shortcut_tests import (  # noqa: E402,F401
    CHORDS, LABELS, assert_each_works, pause, test_a_held_key_is_one_press,
    test_a_press_of_speak_looks_for_a_selection, test_each_shortcut_runs_its_command,
    test_lock_keys_do_not_matter, warning)

KEYCODES = {"Escape": 9, "r": 27}
BITS = {"shift": 1, "ctrl": 4, "alt": 8}


@pytest.fixture(scope="module")
def session(tmp_path_factory, build):
    with PortalGnome(str(tmp_path_factory.mktemp("session")), build, keeps_keys=True) as private:
        yield private


@pytest.fixture
def preset(session):
    """Alt+Escape is GNOME's own."""
    path = os.path.join(session.env["XDG_CONFIG_HOME"], "tavin/tavin.conf")
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as f:
        f.write("[General]\nshortcut=ctrl-esc\n")
    return "ctrl-esc"


@pytest.fixture
def desktop(session, preset):
    programs = PortalDesktop(session)
    yield programs
    programs.close()


@pytest.fixture
def panel(session):
    panel = BusPanel(session)
    yield panel
    panel.close()


def is_held(session, chord):
    *modifiers, key = chord.split("+")
    mask = sum(BITS[name] for name in modifiers)
    return session.evaluate(
        f"global.display.get_keybinding_action({KEYCODES[key]}, {mask})") not in ("", "0")


@pytest.fixture
def ready(session, desktop):
    """Answers the dialog where the desktop asks; it takes the keys a moment later."""
    def wait(chord):
        def held():
            return is_held(session, chord) and is_held(session, pause(chord))
        wait_until(lambda: held() or desktop.shortcut_dialogs(), 20, chord)
        if not held():
            desktop.add_shortcuts()
        wait_until(held, 10, chord)
    return wait


def test_the_dialog_comes_once(session, desktop, engine, build, panel, preset):
    session.forget_shortcuts()
    tavin = Tavin(desktop, engine, build)
    assert ", shortcuts portal, " in tavin.log()
    assert warning(preset) in panel.titles()
    desktop.add_shortcuts()
    wait_until(lambda: warning(preset) not in panel.titles(), 10, "the answer")
    assert f"Shortcut: {LABELS[preset]}" in panel.titles()
    assert_each_works(desktop, engine, CHORDS[preset])
    assert tavin.quit()[0] == 0
    wait_until(lambda: not is_held(session, CHORDS[preset]), 10, "the key given back")

    again = Tavin(desktop, engine, build, log="again.log")
    wait_until(lambda: again.log().count(" available") == 2, 10, "the keys")
    wait_until(lambda: is_held(session, CHORDS[preset]), 10, "the key")
    assert_each_works(desktop, engine, CHORDS[preset])
    assert desktop.titled(desktop.SHORTCUT_DIALOG) == []


def test_a_dialog_that_was_cancelled_does_not_come_back(session, desktop, engine, build, panel,
                                                        preset):
    session.forget_shortcuts()
    tavin = Tavin(desktop, engine, build)
    desktop.cancel_shortcuts()
    wait_until(lambda: "declined" in tavin.log() or "portal failed" in tavin.log(), 10, "the answer")
    assert warning(preset) in panel.titles()
    assert not is_held(session, CHORDS[preset])
    # The menu and the bus serve as before.
    engine.status = {**engine.status, "state": "speaking"}
    since = engine.mark()
    tavin.action("stop")
    engine.wait_for("/stop", since=since)
    assert desktop.titled(desktop.SHORTCUT_DIALOG) == []


def test_a_key_of_gnome_is_refused_and_another_preset_works(session, desktop, engine, build, panel,
                                                            preset, ready):
    """The portal would grant Alt+Escape, and its presses would never come."""
    os.unlink(os.path.join(session.env["XDG_CONFIG_HOME"], "tavin/tavin.conf"))
    tavin = Tavin(desktop, engine, build)
    assert "it is the key of org.gnome.desktop.wm.keybindings cycle-windows" in tavin.log()
    assert warning("opt-esc") in panel.titles()
    panel.click(LABELS["ctrl-esc"])
    ready(CHORDS["ctrl-esc"])
    wait_until(lambda: f"Shortcut: {LABELS['ctrl-esc']}" in panel.titles(), 10, "the shortcut")
    assert_each_works(desktop, engine, CHORDS["ctrl-esc"])
    granted = session.granted_shortcuts()
    assert "speak-alt-escape" not in granted
    assert "Tavin: Speak Selection or Stop" in granted


def test_a_portal_that_was_killed_comes_back_with_the_keys(session, desktop, engine, build, preset,
                                                           ready):
    """Nobody else may need it, and while the keys are gone no press can have it started."""
    tavin = Tavin(desktop, engine, build)
    ready(CHORDS[preset])
    os.kill(session.owner("org.freedesktop.portal.Desktop"), 9)
    wait_until(lambda: not is_held(session, CHORDS[preset]), 10, "the key's end")
    wait_until(lambda: is_held(session, CHORDS[preset]), 20, f"the key; it said: {tavin.log()}")
    assert_each_works(desktop, engine, CHORDS[preset])
    assert desktop.titled(desktop.SHORTCUT_DIALOG) == []
