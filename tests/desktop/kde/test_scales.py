"""Windows under KWin, at the scale of its screen."""

import contextlib
import os

import pytest

pytest.register_assert_rewrite("scale_tests")
from kwin_desktop import KwinDesktop  # noqa: E402
from kwin_session import KwinSession  # noqa: E402
from looks import DARK, set_plasma_look  # noqa: E402
from photographs import once_drawn, show_alert  # noqa: E402
from pixels import Picture  # noqa: E402
from scale_tests import *  # noqa: E402,F401,F403

NAME = "plasma"


@pytest.fixture
def photograph(tmp_path, build):
    def take(scale, dark):
        folder = tmp_path / f"{scale}"
        folder.mkdir()
        with KwinSession(str(folder), build, native=True, scale=scale) as session, contextlib.closing(
                KwinDesktop(session)) as desktop:
            look = set_plasma_look(session, DARK if dark else {})
            box = desktop.window(show_alert(desktop, build, **look)).box
            path = os.path.join(session.folder, "screen.png")
            return once_drawn(lambda: session.picture(path) or Picture(path).part(
                *(round(scale * side) for side in box)))
    return take
