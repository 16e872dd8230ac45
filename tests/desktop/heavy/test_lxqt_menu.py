"""The menu in lxqt-panel."""

import pytest

pytest.register_assert_rewrite("menu_tests")
from menu_tests import *  # noqa: E402,F401,F403
from trays import Tray  # noqa: E402


@pytest.fixture
def make_tray(desktop):
    return lambda: Tray(desktop, "lxqt-panel")


@pytest.fixture
def tray(make_tray):
    return make_tray()
