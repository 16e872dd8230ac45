"""A desktop session for each test, with sound, in which the installed program is started.

The engine's port must be free: these run on a machine of their own (tests/packages/run) or through
tests/tools/in-session --bare.
"""

import os
import sys

import pytest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [os.path.join(HERE, "../desktop"), os.path.join(HERE, "../desktop/wayland"),
                os.path.join(HERE, "../packaging")]
from driver import Desktop  # noqa: E402
from session import Session  # noqa: E402


@pytest.fixture
def prefix():
    return "/usr"


@pytest.fixture
def desktop(tmp_path):
    with Session(str(tmp_path), sound=True) as session:
        programs = Desktop(session)
        yield programs
        programs.close()
