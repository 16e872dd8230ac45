"""The icon in real trays."""

import subprocess

import pytest
from driver import Tavin
from panel import start_xfce4_panel, tray_items
from session import stop, wait_until
from trays import Tray


def has_icon(desktop):
    return bool(tray_items(desktop))


def test_panel_before_tavin(desktop, engine, build):
    start_xfce4_panel(desktop)
    assert tray_items(desktop) == []
    Tavin(desktop, engine, build)
    wait_until(lambda: has_icon(desktop), 10, "the icon")


def test_panel_after_tavin_and_again_after_its_restart(desktop, tavin):
    panel = start_xfce4_panel(desktop)
    wait_until(lambda: has_icon(desktop), 10, "the icon")
    stop(panel)
    wait_until(lambda: tray_items(desktop) is None, 10, "end of the tray")
    start_xfce4_panel(desktop)
    wait_until(lambda: has_icon(desktop), 10, "the icon after the restart")


def test_voices_are_asked_for_when_the_menu_is_opened_and_never_before(desktop, engine, build):
    tray = Tray(desktop, "xfce4-panel")
    Tavin(desktop, engine, build)
    tray.wait_for_icon()
    engine.wait_for("/status", 4)  # at the start and for the panel, at once and 1 and 3 s later
    assert engine.requests("/voices") == []
    tray.open_menu().close()
    engine.wait_for("/voices")


def test_the_icon_goes_with_tavin(desktop, tavin):
    start_xfce4_panel(desktop)
    wait_until(lambda: has_icon(desktop), 10, "the icon")
    tavin.quit()
    wait_until(lambda: tray_items(desktop) == [], 10, "the icon gone")


@pytest.fixture
def trayer(desktop):
    """An XEmbed tray; its window."""
    return desktop.show(["trayer", "--edge", "bottom", "--widthtype", "request"], "trayer")


def embedded(desktop, wid):
    tree = desktop.session.run(["xwininfo", "-tree", "-id", wid], check=False,
                               stderr=subprocess.DEVNULL)
    return "tavin" in tree.lower()


def test_an_xembed_tray_shows_it(desktop, trayer, engine, build):
    Tavin(desktop, engine, build)
    wait_until(lambda: embedded(desktop, trayer), 10, "the embedded icon")
