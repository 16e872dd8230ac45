"""The user's language, in the menu as panels get it and in an alert."""

import pytest
from accessible import Tree
from alerts import wait_for_alert
from bus_panel import BusPanel
from driver import Tavin
from menu_tests import FOOTER, HINTS, SHORTCUTS
from session import wait_until

DESIGN = ["Speak Selection\t⌥ Esc", "Pause\t⇧⌥ Esc", "Shortcut: ⌥ Esc", *SHORTCUTS, "", *HINTS, ""]


@pytest.fixture
def panel(session):
    serving = BusPanel(session)
    yield serving
    serving.close()


@pytest.fixture
def speak(desktop, engine, build):
    """Starts Tavin in an environment with these variables."""
    return lambda **settings: Tavin(desktop, engine, build, settings={"LANG": "", **settings})


@pytest.mark.parametrize("settings", [
    {}, {"LANG": "C"}, {"LANG": "C.UTF-8"}, {"LC_ALL": "POSIX", "LANG": "de_DE.UTF-8"},
    {"LANG": "C.UTF-8", "LANGUAGE": "de"}], ids=str)
def test_the_c_locale_shows_each_text_as_the_source_has_it(panel, speak, settings):
    speak(**settings)
    titles = panel.titles()
    assert titles[:len(DESIGN) + 1] == ["", *DESIGN]
    assert titles[-len(FOOTER):] == [entry.title for entry in FOOTER]


def test_english_is_that_of_the_desktop(panel, speak):
    speak(LANG="en_GB.UTF-8", XDG_CURRENT_DESKTOP="XFCE")
    titles = panel.titles()
    assert titles[:4] == ["", *DESIGN[:3]]
    assert titles[8:12] == ["⌥ is Alt, ⌃ is Control, ⇧ is Shift.",
                            "Xfce itself does nothing with Alt+Escape.",
                            "If another program has it, change that in", "Settings > Keyboard."]


def test_where_nobody_gives_shortcuts_the_warning_says_so(panel, speak):
    speak(LANG="en_US.UTF-8", TAVIN_SHORTCUTS="none")
    assert "⚠︎ ⌥ Esc cannot work on this desktop" in panel.titles()


def test_the_first_language_that_there_is_a_catalogue_for_is_taken(panel, speak):
    speak(LANG="en_US.UTF-8", LANGUAGE="ja:de_AT:fr")
    # The speeds are there once the engine has answered in time.
    titles = wait_until(lambda: next((titles for titles in [panel.titles()] if "1,25x" in titles), None), 10, "the menu")
    assert titles[1:4] == ["Auswahl vorlesen\t⌥ Esc", "Pause\t⇧⌥ Esc", "Tastenkürzel: ⌥ Esc"]
    assert titles[4:7] == SHORTCUTS


def test_a_panel_is_told_that_arabic_is_written_from_right_to_left(panel, speak):
    for language, direction in (("de_DE.UTF-8", "ltr"), ("ar_EG.UTF-8", "rtl")):
        tavin = speak(LANG=language)
        assert panel.property("TextDirection") == direction
        tavin.quit()


def test_an_alert_speaks_the_users_language(session, desktop, engine, speak):
    engine.status = {**engine.status, "engine": "kokoro", "ready": False}
    tavin = speak(LANG="de_DE.UTF-8")
    tavin.action("speak")
    wait_for_alert(desktop)
    tree = Tree(session)
    for text in ("Tavin konnte das nicht vorlesen",
                 "Tavin lädt seine Stimmen noch. Versuchen Sie es in ein paar Sekunden erneut."):
        wait_until(lambda text=text: tree.box("label", text), 5, text)
