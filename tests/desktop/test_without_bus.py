"""Without a session bus Tavin has its icon in an XEmbed tray, and the menu there works."""

import os

import pytest
from session import Session
from trays import Tray

TEXT = "read without a bus"


@pytest.fixture(scope="module")
def session(tmp_path_factory):
    with Session(str(tmp_path_factory.mktemp("session")), bus=False) as private:
        yield private


@pytest.fixture
def tray(desktop):
    return Tray(desktop, "trayer", has_bus=False)


@pytest.fixture
def field(desktop, build):
    window = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


@pytest.mark.parametrize("button", ["1", "3"], ids=["left", "right"])
def test_speak_selection(tray, desktop, engine, tavin, field, button):
    tray.click_icon(button)
    desktop.key("Down", "Return")
    assert engine.wait_for("/speak") == [{"text": TEXT}]


def test_the_shortcut(desktop, engine, tavin, field):
    desktop.key("alt+Escape")
    assert engine.wait_for("/speak") == [{"text": TEXT}]


def test_quit(tray, desktop, tavin):
    tray.click_icon()
    desktop.key("Up", "Return")
    assert tavin.process.wait(1) == 0


def test_quit_by_a_signal(tavin):
    code, seconds = tavin.quit()
    assert code == 0
    assert seconds < 1


def test_a_tray_that_comes_later(desktop, engine, tavin):
    tray = Tray(desktop, "trayer", has_bus=False)
    tray.click_icon()
    desktop.key("Up", "Return")
    assert tavin.process.wait(1) == 0
