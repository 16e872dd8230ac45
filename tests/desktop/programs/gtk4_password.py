#!/usr/bin/python3
"""A GTK 4 window with a password, given as the first argument. Its title is "Password field", and
"Password field, all selected" while the whole password is, which nothing else tells."""

import sys

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import Gio, Gtk  # noqa: E402


def activate(application):
    window = Gtk.ApplicationWindow(application=application, title="Password field",
                                   default_width=500, default_height=300)
    entry = Gtk.PasswordEntry(text=sys.argv[1], valign=Gtk.Align.CENTER)

    def show_selection(*_):
        whole = entry.get_selection_bounds() == (0, len(sys.argv[1]))
        window.set_title("Password field, all selected" if whole else "Password field")
    entry.get_delegate().connect("notify::selection-bound", show_selection)
    entry.get_delegate().connect("notify::cursor-position", show_selection)
    window.set_child(entry)
    window.present()
    entry.grab_focus()


app = Gtk.Application(application_id="app.tavin.test.Password",
                      flags=Gio.ApplicationFlags.NON_UNIQUE)
app.connect("activate", activate)
sys.exit(app.run([]))
