"""What a user does in a GNOME session on Wayland, told in the same words as on X11."""

import contextlib
import json
import os
import time

import pixels
from gi.repository import GLib
from gnome_session import INPUT, GnomeSession
from session import SessionError, wait_until
from wayland_session import KEYS, WaylandDesktop

LEFT, RIGHT = 0x110, 0x111
NORMAL = 0  # Of Meta's types of windows.
WINDOWS = """global.get_window_actors().map(a => a.meta_window).map(w => [w.get_id(), w.title,
    w.get_wm_class(), w.has_focus(), w.get_client_type(), w.get_window_type(),
    (r => [r.x, r.y, r.width, r.height])(w.get_frame_rect()),
    (r => [r.x, r.y, r.width, r.height])(w.get_buffer_rect())])"""
POINTER = """global.tavin_pointer ||= imports.gi.Clutter.get_default_backend().get_default_seat()
    .create_virtual_device(imports.gi.Clutter.InputDeviceType.POINTER_DEVICE);
global.tavin_pointer.notify_absolute_motion(imports.gi.GLib.get_monotonic_time(), {}, {})"""
ACTIVATE = """global.get_window_actors().map(a => a.meta_window).find(w => w.get_id() == {})
    .activate(global.display.get_current_time_roundtrip())"""
PLACE = "(a => [...a.get_transformed_position(), a.width, a.height])({})"
ESCAPE, MASKS = 9, {"shift": 1, "alt": 8}  # As X11 numbers them.
KEYS.update({"BackSpace": 14, "Tab": 15, "End": 107, "Left": 105, "space": 57,
             **dict(zip("qwertyuiop", range(16, 26))), **dict(zip("asdfghjkl", range(30, 39))),
             **dict(zip("zxcvbnm", range(44, 51)))})


class NativeGnome(GnomeSession):
    """Programs speak Wayland where they can. Unless GNOME `keeps_keys`, Tavin has those that it holds as it
    comes."""

    def __init__(self, folder, _build=None, extensions=(), keeps_keys=False, **kwargs):
        super().__init__(folder, **kwargs)
        self._extensions, self._keeps_keys = extensions, keeps_keys
        self.env.update(GDK_BACKEND="wayland", QT_QPA_PLATFORM="wayland", MOZ_ENABLE_WAYLAND="1")

    def _start_compositor(self):
        self.set("org.gnome.shell", "enabled-extensions", str(list(self._extensions)))
        super()._start_compositor()
        for key in () if self._keeps_keys else ("cycle-windows", "cycle-windows-backward"):
            self.set("org.gnome.desktop.wm.keybindings", key, "[]")


