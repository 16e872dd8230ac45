"""A Tavin that nobody asks for anything sleeps."""

import os
import time

SECONDS = 10


def switches(pid):
    """How often its threads have gone to sleep so far, by their numbers."""
    counts = {}
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/status", encoding="utf-8") as f:
            line = next(line for line in f if line.startswith("voluntary_ctxt_switches"))
            counts[thread] = int(line.split()[1])
    return counts


def test_no_thread_wakes(tavin, desktop, build):
    desktop.open([os.path.join(build, "bin/qt6_field"), "nobody reads this"], "Qt 6 field")
    time.sleep(3)  # What the start and the window have set off.
    before = switches(tavin.process.pid)
    time.sleep(SECONDS)
    after = switches(tavin.process.pid)
    assert after == before
