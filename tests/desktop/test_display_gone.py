"""When the display goes, as at a logout, Tavin goes with it, and its engine too."""

import os
import signal
import time

import pytest
from alerts import FAILED, wait_for_alert
from driver import Desktop
from engine import IDLE
from own_engine import engines
from scripted_engine import Pair, make_tree
from session import Session, wait_until
from test_window_program import is_gone, window_programs
from trays import Tray


@pytest.fixture
def pair(tmp_path, build):
    tree = make_tree(str(tmp_path / "tree"), build)
    with Session(str(tmp_path)) as session:
        desktop = Desktop(session)
        yield Pair(desktop, tree)
        desktop.close()


def assert_both_gone_within_a_second(pair):
    start = time.monotonic()
    pair.tavin.session.end_display()
    pair.tavin.process.wait(5)
    assert time.monotonic() - start < 1
    assert pair.how_the_engine_ended() == "SIGTERM"


def test_while_nothing_happens(pair):
    assert_both_gone_within_a_second(pair)


def test_while_the_menu_is_open(pair):
    Tray(pair.tavin.desktop, "trayer").open_menu()
    assert_both_gone_within_a_second(pair)


def test_while_a_press_waits_for_the_engine(pair):
    pair.answer("hang")
    pair.tavin.desktop.key("alt+Escape")
    assert_both_gone_within_a_second(pair)


@pytest.mark.parametrize("engine_lives", [True, False], ids=["engine", "no engine"])
def test_while_an_alert_is_open(pair, engine_lives):
    desktop = pair.tavin.desktop
    pair.answer({**IDLE, **FAILED})
    desktop.key("alt+Escape")
    wait_for_alert(desktop)
    program, = window_programs(pair.tavin)
    if not engine_lives:
        engine, = engines(desktop.session)
        os.kill(engine, signal.SIGKILL)
        wait_until(lambda: is_gone(engine), 5, "the engine's end")
    start = time.monotonic()
    pair.tavin.session.end_display()
    assert pair.tavin.process.wait(5) == 0
    assert time.monotonic() - start < 2
    wait_until(lambda: is_gone(program), 2, "its end")
    assert pair.how_the_engine_ended() == ("SIGTERM" if engine_lives else None)
