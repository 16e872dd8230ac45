"""Whatever Tavin is at when it is told to quit, it is gone within a second, and its engine with it.
"""

import os
import signal

import pytest
from alerts import FAILED, take_permission_away, wait_for_alert
from engine import IDLE
from scripted_engine import Pair, make_tree
from session import wait_until
from trays import Tray

TEXT = "text in a program that does not answer"


@pytest.fixture(scope="module")
def tree(tmp_path_factory, build):
    return make_tree(str(tmp_path_factory.mktemp("tree")), build)


@pytest.fixture
def pair(desktop, tree):
    return Pair(desktop, tree)


def quiet(desktop, pair, build):
    pass


def menu_of_a_panel(desktop, pair, build):
    Tray(desktop, "xfce4-panel").open_menu()


def own_menu(desktop, pair, build):
    Tray(desktop, "trayer").open_menu()


def error_alert(desktop, pair, build):
    pair.answer({**IDLE, **FAILED})
    desktop.key("alt+Escape")
    wait_for_alert(desktop)


def permission_alert(desktop, pair, build):
    take_permission_away(pair.tavin)
    desktop.key("alt+Escape")
    wait_for_alert(desktop)


def key_dialog(desktop, pair, build):
    menu = Tray(desktop, "trayer").open_menu()
    menu.choose_with_keys("Set API Key")
    desktop.key("Return")
    wait_for_alert(desktop)


def capture(desktop, pair, build):
    program = desktop.start([os.path.join(build, "bin/qt6_field"), TEXT])
    desktop.focus(wait_until(lambda: desktop.windows("Qt 6 field"), 20, "the field")[-1])
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    program.send_signal(signal.SIGSTOP)
    desktop.key("alt+Escape")


def hung_engine(desktop, pair, build):
    pair.answer("hang")
    desktop.key("alt+Escape")


STATES = [quiet, menu_of_a_panel, own_menu, error_alert, permission_alert, key_dialog, capture,
          hung_engine]


@pytest.fixture(params=STATES, ids=lambda state: state.__name__)
def busy(request, desktop, pair, build):
    request.param(desktop, pair, build)
    yield pair
    desktop.session.enable_accessibility()


def test_told_to_end(busy):
    code, seconds = busy.tavin.quit(signal.SIGTERM)
    assert code == 0
    assert seconds < 1
    assert busy.how_the_engine_ended() == "SIGTERM"


def test_killed(busy):
    busy.tavin.quit(signal.SIGKILL)
    assert busy.how_the_engine_ended() == "SIGTERM"


def test_quit_in_the_menu(desktop, pair):
    Tray(desktop, "xfce4-panel").open_menu().click("Quit Tavin")
    assert pair.tavin.process.wait(1) == 0
    assert pair.how_the_engine_ended() == "SIGTERM"
