"""Windows on sway, at the scale of its output."""

import contextlib
import os

import pytest

pytest.register_assert_rewrite("scale_tests")
from looks import DARK, set_plasma_look  # noqa: E402
from photographs import once_drawn, show_alert  # noqa: E402
from pixels import Picture  # noqa: E402
from scale_tests import *  # noqa: E402,F401,F403
from sway_desktop import SwayDesktop  # noqa: E402
from sway_session import SwaySession  # noqa: E402

NAME = "sway"


@pytest.fixture
def photograph(tmp_path, build):
    def take(scale, dark):
        folder = tmp_path / f"{scale}"
        folder.mkdir()
        with SwaySession(str(folder), build) as session, contextlib.closing(
                SwayDesktop(session)) as desktop:
            session.command(f"output HEADLESS-1 scale {scale}")
            look = set_plasma_look(session, DARK) if dark else {}
            rect = desktop.window(show_alert(desktop, build, **look))["rect"]
            path = os.path.join(session.folder, "screen.png")
            sides = [round(scale * rect[side]) for side in ("x", "y", "width", "height")]
            return once_drawn(lambda: (session.run(["grim", path]), Picture(path).part(*sides))[1])
    return take
