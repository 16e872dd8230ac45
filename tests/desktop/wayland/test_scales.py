"""Windows on sway, at the scale of its output."""

import contextlib

import pytest

pytest.register_assert_rewrite("scale_tests")
from looks import DARK, set_plasma_look  # noqa: E402
from scale_tests import *  # noqa: E402,F401,F403
from sway_desktop import SwayDesktop  # noqa: E402
from sway_session import SwaySession  # noqa: E402

NAME = "sway"


@contextlib.contextmanager
def at_scale(folder, build, scale, dark):
    with SwaySession(folder, build) as session, contextlib.closing(SwayDesktop(session)) as desktop:
        session.command(f"output HEADLESS-1 scale {scale}")
        yield desktop, scale, set_plasma_look(session, DARK) if dark else {}
