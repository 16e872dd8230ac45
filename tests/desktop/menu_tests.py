"""What the menu must do in every tray. A test file imports these and gives the fixture `tray`."""

import contextlib
import os

import pytest
from accessible import Entry
from driver import Tavin
from photographs import once_drawn
from pixels import on_screen
from session import stop, wait_until
from trays import ICON

TEXT = "read from the tray's menu"
SPEEDS = ["0.8x", "0.9x", "1x", "1.1x", "1.25x", "1.5x", "1.75x", "2x"]
SHORTCUTS = ["⌥ Esc", "⌃ Esc", "⌃⌥ R"]
HINTS = ["Hear a second, robotic voice too?", "macOS Speak Selection also uses ⌥ Esc.",
         "Pick ⌃ Esc or ⌃⌥ R, or turn it off in",
         "System Settings > Accessibility > Spoken Content."]
SEPARATOR = Entry("")


def radios(titles, chosen):
    return [Entry(title, checked=title == chosen) for title in titles]


def speech_part(active=False, paused=False):
    return [Entry(("Stop" if active else "Speak Selection") + "\t⌥ Esc"),
            Entry(("Resume" if paused else "Pause") + "\t⇧⌥ Esc", enabled=active),
            Entry("Shortcut: ⌥ Esc",
                  below=[*radios(SHORTCUTS, "⌥ Esc"), SEPARATOR,
                         *(Entry(hint, enabled=False) for hint in HINTS)]),
            SEPARATOR]


def engine_part(voices, voice, speed="1x"):
    return [Entry("Engine: eSpeak NG", below=radios(["eSpeak NG"], "eSpeak NG")),
            Entry("Voice: " + voice, below=voices),
            Entry("Speed: " + speed, below=radios(SPEEDS, speed)),
            SEPARATOR,
            Entry("Set API Key", below=[Entry("ElevenLabs…"), Entry("OpenAI…")])]


FOOTER = [Entry("Launch at Login"), Entry("Open Engine Log"), SEPARATOR, Entry("Quit Tavin")]
NO_VOICES_YET = [Entry("Loading…", enabled=False)]
VOICES = radios(["English", "German"], "English")
# What the engine says, and the menu that follows.
STATES = {
    "idle": ({}, speech_part() + engine_part(VOICES, "English") + FOOTER),
    "speaking": ({"state": "speaking"},
                 speech_part(True) + engine_part(VOICES, "English") + FOOTER),
    "paused": ({"state": "paused", "speed": 1.5},
               speech_part(True, True) + engine_part(VOICES, "English", "1.5x") + FOOTER),
    "downloading": ({"ready": False, "download": 0.42},
                    speech_part() + [Entry("Downloading voices… 42%", enabled=False)]
                    + engine_part(VOICES, "English") + FOOTER),
    "failed": ({"ready": False, "setup_error": "no_space & _more_ needed"},
               speech_part() + [Entry("⚠︎ Voice setup failed: no_space & _more_ needed",
                                      enabled=False)]
               + engine_part(VOICES, "English") + FOOTER),
}


def around(menu):
    """Where all its lines are on the screen."""
    boxes = [entry.box for entry in menu.entries()]
    left, top = min(box[0] for box in boxes), boxes[0][1]
    right, bottom = max(x + width for x, _, width, _ in boxes), boxes[-1][1] + boxes[-1][3]
    return left, top, right - left, bottom - top


def is_whole(menu):
    boxes = [entry.box for entry in menu.entries()]
    apart = all(height > 0 and below >= y + height
                for (_, y, _, height), (_, below, _, _) in zip(boxes, boxes[1:]))
    return apart and boxes[0][1] >= 0 and boxes[-1][1] + boxes[-1][3] <= 1200


def assert_whole(menu):
    """All of it stands on the screen, one line below the other, once the panel has put it there."""
    wait_until(lambda: is_whole(menu), 5, "all of the menu on the screen")


@pytest.mark.parametrize("button", ["1", "3"], ids=["left", "right"])
def test_the_first_opening_shows_all(tray, tavin, button):
    menu = tray.open_menu(button)
    # The list of voices is fetched at the first opening, for the next.
    titles = [entry.title for entry in menu.entries()]
    expected = speech_part() + engine_part(NO_VOICES_YET, "en") + FOOTER
    assert titles in ([entry.title for entry in expected],
                      [entry.title for entry in STATES["idle"][1]])
    assert_whole(menu)


def test_the_menu_hides_nothing_of_the_icon(tray, tavin):
    menu = tray.open_menu()
    assert_whole(menu)
    _, top, _, height = around(menu)
    assert top + height <= ICON[1] - 12


