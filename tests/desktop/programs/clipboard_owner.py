#!/usr/bin/python3
"""Owns the clipboard with several targets, binary ones among them, and prints "owned"."""

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

Gtk.init()
window = Gtk.Window(title="clipboard owner")
window.present()
window.get_clipboard().set_content(Gdk.ContentProvider.new_union(
    [Gdk.ContentProvider.new_for_bytes(kind, GLib.Bytes.new(data)) for kind, data in CONTENTS]))
print("owned", flush=True)
GLib.MainLoop().run()
