"""Windows on X11, whose desktops tell the scale as dots per inch."""

import contextlib

import pytest

pytest.register_assert_rewrite("scale_tests")
from driver import Desktop  # noqa: E402
from looks import DARK, set_plasma_look  # noqa: E402
from scale_tests import *  # noqa: E402,F401,F403
from session import Session  # noqa: E402

NAME = "x11"


@contextlib.contextmanager
def at_scale(folder, _build, scale, dark):
    with Session(folder) as session, contextlib.closing(Desktop(session)) as desktop:
        session.run(["xrdb", "-nocpp", "-merge"], stdin=None, input=f"Xft.dpi: {96 * scale}\n")
        yield desktop, 1, set_plasma_look(session, DARK) if dark else {}
