"""Tavin with a scripted engine as its child, to see how the two end together."""

import contextlib
import json
import os
import shutil

from driver import Tavin
from engine import IDLE
from own_engine import engines, listening
from session import wait_until

HERE = os.path.dirname(os.path.abspath(__file__))


def make_tree(folder, build):
    """An installed tree whose engine is the scripted one; returns its root."""
    engine = os.path.join(folder, "engine")
    shutil.copytree(os.path.join(HERE, "programs/scripted_engine"), engine)
    os.makedirs(os.path.join(engine, ".venv/bin"))
    os.symlink("/usr/bin/python3", os.path.join(engine, ".venv/bin/python"))
    os.makedirs(os.path.join(folder, "bin"))
    shutil.copy(os.path.join(build, "bin/tavin"), os.path.join(folder, "bin"))
    shutil.copytree(os.path.join(build, "lib/tavin"), os.path.join(folder, "lib/tavin"))
    os.makedirs(os.path.join(folder, "share/tavin"))
    with open(os.path.join(folder, "share/tavin/info.json"), "w", encoding="utf-8") as f:
        json.dump({"TavinEngineDir": engine}, f)
    return folder


class Pair:
    """A Tavin from `tree` and the engine that it started."""

    def __init__(self, desktop, tree):
        self._session = desktop.session
        self._home = desktop.session.env["HOME"]
        with contextlib.suppress(FileNotFoundError):
            os.unlink(os.path.join(self._home, "engine-end"))
        self.answer(IDLE)
        self.tavin = Tavin(desktop, None, tree)
        wait_until(listening, 30, "the engine's port")

    def answer(self, status):
        path = os.path.join(self._home, "engine-status.json")
        with open(path + ".new", "w", encoding="utf-8") as f:
            json.dump(status, f)
        os.replace(path + ".new", path)

    def how_the_engine_ended(self):
        """The signal that asked it to, once it is gone; None where none did."""
        wait_until(lambda: not engines(self._session), 5, "end of the engine")
        with contextlib.suppress(FileNotFoundError):
            with open(os.path.join(self._home, "engine-end"), encoding="utf-8") as f:
                return f.read()
        return None
