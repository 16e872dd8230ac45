"""The player in the tray of Plasma 6's panel, beside which this file's folder has a `test_plasma` of its own."""

import os
import sys

import pytest

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../kde"))
pytest.register_assert_rewrite("player_tests", "plasma_tests", "test_player")
from test_player import *  # noqa: E402,F401,F403
from test_player import desktop, panel, paused, player, session, tavin  # noqa: E402,F401
