"""A desktop session for each test, with the installed program in it.

TAVIN_PREFIX says where that is installed, /usr unless told. The port must be free: these run on a
machine of their own, or through tests/tools/in-session --bare.
"""

import os
import sys

import pytest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [os.path.join(HERE, "../desktop")]
from driver import Desktop  # noqa: E402
from session import Session  # noqa: E402


@pytest.fixture
def prefix():
    return os.environ.get("TAVIN_PREFIX", "/usr")


@pytest.fixture
def desktop(tmp_path, prefix):
    with Session(str(tmp_path), sound=True) as session:
        session.env["XDG_DATA_DIRS"] = f"{prefix}/share:/usr/local/share:/usr/share"
        programs = Desktop(session)
        yield programs
        programs.close()
