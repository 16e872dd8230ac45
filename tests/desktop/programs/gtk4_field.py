#!/usr/bin/python3
"""A GTK 4 window "GTK 4 field" with an editable text, given as the first argument."""

import sys

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import Gio, Gtk  # noqa: E402


def activate(application):
    window = Gtk.ApplicationWindow(application=application, title="GTK 4 field",
                                   default_width=500, default_height=300)
    view = Gtk.TextView()
    view.get_buffer().set_text(sys.argv[1])
    window.set_child(view)
    window.present()
    view.grab_focus()


app = Gtk.Application(application_id="app.tavin.test.Field", flags=Gio.ApplicationFlags.NON_UNIQUE)
app.connect("activate", activate)
sys.exit(app.run([]))
