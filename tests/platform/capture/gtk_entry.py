#!/usr/bin/python3
"""A focused one-line field: arguments are GTK's version (3.0 or 4.0), "open" or "hidden", a text."""

import sys

import gi

gi.require_version("Gtk", sys.argv[1])
from gi.repository import GLib, Gtk  # noqa: E402

hidden, text = sys.argv[2] == "hidden", sys.argv[3]
if sys.argv[1] == "4.0":
    Gtk.init()
    window = Gtk.Window(title="entry")
    entry = Gtk.PasswordEntry() if hidden else Gtk.Entry()
    window.set_child(entry)
    window.present()
else:
    window = Gtk.Window(title="entry")
    entry = Gtk.Entry(visibility=not hidden)
    window.add(entry)
    window.show_all()
entry.set_text(text)
entry.grab_focus()
GLib.MainLoop().run()