class GnomeDesktop(WaylandDesktop):
    screen = 1280, 800
    SHORTCUTS = {"alt+Escape", "alt+shift+Escape"}

    def key(self, *chords):
        for chord in chords:
            if chord in self.SHORTCUTS:
                # The settings daemon takes a key a moment after Tavin has started.
                wait_until(lambda: self.is_shortcut(chord), 10, f"shortcut {chord}")
                self.wait_for_calm()
            self.press(chord)
            self.release(chord)

    def is_shortcut(self, chord):
        mask = sum(MASKS[name] for name in chord.split("+")[:-1])
        return self.session.evaluate(
            f"global.display.get_keybinding_action({ESCAPE}, {mask})") not in ("", "0")

    def let_go(self):
        """A hand still holds a shortcut when GNOME has run its command, and lets go of it soon. The
        keys of these tests are up before; any input stands for theirs, where GNOME tells only when
        the last one was."""
        time.sleep(0.3)
        for down in (True, False):
            self.session.send_key(KEYS["shift"], down)
        self.wait_for_calm()

    def wait_for_calm(self):
        """Until the shell answers at once: it has shown what it was told to show."""
        def is_quick():
            start = time.monotonic()
            self.session.evaluate("1")
            return time.monotonic() - start < 0.05
        wait_until(lambda: all(is_quick() for _ in range(3)), 20, "a shell that is not busy")

    def selection_owner(self, name):
        # Read by this process, which has a display of its own otherwise, or none.
        os.environ["XAUTHORITY"] = self.session.env["XAUTHORITY"]
        return super().selection_owner(name)

    def all_windows(self):
        keys = "id", "title", "wm_class", "focused", "client", "type", "rect", "buffer"
        found = json.loads(self.session.evaluate(WINDOWS) or "[]")
        return [dict(zip(keys, window)) for window in found]

    def window(self, wid):
        return next(w for w in self.all_windows() if w["id"] == wid)

    def box(self, wid):
        return self.window(wid)["rect"]

    def hide_messages(self):
        """The shell's own words about a session without a login, which pictures are not about."""
        self.session.evaluate("Main.messageTray.getSources().forEach(s => s.destroy()); 0")
        self.session.evaluate("Main.messageTray.visible = false")

    def windows(self, name):
        found = [w for w in self.all_windows() if name in (w["title"] or "")]
        found = found or [w for w in self.all_windows()
                          if name.lower() in (w["wm_class"] or "").lower()]
        return [w["id"] for w in found]

    def titled(self, name):
        return [w["id"] for w in self.all_windows() if w["title"] == name]

    def focus(self, wid):
        self.session.evaluate(ACTIVATE.format(wid))
        wait_until(lambda: self.has_keyboard(wid), 10, "focus")

    def has_keyboard(self, wid):
        return any(w["id"] == wid and w["focused"] for w in self.all_windows())

    def move(self, x, y):
        self.session.evaluate(POINTER.format(x, y))

        def arrived():
            return json.loads(self.session.evaluate("global.get_pointer().slice(0, 2)")) == [x, y]
        wait_until(arrived, 5, "the pointer")

    def button(self, down, code=LEFT):
        self.session.call(INPUT, self.session._input, INPUT + ".Session", "NotifyPointerButton",
                          GLib.Variant("(ib)", (code, down)))

    def click_at(self, x, y, times=1, code=LEFT):
        self.move(x, y)
        for _ in range(times):
            self.button(True, code)
            self.button(False, code)

    def look(self, script):
        """What a script gives inside the shell."""
        return json.loads(self.session.evaluate(script) or "null")

    def click_actor(self, actor):
        """At something of the shell's own, once it is drawn and moves no more: a menu grows while it
        opens."""
        seen = []

        def still():
            seen.append(self.look(PLACE.format(actor)))
            found = seen[-1]
            drawn = found and None not in found and found[2] > 10 and found[3] > 10
            return found if drawn and seen[-3:] == [found] * 3 else None
        x, y, width, height = wait_until(still, 10, "a place to click at", interval=0.1)
        self.click_at(round(x + width / 2), round(y + height / 2))

    def click(self, wid, x, y, times=1):
        left, top, _, _ = self.window(wid)["rect"]
        self.click_at(left + x, top + y, times)

    def drag(self, *points, code=LEFT):
        first, *others = points
        self.move(*first)
        self.button(True, code)
        for point in others:
            time.sleep(0.1)
            self.move(*point)
        time.sleep(0.1)
        self.button(False, code)

    # Its title, and where it has "Allow remote interaction" and "Share".
    DIALOG, ALLOW, SHARE = "Remote desktop", (430, 74), (457, 23)

    def permission_dialog(self):
        """The window in which the portal asks for permission, once it has the keyboard."""
        return wait_until(lambda: next((w["id"] for w in self.all_windows()
                                        if w["title"] == self.DIALOG and w["focused"]), None),
                          15, "the permission dialog")

    def no_dialog(self):
        return not self.titled(self.DIALOG)

    def may_share(self, dialog):
        """Whether remote interaction is allowed: "Share" is pale before."""
        left, top, _, _ = self.window(dialog)["rect"]
        path = os.path.join(self.session.folder, "dialog.png")
        self.session.picture(path)
        # Above the word, where no pointer hides it.
        red, _, _ = pixels.Picture(path).colour(left + self.SHARE[0], top + self.SHARE[1] - 13)
        return red < 100

    def share(self):
        dialog = self.permission_dialog()

        def shared():
            if self.no_dialog():
                return True
            # What is drawn is not yet what takes a click: some are lost.
            self.wait_for_calm()
            allowed = self.may_share(dialog)
            self.click(dialog, *(self.SHARE if allowed else self.ALLOW))
            with contextlib.suppress(SessionError):
                wait_until(self.no_dialog if allowed else lambda: self.may_share(dialog), 2)
            return self.no_dialog()
        wait_until(shared, 30, "the dialog's end")
        time.sleep(0.5)  # The program in front learns of it later than the shell.

    def share_again(self):
        """After a grant that has ended."""
        self.share()

    def decline(self):
        self.permission_dialog()
        self.key("Escape")
        wait_until(self.no_dialog, 10, "the dialog's end")


class WillingDesktop(GnomeDesktop):
    """For tests that know of no dialogs: a user who grants what is asked for, and presses again."""

    def gives_permission(self, tavin):
        said = tavin.log()
        if said.count("asking the desktop") <= said.count("lets Tavin press"):
            return False
        front = next(w["id"] for w in reversed(self.all_windows())
                     if w["type"] == NORMAL and w["title"] != self.DIALOG)
        self.share()
        wait_until(lambda: tavin.log().count("lets Tavin press") > said.count("lets Tavin press"),
                   10, "permission")
        wait_until(lambda: self.has_keyboard(front), 10, "the program in front")
        return True
