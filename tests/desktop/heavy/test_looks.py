"""Windows on X11, in the look of Plasma's settings."""

import contextlib

import pytest

pytest.register_assert_rewrite("look_tests")
from driver import Desktop  # noqa: E402
from look_tests import *  # noqa: E402,F401,F403
from looks import HIGH_CONTRAST, set_plasma_look  # noqa: E402
from photographs import of_window, show_alert  # noqa: E402
from session import Session  # noqa: E402

LOOKS = {"usual": ({}, 10), "high contrast": (HIGH_CONTRAST, 10), "large letters": ({}, 24)}


@pytest.fixture
def photograph(tmp_path, build):
    def take(look):
        folder = tmp_path / look.replace(" ", "-")
        folder.mkdir()
        with Session(str(folder)) as session, contextlib.closing(Desktop(session)) as desktop:
            look_of_plasma = set_plasma_look(session, *LOOKS[look])
            return of_window(desktop, show_alert(desktop, build, **look_of_plasma))
    return take
