"""Windows under KWin, at the scale of its screen."""

import contextlib

import pytest

pytest.register_assert_rewrite("scale_tests")
from kwin_desktop import KwinDesktop  # noqa: E402
from kwin_session import KwinSession  # noqa: E402
from looks import DARK, set_plasma_look  # noqa: E402
from scale_tests import *  # noqa: E402,F401,F403

NAME = "plasma"


@contextlib.contextmanager
def at_scale(folder, build, scale, dark):
    with KwinSession(folder, build, native=True, scale=scale) as session, contextlib.closing(
            KwinDesktop(session)) as desktop:
        yield desktop, scale, set_plasma_look(session, DARK if dark else {})
