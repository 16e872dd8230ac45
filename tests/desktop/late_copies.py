"""A program that copies long after it was asked to, on any desktop."""

import random
import time

from driver import SPEAK
from session import wait_until

TEXT = "copied too late"
COPIED = "what the user had copied"
# What Tavin does in a moment may take longer on a busy machine; what happens just then is either's.
MOMENT = 0.3


def has_copied(desktop, times=1):
    wait_until(lambda: desktop.titled(f"Qt 6 field, copied {times}"), 15, "the copy")


def press_until_asked(desktop):
    """Returns when the program was asked to copy."""
    before = times_asked(desktop)
    desktop.key(SPEAK)
    wait_until(lambda: times_asked(desktop) > before, 10, "the copy command")


def times_asked(desktop):
    return desktop.session.log("qt6_field.log").count("asked\n")


def moments(seed):
    """After how many seconds the copy lands, and after how many Tavin ends: others for each seed, the same
    each time."""
    chance = random.Random(seed)
    return chance.uniform(0, 3), chance.uniform(0, 3)


def end_after(tavin, desktop, number, seconds):
    """Ends Tavin so long after the copy was asked for: by how many seconds the copy came before the end,
    less than 0 where it came after."""
    time.sleep(seconds)
    tavin.quit(number)
    ended = time.monotonic()
    has_copied(desktop)
    copied = desktop.session.log("qt6_field.log").rpartition("copied at ")[2]
    return ended - float(copied)
