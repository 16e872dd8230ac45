"""Tavin's shortcuts on X11, from the keyboard to the engine, the menu and the log."""

import os

import pytest
from bus_panel import BusPanel
from driver import PAUSE, SPEAK
from key_grabs import KeyGrabs

pytest.register_assert_rewrite("shortcut_tests")
from shortcut_tests import (  # noqa: E402,F401
    test_a_held_key_is_one_press, test_a_key_that_is_taken_is_refused,
    test_a_key_that_is_taken_leaves_another_preset_working,
    test_a_press_of_speak_looks_for_a_selection, test_another_shortcut_chosen_in_the_menu,
    test_each_shortcut_runs_its_command, test_lock_keys_do_not_matter,
    test_quitting_gives_everything_back)

TEXT = "selected before and after the press"


@pytest.fixture
def preset(session):
    yield "opt-esc"
    path = os.path.join(session.env["XDG_CONFIG_HOME"], "tavin/tavin.conf")
    if os.path.exists(path):
        os.unlink(path)


@pytest.fixture
def ready():
    return lambda chord: None  # The display has answered.


@pytest.fixture
def panel(session):
    panel = BusPanel(session)
    yield panel
    panel.close()


@pytest.fixture
def grabs(session):
    client = KeyGrabs(session.env["DISPLAY"])
    yield client
    client.close()


@pytest.fixture(params=["core", "xinput2"])
def holder(grabs, request):
    return lambda chord: grabs.held(chord, by_xinput2=request.param == "xinput2")


@pytest.fixture
def registered(grabs):
    return lambda: [chord for chord in (SPEAK, PAUSE) if not grabs.is_free(chord)]


def test_the_focused_program_keeps_its_focus_and_its_selection(tavin, desktop, build):
    window = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    for _ in range(3):
        assert tavin.press() == [TEXT]
        assert desktop.has_keyboard(window)
        assert desktop.primary() == TEXT


def test_a_layout_switched_while_it_runs_leaves_the_keys_where_they_are(tavin, desktop, build, session):
    desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    try:
        for layout in ("de", "us(dvorak)", "ru"):
            session.run(["setxkbmap", layout])
            assert tavin.press() == [TEXT]
    finally:
        session.run(["setxkbmap", "us"])
