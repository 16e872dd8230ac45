"""When the display goes, as at a logout, Tavin goes with it, and its engine too."""

import time

import pytest
from driver import Desktop
from scripted_engine import Pair, make_tree
from session import Session
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
