"""What shortcuts do wherever the desktop gives them. A module that imports these has fixtures beyond
`desktop`, `engine`, `tavin` and `panel`:

  preset      the name of the shortcut that Tavin starts with
  ready       waits until the desktop listens for a chord
  holder      a context in which something else holds a chord
  registered  what the desktop holds for Tavin, as a list

A stop and a pause are asked of the engine at once and for nothing else: while it speaks, each press
is one of the two.
"""

import signal
import time

import pytest
from driver import Tavin
from session import wait_until

LABELS = {"opt-esc": "⌥ Esc", "ctrl-esc": "⌃ Esc", "ctrl-opt-r": "⌃⌥ R"}
CHORDS = {"opt-esc": "alt+Escape", "ctrl-esc": "ctrl+Escape", "ctrl-opt-r": "ctrl+alt+r"}
REFUSED = "Tavin: hotkey keyCode={} modifiers={} unavailable ("


def pause(chord):
    return "shift+" + chord


def warning(preset):
    return f"⚠︎ {LABELS[preset]} is taken by another app"


def presses(desktop, engine, press, chord):
    """How many speak and pause shortcuts `press` was, which is at least one of each. `chord` is a
    speak shortcut that works."""
    engine.status = {**engine.status, "state": "speaking"}
    since = engine.mark()
    press()
    engine.wait_for("/stop", since=since)
    engine.wait_for("/toggle-pause", since=since)
    # Whatever else was pressed arrives before this.
    pauses = len(engine.requests("/toggle-pause", since))
    desktop.key(pause(chord))
    engine.wait_for("/toggle-pause", count=pauses + 1, since=since)
    return len(engine.requests("/stop", since)), len(engine.requests("/toggle-pause", since)) - 1


def assert_each_works(desktop, engine, chord):
    """Both shortcuts are one press when pressed, in either order."""
    assert presses(desktop, engine, lambda: desktop.key(chord, pause(chord)), chord) == (1, 1)
    assert presses(desktop, engine, lambda: desktop.key(pause(chord), chord), chord) == (1, 1)


def test_each_shortcut_runs_its_command(desktop, engine, tavin, preset, ready):
    chord = CHORDS[preset]
    ready(chord)
    assert_each_works(desktop, engine, chord)


def test_a_press_of_speak_looks_for_a_selection(desktop, engine, tavin, preset, ready):
    ready(CHORDS[preset])
    since = engine.mark()
    desktop.key(CHORDS[preset])
    # Once for whether it speaks, once more before the selection is read.
    engine.wait_for("/status", count=2, since=since)


def test_a_held_key_is_one_press(desktop, engine, tavin, preset, ready):
    chord = CHORDS[preset]
    ready(chord)

    def hold():
        desktop.press(chord)
        time.sleep(2)  # Repetition is what is tested.
        desktop.release(chord)
        time.sleep(1)  # Commands that it started may still run.
        desktop.key(pause(chord))
    assert presses(desktop, engine, hold, chord) == (1, 1)


@pytest.mark.parametrize("lock", ["Caps_Lock", "Num_Lock"])
def test_lock_keys_do_not_matter(desktop, engine, tavin, preset, ready, lock):
    chord = CHORDS[preset]
    ready(chord)
    desktop.key(lock)
    try:
        assert_each_works(desktop, engine, chord)
    finally:
        desktop.key(lock)


def test_another_shortcut_chosen_in_the_menu(desktop, engine, tavin, panel, preset, ready):
    other = "ctrl-opt-r" if preset == "ctrl-esc" else "ctrl-esc"
    old, new = CHORDS[preset], CHORDS[other]
    panel.click(LABELS[other])
    wait_until(lambda: f"Shortcut: {LABELS[other]}" in panel.titles(), 10, "the new shortcut")
    ready(new)
    assert presses(desktop, engine, lambda: desktop.key(old, pause(old), new, pause(new)),
                   new) == (1, 1)
    assert warning(other) not in panel.titles()


def test_a_key_that_is_taken_is_refused(desktop, engine, build, panel, preset, ready,
                                        holder):
    chord = CHORDS[preset]
    with holder(pause(chord)):
        tavin = Tavin(desktop, engine, build)
        assert REFUSED.split("=")[0] in tavin.log()
        assert warning(preset) in panel.titles()
        engine.status = {**engine.status, "state": "speaking"}
        ready(chord)
        since = engine.mark()
        desktop.key(pause(chord), chord)
        engine.wait_for("/stop", since=since)
        tavin.action("stop")
        engine.wait_for("/stop", count=2, since=since)
        assert engine.requests("/toggle-pause", since) == []


def test_a_key_that_is_taken_leaves_another_preset_working(desktop, engine, build, panel, preset, ready,
                                                           holder):
    other = "ctrl-opt-r" if preset == "ctrl-esc" else "ctrl-esc"
    with holder(CHORDS[preset]):
        Tavin(desktop, engine, build)
        assert warning(preset) in panel.titles()
        panel.click(LABELS[other])
        wait_until(lambda: f"Shortcut: {LABELS[other]}" in panel.titles(), 10, "the new shortcut")
        assert warning(other) not in panel.titles()
        chord = CHORDS[other]
        ready(chord)
        assert_each_works(desktop, engine, chord)


def test_quitting_gives_everything_back(tavin, registered):
    wait_until(registered, 10, "the shortcuts")
    assert tavin.quit()[0] == 0
    assert not registered()


def test_a_start_after_a_kill_takes_over(desktop, engine, tavin, build, preset, ready,
                                         registered):
    wait_until(registered, 10, "the shortcuts")
    tavin.process.send_signal(signal.SIGKILL)
    tavin.process.wait(10)
    assert registered()
    again = Tavin(desktop, engine, build, log="again.log")
    chord = CHORDS[preset]
    ready(chord)
    assert_each_works(desktop, engine, chord)
    assert "unavailable" not in again.log()
    assert again.quit()[0] == 0
    assert not registered()


__all__ = ["CHORDS", "LABELS", "assert_each_works", "pause", "presses", "warning",
           *[name for name in dir() if name.startswith("test_")]]
