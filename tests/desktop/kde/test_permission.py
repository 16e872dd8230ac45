"""What KWin lets a program do only if its desktop file asks for it."""

import os
import subprocess

import pytest
from driver import Tavin
from kwin_session import KwinSession
from session import wait_until

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../..")
TEXT = "only a copy brings this text"


@pytest.fixture
def session(tmp_path, build):
    with KwinSession(str(tmp_path), build, native=True, linked=False) as private:
        yield private


def link_entries(session, build):
    return session.run([os.path.join(ROOT, "tools/link-entries"), build])


def test_without_a_desktop_file_nothing_is_typed(desktop, engine, build, bare_field):
    tavin = Tavin(desktop, engine, build)
    # From Plasma 6 on a copy needs to know which keys are held, which KWin does not tell then.
    plasma_5 = desktop.session.env["KDE_SESSION_VERSION"] == "5"
    keyboard = "portal" if plasma_5 else "none"
    assert f", keyboard {keyboard}, windows none, " in tavin.log()
    assert ("KWin tells no held keys" in tavin.log()) != plasma_5
    assert tavin.press() == []


def test_with_the_linked_desktop_file_a_copy_brings_the_text(session, desktop, engine, build,
                                                             bare_field):
    assert "Linked" in link_entries(session, build)
    tavin = Tavin(desktop, engine, build)
    assert ", keyboard fake-input, windows plasma-window-management, " in tavin.log()
    assert tavin.press() == [TEXT]


def test_with_the_installed_desktop_file_a_copy_brings_the_text(session, desktop, engine, build,
                                                                bare_field):
    prefix = os.path.dirname(session.env["XDG_DATA_HOME"])
    session.run(["cmake", "--install", build, "--prefix", prefix], seconds=60)
    assert not os.path.islink(os.path.join(prefix, "share/applications/app.tavin.Tavin.desktop"))

    def permitted():
        """KWin looks for new desktop files, but not at once."""
        tavin = Tavin(desktop, engine, prefix)
        if tavin.log().rpartition("Tavin: Wayland")[2].startswith(
                ", clipboard wlr-data-control 2, keyboard fake-input, windows plasma-window-management, "):
            return tavin
        return tavin.quit() and None
    assert wait_until(permitted, 20, "KWin's permission").press() == [TEXT]


def test_linking_again_changes_and_says_nothing(session, build):
    link_entries(session, build)
    assert link_entries(session, build) == ""


def test_a_link_to_another_build_is_made_anew(session, build, tmp_path):
    folder = os.path.join(session.env["XDG_DATA_HOME"], "applications")
    os.makedirs(folder, exist_ok=True)
    link = os.path.join(folder, "app.tavin.Tavin.desktop")
    os.symlink(tmp_path / "gone", link)
    link_entries(session, build)
    assert os.readlink(link) == os.path.join(build, "share/applications/app.tavin.Tavin.desktop")


def test_an_installed_desktop_file_stays(session, build):
    path = os.path.join(session.env["XDG_DATA_HOME"], "applications/app.tavin.Tavin.desktop")
    with open(path, "w", encoding="utf-8") as f:
        f.write("installed")
    link_entries(session, build)
    assert open(path, encoding="utf-8").read() == "installed"
    assert subprocess.run(["test", "-L", path], check=False).returncode == 1
