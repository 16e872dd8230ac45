"""The icon in lxqt-panel."""

import pytest

pytest.register_assert_rewrite("icon_tests")
from icon_tests import *  # noqa: E402,F401,F403
from panel import set_lxqt_theme  # noqa: E402
from trays import Tray  # noqa: E402


@pytest.fixture
def tray(desktop):
    return Tray(desktop, "lxqt-panel", theme="light")


@pytest.fixture
def make_dark(desktop):
    return lambda: set_lxqt_theme(desktop.session, "ambiance")
