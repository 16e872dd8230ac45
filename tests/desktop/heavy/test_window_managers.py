"""The shortcuts under other window managers, and what happens where those hold them."""

import os

import pytest
from driver import Desktop, Tavin
from session import Session, wait_until

TEXT = "text under a window manager"


@pytest.fixture(params=["xfwm4", "openbox --config-file /etc/xdg/openbox/rc.xml", "mutter"])
def elsewhere(request, tmp_path):
    with Session(str(tmp_path), wm=request.param) as session:
        desktop = Desktop(session)
        yield request.param.split()[0], desktop
        desktop.close()


def select_text(desktop, build):
    desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))


def test_default_shortcut_works_or_is_refused_in_the_log(elsewhere, engine, build):
    name, desktop = elsewhere
    tavin = Tavin(desktop, engine, build)
    if name == "xfwm4":
        select_text(desktop, build)
        assert tavin.press() == [TEXT]
        assert "unavailable" not in tavin.log()
    else:
        # Alt+Escape switches windows there; the refusal is told.
        told = "Tavin: hotkey keyCode=53 modifiers=2048 unavailable"
        wait_until(lambda: told in tavin.log(), 10, "the refusal in the log")


def test_a_free_preset_works_everywhere(elsewhere, engine, build):
    _, desktop = elsewhere
    folder = os.path.join(desktop.session.env["XDG_CONFIG_HOME"], "tavin")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "tavin.conf"), "w", encoding="utf-8") as f:
        f.write("[General]\nshortcut=ctrl-opt-r\n")
    tavin = Tavin(desktop, engine, build)
    select_text(desktop, build)
    assert tavin.press("ctrl+alt+r") == [TEXT]
