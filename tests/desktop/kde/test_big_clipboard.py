"""Thirty megabytes on the clipboard come back after a copy."""

import os
import subprocess

from session import wait_until

TEXT = "only a copy brings this text"
BYTES = 30_000_000


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
