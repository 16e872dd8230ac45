"""The icon and its menu in lxqt-panel, which closes a menu that changes its shape."""

import os

import pytest
from driver import Tavin
from panel import choose_first_item, start_lxqt_panel, tray_items
from session import stop, wait_until


def test_the_icon_comes_back_after_a_restart_of_the_panel(desktop, tavin):
    panel = start_lxqt_panel(desktop)
    wait_until(lambda: tray_items(desktop), 10, "the icon")
    stop(panel)
    wait_until(lambda: tray_items(desktop) is None, 10, "end of the tray")
    start_lxqt_panel(desktop)
    wait_until(lambda: tray_items(desktop), 10, "the icon after the restart")


@pytest.mark.parametrize("button", ["1", "3"], ids=["left", "right"])
def test_speak_selection_from_the_menu(desktop, engine, build, button):
    text = "read from the panel's menu"
    start_lxqt_panel(desktop)
    Tavin(desktop, engine, build)
    wait_until(lambda: tray_items(desktop), 10, "the icon")
    desktop.open([os.path.join(build, "bin/qt6_field"), text], "Qt 6 field")
    desktop.select_until(text, lambda: desktop.key("ctrl+a"))
    choose_first_item(desktop, engine, button)
    assert engine.wait_for("/speak") == [{"text": text}]
