"""A private session for each test file, and for each test fresh programs in it.

TAVIN_TEST_DESKTOP says on which desktop: "x11", "sway", "kwin", "gnome" or, from GNOME 48
on, "gnome-portal".
"""

import os
import sys

import pytest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, "wayland")]
import isolation  # noqa: E402
from driver import Desktop, Tavin  # noqa: E402
from engine import RecordingEngine  # noqa: E402
from gnome_desktop import NativeGnome, WillingDesktop  # noqa: E402
from gnome_portal import GrantedGnome, WillingPortalDesktop  # noqa: E402
from kwin_desktop import KwinDesktop  # noqa: E402
from kwin_session import KwinSession  # noqa: E402
from session import Session  # noqa: E402
from sway_desktop import SwayDesktop  # noqa: E402
from sway_session import SwaySession  # noqa: E402

PROGRAMS = os.path.join(HERE, "programs")
# How to start the session and how to use it.
DESKTOPS = {"x11": (lambda folder, _build: Session(folder), Desktop),
            "sway": (SwaySession, SwayDesktop),
            "kwin": (lambda folder, build: KwinSession(folder, build, native=True), KwinDesktop),
            "gnome": (NativeGnome, WillingDesktop),
            "gnome-portal": (GrantedGnome, WillingPortalDesktop)}
start_session, use_session = DESKTOPS[os.environ.get("TAVIN_TEST_DESKTOP", "x11")]


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
def session(tmp_path_factory, build):
    with start_session(str(tmp_path_factory.mktemp("session")), build) as private:
        yield private


@pytest.fixture
def desktop(session):
    programs = use_session(session)
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


@pytest.fixture
def bare_field(request, desktop, build):
    """With the TEXT of the test's file selected."""
    return desktop.open_bare_field(build, request.module.TEXT)
