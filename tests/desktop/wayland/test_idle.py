"""A Tavin that nobody asks for anything sleeps."""

import os
import time

SECONDS = 10


def test_no_thread_wakes(tavin, desktop, build):
    desktop.open([os.path.join(build, "bin/qt6_field"), "nobody reads this"], "Qt 6 field")
    time.sleep(3)  # What the start and the window have set off.
    before = tavin.times_asleep()
    time.sleep(SECONDS)
    after = tavin.times_asleep()
    assert after == before
