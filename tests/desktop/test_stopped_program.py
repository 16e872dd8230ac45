"""A program that answers nothing any more, with its window still on the accessibility bus."""

import os
import signal

import pytest
from accessible import accessible_processes
from session import wait_until

TEXT = "Read beside a stopped program.\nSecond line"
# Far more than a press takes: what would wait for the stopped program's answers takes longer.
SECONDS = 2


@pytest.fixture
def stopped(desktop, session, programs):
    command = ["/usr/bin/python3", os.path.join(programs, "gtk4_field.py"), "never read"]
    program = desktop.start(command, log="stopped.log")
    wait_until(lambda: desktop.windows("GTK 4 field"), 30, "window")
    wait_until(lambda: program.pid in accessible_processes(session), 15, "program on the bus")
    program.send_signal(signal.SIGSTOP)
    yield program
    program.kill()


def test_press_is_served_in_time(tavin, desktop, engine, stopped, build):
    desktop.open([os.path.join(build, "bin/qt6_field"), TEXT], "Qt 6 field")
    desktop.select_until(TEXT, lambda: desktop.key("ctrl+a"))
    since = engine.mark()
    desktop.key("alt+Escape")
    assert engine.wait_for("/speak", since=since, seconds=SECONDS) == [{"text": TEXT}]
    assert stopped.poll() is None
