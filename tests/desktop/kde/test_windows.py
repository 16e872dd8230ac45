"""Tavin's own windows under KWin."""

import os

import pytest
from bus_panel import BusPanel
from session import wait_until

TEXT = "text in front"


@pytest.fixture
def panel(session):
    panel = BusPanel(session)
    yield panel
    panel.close()


@pytest.fixture
def field(desktop, build):
    window = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


def own_window(desktop):
    return next((w for w in desktop.session.windows() if w.program == "app.tavin.Tavin"), None)


def test_the_key_dialog_has_the_keyboard(tavin, desktop, engine, panel, field):
    panel.click("ElevenLabs…")
    wait_until(lambda: own_window(desktop) and own_window(desktop).active, 10, "the key dialog")
    since = engine.mark()
    desktop.key("s", "e", "c", "r", "e", "t", "Return")
    wait_until(lambda: not own_window(desktop), 10, "the dialog's end")
    assert "secret" in str(engine.wait_for("/key", since=since))


def test_the_menu_window_is_small_and_reads_the_program_before_it(tavin, desktop, engine, field):
    tavin.action("menu")
    menu = wait_until(lambda: own_window(desktop), 10, "the menu")
    wait_until(lambda: own_window(desktop).active, 10, "the menu in front")
    assert menu.box[2] < 600
    since = engine.mark()
    desktop.key("Down", "Return")
    assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]
    assert own_window(desktop) is None