def test_three_lines_are_drawn_between_the_parts(tray, tavin, desktop):
    menu = tray.open_menu()
    assert_whole(menu)
    assert once_drawn(lambda: on_screen(desktop, *around(menu))).rules() == 3


def test_each_opening_shows_what_the_engine_says(tray, tavin, engine):
    since = engine.mark()
    tray.open_menu().close()
    engine.wait_for("/voices", since=since)
    idle = dict(engine.status)
    for name in ["idle", "speaking", "paused", "downloading", "failed", "idle"]:
        changes, expected = STATES[name]
        engine.status = {**idle, **changes}
        menu = tray.open_menu()
        assert menu.entries() == expected, name
        menu.close()
        # GTK's panels open it in the size of the time before, with arrows to scroll by.
        menu = tray.open_menu()
        assert menu.entries() == expected, name
        assert_whole(menu)
        menu.close()


def test_an_engine_that_does_not_answer(tray, tavin, engine):
    tray.open_menu().close()
    engine.close()
    menu = tray.open_menu()
    assert menu.entries() == (speech_part() + [Entry("Voice engine starting…", enabled=False)]
                              + FOOTER)
    assert_whole(menu)


def select_in(program, desktop, build):
    """Opens a program with all or a word of the text selected; returns what is selected."""
    if program == "xterm":
        desktop.open(["xterm", "-T", "words", "-e", "sh", "-c", "echo oneword; exec sleep 600"],
                     "words")
        desktop.select_until("oneword", lambda: desktop.click(
            desktop.windows("words")[-1], 20, 10, times=2))
        return "oneword"
    if program == "mousepad":
        path = os.path.join(desktop.session.folder, "letter.txt")
        with open(path, "w", encoding="utf-8") as f:
            f.write(TEXT)
        desktop.open(["mousepad", "--disable-server", path], "letter.txt")
    else:
        desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    return TEXT


@pytest.mark.parametrize("program", ["mousepad", "qt6", "xterm"])
@pytest.mark.parametrize("hand", ["mouse", "keys"])
def test_speak_selection(tray, desktop, engine, tavin, build, program, hand):
    text = select_in(program, desktop, build)
    menu = tray.open_menu()
    if hand == "mouse":
        menu.click("Speak Selection")
    else:
        menu.choose_with_keys("Speak Selection")
    assert engine.wait_for("/speak") == [{"text": text}]


def test_stop_and_pause_reach_the_engine(tray, engine, tavin):
    engine.status = {**engine.status, "state": "speaking"}
    tray.open_menu().click("Pause")
    engine.wait_for("/toggle-pause")
    tray.open_menu().click("Stop")
    engine.wait_for("/stop")


def test_a_speed_is_chosen_in_its_submenu(tray, desktop, engine, tavin):
    menu = tray.open_menu()
    menu.choose_with_keys("Speed")  # Opens the submenu, with its first line highlighted.
    desktop.key("Down", "Return")
    assert engine.wait_for("/config") == [{"speed": 0.9}]


@pytest.fixture
def settings(desktop):
    """Reads what Tavin stored. The session's other tests begin without it."""
    path = os.path.join(desktop.session.env["XDG_CONFIG_HOME"], "tavin/tavin.conf")

    def read():
        with contextlib.suppress(FileNotFoundError):
            with open(path, encoding="utf-8") as f:
                return f.read()
        return ""
    yield read
    os.unlink(path)


def test_a_shortcut_is_chosen_in_its_submenu(tray, desktop, engine, tavin, settings):
    menu = tray.open_menu()
    menu.choose_with_keys("Shortcut")
    desktop.key("Down", "Return")
    wait_until(lambda: "shortcut=ctrl-esc" in settings(), 10, "the new shortcut stored")
    idle, engine.status = engine.status, {**engine.status, "state": "speaking"}
    desktop.key("alt+Escape", "ctrl+shift+Escape")
    engine.wait_for("/toggle-pause")
    assert engine.requests("/stop") == []
    engine.status = idle
    assert tavin.press("ctrl+Escape") == []
    assert tray.open_menu().entry("Shortcut").title == "Shortcut: ⌃ Esc"


def test_the_menu_after_a_restart_of_the_tray(tray, tavin):
    tray.open_menu().close()
    tray.process.kill()
    stop(tray.process)
    tray.start_again()
    menu = tray.open_menu()
    assert [e.title for e in menu.entries()] == [e.title for e in STATES["idle"][1]]
    assert_whole(menu)


def test_a_tray_that_comes_after_tavin(desktop, engine, build, make_tray):
    Tavin(desktop, engine, build)
    menu = make_tray().open_menu()
    assert menu.entries()[0] == speech_part()[0]
    assert menu.entries()[-1] == FOOTER[-1]


def test_quit(tray, tavin):
    tray.open_menu().click("Quit Tavin")
    assert tavin.process.wait(1) == 0


