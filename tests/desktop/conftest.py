"""A private session for each test file, and for each test fresh programs in it."""

import os
import sys

import pytest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import isolation  # noqa: E402
from driver import Desktop, Tavin  # noqa: E402
from engine import RecordingEngine  # noqa: E402
from session import Session  # noqa: E402

PROGRAMS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "programs")


def pytest_sessionstart():
    if isolation.KIND not in os.environ:
        pytest.exit("run through tests/tools/in-session --bare, which keeps the port free", 2)


@pytest.fixture(scope="session")
def build():
    """The build tree with bin/tavin."""
    return os.environ["TAVIN_BUILD"]


@pytest.fixture(scope="session")
def programs():
    """The folder of the small programs that tests start."""
    return PROGRAMS


@pytest.fixture(scope="module")
def session(tmp_path_factory):
    with Session(str(tmp_path_factory.mktemp("session"))) as private:
        yield private


@pytest.fixture
def desktop(session):
    programs = Desktop(session)
    yield programs
    programs.close()


@pytest.fixture
def engine():
    recording = RecordingEngine()
    yield recording
    recording.close()


@pytest.fixture
def tavin(desktop, engine, build):
    return Tavin(desktop, engine, build)
