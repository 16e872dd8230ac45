"""The private session under GNOME Shell."""

import pytest
from gnome_session import GnomeSession

pytest.register_assert_rewrite("session_tests")
from session_tests import *  # noqa: E402,F401,F403


@pytest.fixture(scope="module")
def session(tmp_path_factory):
    with GnomeSession(str(tmp_path_factory.mktemp("session"))) as private:
        yield private
