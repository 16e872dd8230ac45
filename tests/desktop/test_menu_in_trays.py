"""The menu in xfce4-panel and in a tray that knows XEmbed alone."""

import pytest

pytest.register_assert_rewrite("menu_tests")
from menu_tests import *  # noqa: E402,F401,F403
from trays import Tray  # noqa: E402


@pytest.fixture(params=["xfce4-panel", "trayer"])
def make_tray(request, desktop):
    return lambda: Tray(desktop, request.param)


@pytest.fixture
def tray(make_tray):
    return make_tray()
