"""Thirty megabytes on the clipboard come back after a copy."""

import os
import subprocess

import pytest
from session import wait_until

TEXT = "only a copy brings this text"
BYTES = 30_000_000


@pytest.fixture
def bare_field(desktop, build):
    """A program with no accessibility, that only a copy gets anything out of."""
    nowhere = {**desktop.session.env, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"}
    return desktop.open([os.path.join(build, "bin/qt6_field"), TEXT, "--bare"], "Qt 6 field",
                        env=nowhere)


def test_all_of_it_comes_back(tavin, desktop, session, build, bare_field):
    owner = desktop.start([os.path.join(build, "bin/clipboard_holder"), str(BYTES)],
                          stdout=subprocess.PIPE)
    assert owner.stdout.readline() == b"owned\n"
    before = wait_until(desktop.clipboard, 10, "the clipboard")
    assert len(before) == 3
    assert len(dict(before)["application/x-tavin-test"]) == BYTES
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() == before
    owner.kill()
    assert desktop.clipboard() == before, "it is Tavin's own now"
