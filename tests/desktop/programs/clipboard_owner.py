#!/usr/bin/python3
"""A window that, when a key is pressed in it, copies contents of several types, binary ones too."""

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402

CONTENTS = [
    ("application/x-tavin-test", bytes(range(256)) * 300),
    ("text/html", "<b>Grüße</b>\r\n".encode()),
    ("image/png", b"\x89PNG\r\n\x1a\n" + b"\x00\xff" * 50000),
    ("text/plain;charset=utf-8", "Grüße, \u00a0 \U0001f600\n".encode()),
    ("application/x-empty", b""),
]


def copy(_controller, _symbol, _code, _modifiers, owner):
    # Not at once: some desktops let a program copy only in answer to its user.
    owner.get_clipboard().set_content(Gdk.ContentProvider.new_union(
        [Gdk.ContentProvider.new_for_bytes(kind, GLib.Bytes.new(data)) for kind, data in CONTENTS]))


Gtk.init()
window = Gtk.Window(title="clipboard owner")
keys = Gtk.EventControllerKey()
keys.connect("key-pressed", copy, window)
window.add_controller(keys)
window.present()
GLib.MainLoop().run()
