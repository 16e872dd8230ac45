"""A GNOME session on Wayland whose programs speak Wayland; a file may have another one. With
TAVIN_TEST_DESKTOP=gnome-portal it is GNOME 48's."""

import os

import pytest
from gnome_desktop import GnomeDesktop, NativeGnome
from gnome_portal import GrantedGnome, PortalDesktop
from session import wait_until

TEXT = "Grüße, only a copy brings this text"
HAS_PORTAL = os.environ.get("TAVIN_TEST_DESKTOP") == "gnome-portal"


@pytest.fixture(scope="module")
def start_session(tmp_path_factory, build):
    """A session as this desktop has it; takes what NativeGnome takes."""
    start = GrantedGnome if HAS_PORTAL else NativeGnome
    return lambda **kwargs: start(str(tmp_path_factory.mktemp("session")), build, **kwargs)


@pytest.fixture(scope="module")
def session(start_session):
    with start_session() as private:
        yield private


@pytest.fixture
def desktop(session):
    programs = (PortalDesktop if HAS_PORTAL else GnomeDesktop)(session)
    yield programs
    programs.close()


@pytest.fixture
def shortcuts():
    """Tavin's name for the service of the shortcuts."""
    return "portal" if HAS_PORTAL else "gnome"


@pytest.fixture
def copied_text():
    return TEXT


@pytest.fixture
def bare_field(desktop, build):
    """A program with no accessibility, that only a copy gets anything out of."""
    return desktop.open_bare_field(build, TEXT, QT_QPA_PLATFORM="xcb")


@pytest.fixture
def granted(tavin, desktop, bare_field):
    """A Tavin that was given permission, with the program in front again."""
    assert tavin.press() == []
    desktop.share()
    wait_until(lambda: "lets Tavin press" in tavin.log(), 10, "permission")
    wait_until(lambda: desktop.has_keyboard(bare_field), 10, "the program in front")
    return tavin
