"""The menu: under waybar's icon, and as a window of its own where there is no panel."""

import contextlib
import json
import os

import pytest
from driver import Tavin
from gi.repository import GLib
from panel import tray_items
from photographs import of_window
from session import SessionError, wait_until

TEXT = "read from the menu"
BAR = {"position": "top", "height": 30, "modules-right": ["tray"], "tray": {"icon-size": 24}}
ICON = (1266, 15)  # The last thing in the bar.


@pytest.fixture
def field(desktop, build):
    window = desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return window


@pytest.fixture
def waybar(desktop, session):
    configuration = os.path.join(session.folder, "waybar.json")
    with open(configuration, "w", encoding="utf-8") as f:
        json.dump(BAR, f)
    style = os.path.join(session.folder, "waybar.css")
    with open(style, "w", encoding="utf-8") as f:
        f.write("* { font-size: 15px; }")
    program = desktop.start(["waybar", "--config", configuration, "--style", style])
    wait_until(lambda: tray_items(desktop) is not None, 30, "tray of waybar")
    return program


def speak_selection(desktop, session):
    """The menu's first line, chosen by hand."""
    wait_until(lambda: tray_items(desktop), 10, "the icon")
    x, y = ICON
    below = (x - 250, y + 35, 100, 100)  # Away from its hint.
    before = desktop.picture(*below)

    def open_menu():
        # The icon stands in the bar a moment after its program is registered.
        session.input.move(x, y)
        session.input.press()
        session.input.release()
        with contextlib.suppress(SessionError):
            return wait_until(lambda: desktop.picture(*below) != before, 2, "menu")
        return False
    wait_until(open_menu, 20, "the menu")
    # Its first line; the menu hangs to the left of the pointer.
    session.input.move(x - 150, y + 18)
    session.input.press()
    session.input.release()


def test_speak_selection_from_waybar(tavin, desktop, session, engine, field, waybar):
    since = engine.mark()
    speak_selection(desktop, session)
    assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]


def test_on_an_empty_workspace_nothing_is_read_and_the_user_stays_there(tavin, desktop, session,
                                                                        engine, field, waybar):
    session.command("workspace 2")
    wait_until(lambda: not desktop.has_keyboard(field), 5, "empty workspace")
    since = engine.mark()
    speak_selection(desktop, session)
    assert tavin.press() == []
    assert engine.requests("/speak", since) == []
    assert not desktop.has_keyboard(field)


def show_menu(tavin, desktop, token=None):
    told = {"activation-token": GLib.Variant("s", token)} if token else {}
    tavin.call("org.freedesktop.Application", "Activate", GLib.Variant("(a{sv})", (told,)))
    return wait_until(lambda: menu_window(desktop), 10, "menu")


def menu_window(desktop):
    found = [w for w in desktop.session.windows() if w["app_id"] == "app.tavin.Tavin"]
    return found[0] if found and found[0]["focused"] else None


def no_menu(desktop):
    return not desktop.windows("app.tavin.Tavin")


def test_window_is_small_and_reads_the_program_before_it(tavin, desktop, engine, field):
    window = show_menu(tavin, desktop)
    assert window["type"] == "floating_con"
    assert window["rect"]["width"] < 600
    assert desktop.window(field)["rect"]["width"] == 1280
    since = engine.mark()
    desktop.key("Down", "Return")
    assert engine.wait_for("/speak", since=since) == [{"text": TEXT}]
    assert no_menu(desktop)


def test_three_lines_are_drawn_in_the_window(tavin, desktop, field):
    assert of_window(desktop, str(show_menu(tavin, desktop)["id"])).rules() == 3


def test_window_closes_by_key(tavin, desktop, field):
    show_menu(tavin, desktop)
    desktop.key("Escape")
    wait_until(lambda: no_menu(desktop), 5, "menu closed")


def test_window_closes_when_another_is_clicked(tavin, desktop, field):
    shown = show_menu(tavin, desktop)["rect"]
    place = shown["x"], shown["y"], shown["width"], shown["height"]
    before = desktop.picture(*place)
    desktop.key("Down")
    wait_until(lambda: desktop.picture(*place) != before, 5, "highlighted item")
    desktop.click(field, 20, 20)
    wait_until(lambda: no_menu(desktop), 5, "menu closed")


def test_window_opens_again(tavin, desktop, field):
    for _ in range(3):
        show_menu(tavin, desktop)
        desktop.key("Escape")
        wait_until(lambda: no_menu(desktop), 5, "menu closed")


def test_window_comes_to_the_front_by_the_desktops_token(desktop, engine, build, field):
    tavin = Tavin(desktop, engine, build, settings={"WAYLAND_DEBUG": "1"})
    show_menu(tavin, desktop, "given-by-the-desktop")
    wait_until(lambda: 'activate("given-by-the-desktop"' in tavin.log(), 5, "its use")
