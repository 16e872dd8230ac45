"""Programs that own the clipboard while a selection is copied, and how they are treated."""

import os

import pytest
from session import wait_until

TEXT = "only a copy brings this text"
PRIVATE = "application/x-tavin-test"


@pytest.fixture
def hold(desktop, build):
    """Starts a program that owns the clipboard with so many bytes, with such manners."""
    def run(size, *manners):
        program = desktop.start([os.path.join(build, "bin/clipboard_holder"), str(size), *manners],
                                log="holder.log")
        wait_until(lambda: "owned" in desktop.session.log("holder.log"), 15, "clipboard owner")
        os.unlink(os.path.join(desktop.session.folder, "holder.log"))
        return program
    return run


def test_thirty_megabytes_come_back(tavin, desktop, hold, bare_field):
    hold(30_000_000)
    before = desktop.clipboard()
    assert len(dict(before)[PRIVATE]) == 30_000_000
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() == before


def test_owner_that_gives_no_text_is_left_alone(tavin, desktop, hold, bare_field):
    owner = hold(10, "silent text")
    assert tavin.press() == []
    assert dict(desktop.clipboard_types([PRIVATE]))[PRIVATE]
    assert owner.poll() is None


def test_owner_that_ends_while_it_is_read(tavin, desktop, hold, bare_field):
    hold(1000, "dies")
    # What it held is lost, but it was not we who took it away: this press reads nothing.
    assert tavin.press() == []
    assert desktop.clipboard() is None
    assert tavin.press() == [TEXT]
    assert desktop.clipboard() is None
