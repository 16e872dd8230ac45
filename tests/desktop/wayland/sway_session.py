"""A private desktop session in a headless sway: no screen, no X display."""

import contextlib
import json
import os
import re
import socket
import struct
import subprocess

from session import Session, SessionError, wait_until
from sway_input import HEIGHT, WIDTH, SwayInput

CONFIGURATION = f"""
xwayland disable
output HEADLESS-1 resolution {WIDTH}x{HEIGHT}
default_border none
default_floating_border none
bindsym --no-repeat Mod1+Escape exec gapplication action app.tavin.Tavin speak
bindsym --no-repeat Mod1+Shift+Escape exec gapplication action app.tavin.Tavin pause
"""
GET_TREE, RUN_COMMAND = 4, 0


class SwaySession(Session):
    """`build` is the build tree, with the input program and what lets root start sway."""

    def __init__(self, folder, build, **kwargs):
        super().__init__(folder, wm="sway", **kwargs)
        self._build = build
        self.input = None  # Of the user in front of it.

    @staticmethod
    def _environment(folder):
        env = Session._environment(folder)
        env.update(GDK_BACKEND="wayland", QT_QPA_PLATFORM="wayland", MOZ_ENABLE_WAYLAND="1",
                   XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP="sway",
                   # The first that sway tries in a folder of its own.
                   WAYLAND_DISPLAY="wayland-1",
                   SWAYSOCK=os.path.join(env["XDG_RUNTIME_DIR"], "sway.sock"))
        return env

    def _start_display(self):
        """Nothing: the compositor is the window manager, and wants the bus."""

    def _start_window_manager(self):
        configuration = os.path.join(self.folder, "sway.conf")
        with open(configuration, "w", encoding="utf-8") as f:
            f.write(CONFIGURATION)
        env = {**self.env, "WLR_BACKENDS": "headless", "WLR_LIBINPUT_NO_DEVICES": "1",
               "WLR_RENDERER": "pixman"}
        del env["WAYLAND_DISPLAY"]
        preload = os.path.join(self._build, "bin/libany_user.so")
        command = ["sway", "--config", configuration]
        if os.getuid() == 0:
            # Not into the programs that sway starts.
            command = ["env", f"LD_PRELOAD={preload}", *command]
        self._start_service(command, env=env, log="sway.log")
        wait_until(self._serves, 30, "sway")
        self.input = SwayInput(self._start_service(
            [os.path.join(self._build, "bin/wayland_input")], stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, text=True))

    def _serves(self):
        with contextlib.suppress(OSError):
            path = os.path.join(self.env["XDG_RUNTIME_DIR"], self.env["WAYLAND_DISPLAY"])
            return os.path.exists(path) and self.ask(GET_TREE)
        return None

    def picture(self, path):
        self.run(["grim", path])

    def ask(self, kind, text=""):
        """A question in sway's own language; its answer."""
        with socket.socket(socket.AF_UNIX) as s:
            s.settimeout(10)
            s.connect(self.env["SWAYSOCK"])
            body = text.encode()
            s.sendall(b"i3-ipc" + struct.pack("=II", len(body), kind) + body)
            with s.makefile("rb") as answer:
                length, _ = struct.unpack("=6xII", answer.read(14))
                return json.loads(answer.read(length))

    def command(self, text):
        for result in self.ask(RUN_COMMAND, text):
            if not result["success"]:
                raise SessionError(f"sway: {text}: {result.get('error')}")

    def windows(self):
        """All windows, as sway describes them."""
        found, unseen = [], [self.ask(GET_TREE)]
        while unseen:
            node = unseen.pop()
            unseen += node["nodes"] + node["floating_nodes"]
            if node.get("pid"):
                found.append(node)
        return found

    def windows_matching(self, pattern):
        """Those with such a title, else those of such a program."""
        windows = self.windows()
        for field in ("name", "app_id"):
            matching = [w for w in windows if re.search(pattern, w.get(field) or "", re.I)]
            if matching:
                return matching
        return []
