"""The private session under KWin."""

import pytest
from kwin_session import KwinSession

pytest.register_assert_rewrite("session_tests")
from session_tests import *  # noqa: E402,F401,F403


@pytest.fixture(scope="module")
def session(tmp_path_factory, build):
    with KwinSession(str(tmp_path_factory.mktemp("session")), build) as private:
        yield private
