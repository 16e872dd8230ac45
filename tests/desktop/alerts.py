"""Tavin's alerts: what makes them show, and whether they have the keyboard."""

import os

from session import wait_until

FAILED = {"engine": "kokoro", "ready": False, "setup_error": "no space left on <b>this</b> disk"}


def shown(desktop):
    """The alerts on the screen."""
    return desktop.titled("Tavin")


def wait_for_alert(desktop, other_than=None):
    """The one alert that is shown, once it has the keyboard."""
    def found():
        windows = shown(desktop)
        return windows[0] if len(windows) == 1 and windows[0] != other_than and (
            desktop.has_keyboard(windows[0])) else None
    return wait_until(found, 10, "the alert with the keyboard")


def offer_settings(session, program):
    """As on the desktop itself, where a button of the alert opens them: the program is a stand-in."""
    folder = os.path.join(session.folder, "programs")
    os.mkdir(folder)
    os.symlink("/bin/true", os.path.join(folder, program))
    session.env["PATH"] = folder + ":" + session.env["PATH"]


def take_permission_away(tavin):
    """Accessibility is switched off for good: Tavin switches it on once, at the next press."""
    session = tavin.session

    def is_on():
        out = session.run(["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus",
                           "/org/a11y/bus", "org.freedesktop.DBus.Properties.Get",
                           "string:org.a11y.Status", "string:IsEnabled"])
        return "true" in out
    session.enable_accessibility(False)
    tavin.action("speak")
    wait_until(is_on, 10, "accessibility switched on again")
    session.enable_accessibility(False)
