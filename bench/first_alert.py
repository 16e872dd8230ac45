"""From the press of a shortcut to the alert on the screen, with and without a program to start."""

import time

from alerts import FAILED
from idle import processes_of
from session import wait_until
from Xlib import X, display, error


class Screen:
    """The windows that the window manager shows, asked without a process between."""

    def __init__(self, name):
        self._display = display.Display(name)
        self._root = self._display.screen().root
        self._list = self._display.intern_atom("_NET_CLIENT_LIST")

    def shown(self):
        property_ = self._root.get_full_property(self._list, X.AnyPropertyType)
        return {number for number in (property_.value if property_ else []) if self._is_shown(number)}

    def _is_shown(self, number):
        try:
            window = self._display.create_resource_object("window", number)
            return window.get_attributes().map_state == X.IsViewable
        except error.XError:
            return False

    def close(self):
        self._display.close()


def _time_one(screen, keyboard, engine, well, number):
    """Another text each time: the same one is not shown twice. Returns the seconds."""
    engine.status = {**well, **FAILED, "setup_error": f"failure {number}"}
    before = screen.shown()
    begun = keyboard.tap("Alt_L", "Escape")
    wait_until(lambda: screen.shown() - before, 10, "the alert", interval=0.001)
    seconds = time.monotonic() - begun
    time.sleep(0.3)
    keyboard.tap("Escape")
    wait_until(lambda: screen.shown() == before, 10, "the alert's end")
    return seconds


def measure(desktop, keyboard, engine, tavin, count):
    """Seconds of the first alert, which starts the program, and of the next one, `count` times."""
    screen, well = Screen(desktop.session.env["DISPLAY"]), engine.status
    times = {"first": [], "next": []}
    alone = len(processes_of(tavin.process.pid))
    try:
        for round_ in range(count):
            wait_until(lambda: len(processes_of(tavin.process.pid)) == alone, 20, "Tavin alone")
            for which in times:
                times[which].append(
                    _time_one(screen, keyboard, engine, well, f"{round_} {which}"))
        return times
    finally:
        engine.status = well
        screen.close()
