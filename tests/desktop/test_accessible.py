"""Tavin's own windows as a screen reader meets them, and all of them by keyboard alone."""

import pytest
from accessible import ACTIVE, DEFAULT, EDITABLE, FOCUSED, Focus, OpenMenu, Tree
from alerts import FAILED, shown, wait_for_alert
from bus_panel import BusPanel
from driver import Tavin
from menu_tests import SHORTCUTS, SPEEDS
from session import SessionError, wait_until

PROGRAM = "tavin"
BUTTON = "push button"
TYPED = "secret"
KEY = "ElevenLabs API key"
SECURE = "Stored in your macOS Keychain. Leave empty to remove the key."
LINE = "a line of a traceback"


@pytest.fixture
def tree(session):
    return Tree(session)


@pytest.fixture
def things(tree, desktop):
    """What the open window is and holds, once it has the keyboard."""
    def told():
        wait_until(lambda: any(ACTIVE in thing.states for thing in tree.things(PROGRAM)), 10,
                   "a window that is active")
        return tree.things(PROGRAM)
    return told


@pytest.fixture
def focused(tree):
    """Waits until what has the focus has that name, or role where it has none. GNOME gives a new window keys
    a moment after the focus: `until_then` is done over and over."""
    def wait_for(name, until_then=None):
        def names():
            return [thing.name or thing.role for thing in tree.things(PROGRAM)
                    if FOCUSED in thing.states and thing.role != "filler"]
        try:
            if until_then:
                wait_until(lambda: names() == [name] or until_then(), 10, interval=1)
            wait_until(lambda: names() == [name], 5)
        except SessionError:
            raise AssertionError(f"{names()} has the focus and not {name}") from None
    return wait_for


def only(things, role):
    found, = (thing for thing in things if thing.role == role)
    return found


@pytest.fixture
def alert(desktop, engine, tavin):
    def show(error):
        engine.status = {**engine.status, **FAILED, "setup_error": error}
        tavin.action("speak")
        return wait_for_alert(desktop)
    return show


@pytest.fixture
def key_dialog(session, desktop, tavin):
    panel = BusPanel(session)
    yield lambda: (panel.click("ElevenLabs…"), wait_for_alert(desktop))
    panel.close()


@pytest.fixture
def typed(key_dialog, things, tree, desktop, focused):
    """The field of the key dialog, with a key in it: from then on none is lost."""
    key_dialog()
    focused(KEY)
    field = only(things(), "text")

    def arrives():
        desktop.key(*TYPED)
        return tree.text(field)[1] > 0
    wait_until(arrives, 10, "the typed key", interval=0.5)
    return field


def is_gone(desktop):
    wait_until(lambda: not shown(desktop), 5, "the window's end")


def test_an_alert_says_what_it_says(alert, things):
    alert("no space left")
    found = things()
    window = only(found, "dialog")
    assert window.name == "Tavin couldn't read that"
    assert "no space left" in window.description
    assert [thing.name for thing in found if thing.role == "label"] == [window.name,
                                                                        window.description]
    button = only(found, BUTTON)
    assert button.name == "OK"
    assert {FOCUSED, DEFAULT} <= button.states


def test_all_in_the_key_dialog_has_a_name(key_dialog, things, tree, focused):
    key_dialog()
    focused(KEY)
    found = things()
    assert (only(found, "dialog").name, only(found, "dialog").description) == (KEY, SECURE)
    field = only(found, "text")
    assert (field.name, EDITABLE in field.states, tree.is_secret(field)) == (KEY, True, True)
    assert [(thing.name, DEFAULT in thing.states) for thing in found if thing.role == BUTTON] == [
        ("Save", True), ("Cancel", False)]
    assert all(thing.name for thing in found if thing.role != "filler")


def test_a_key_that_is_typed_is_told_to_nobody(typed, tree):
    assert set(tree.text(typed)[0]).isdisjoint(TYPED)


def test_tab_goes_round_in_the_key_dialog_and_back(typed, desktop, focused):
    for name in ("Save", "Cancel", KEY):
        desktop.key("Tab")
        focused(name)
    for name in ("Cancel", "Save", KEY):
        desktop.key("shift+Tab")
        focused(name)


@pytest.mark.parametrize("keys", [("Escape",), ("Tab", "Tab", "Return"), ("Tab", "Tab", "space")],
                         ids="-".join)
def test_the_key_dialog_is_left_by_keyboard_and_nothing_is_kept(typed, desktop, engine, tavin, keys):
    desktop.key(*keys)
    is_gone(desktop)
    since = engine.mark()
    tavin.action("pause")
    engine.wait_for("/toggle-pause", since=since)
    assert engine.requests("/key") == []


def test_a_long_text_is_read_and_left_by_keyboard(alert, desktop, things, focused, tree):
    alert("\n".join([LINE] * 200))
    focused("OK")
    view = only(things(), "text")
    assert view.name == "Tavin couldn't read that"
    assert EDITABLE not in view.states
    assert tree.text(view)[0].count(LINE) == 200
    focused(view.name, until_then=lambda: desktop.key("Tab"))
    for name in ("OK", view.name):
        desktop.key("Tab")
        focused(name)
    desktop.key("Escape")
    is_gone(desktop)


@pytest.fixture
def small_menu(session, desktop, engine, build):
    """Opens it and returns what goes on in it. Programs ask at their start who wants to hear of the
    focus."""
    focus = Focus(session)
    Tavin(desktop, engine, build).action("menu")
    return focus, OpenMenu(desktop, focus)


def go(desktop, focus, key, title):
    """To a line of the menu."""
    focus.forget()
    desktop.key(key)
    item = wait_until(focus.menu_item, 5, f"{title} after {key}")
    assert focus.name_of(item) == title
    return item


def test_the_small_menu_is_walked_through_by_keyboard(small_menu, desktop):
    focus, menu = small_menu
    titles = [entry.title for entry in menu.entries() if entry.title and entry.enabled]
    assert titles[0].startswith("Speak Selection")
    assert titles[-1] == "Quit Tavin"
    for title in (*titles[1:], titles[0]):
        item = go(desktop, focus, "Down", title)
    assert focus.name_of_menu(item) == "Tavin"
    go(desktop, focus, "Up", titles[-1])
    desktop.key("Escape")
    wait_until(lambda: not desktop.windows(PROGRAM), 5, "the menu's end")


@pytest.mark.parametrize("title, below", [("Shortcut: ⌥ Esc", SHORTCUTS), ("Speed: 1x", SPEEDS)])
def test_a_submenu_is_opened_and_left_by_keyboard(small_menu, desktop, title, below):
    focus, menu = small_menu
    titles = [entry.title for entry in menu.entries() if entry.title and entry.enabled]
    for passed in titles[1:titles.index(title) + 1]:
        go(desktop, focus, "Down", passed)
    item = go(desktop, focus, "Right", below[0])
    assert focus.name_of_menu(item) == title
    for entry in below[1:]:
        item = go(desktop, focus, "Down", entry)
    desktop.key("Left")
    # A key that comes sooner than that is for the submenu still.
    wait_until(lambda: not focus.menu_of(item), 5, "the submenu's end")
    go(desktop, focus, "Down", titles[titles.index(title) + 1])
    desktop.key("Escape")
    wait_until(lambda: not desktop.windows(PROGRAM), 5, "the menu's end")
