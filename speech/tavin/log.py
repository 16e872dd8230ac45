"""The engine's log: one line to standard error for each event.

A line never holds the spoken text or a key, and a traceback is cut down to the
exception's type and place, because messages and values in it may quote them.
"""

import logging
import os
import sys
import threading
import traceback

log = logging.getLogger("tavin")


class OneLine(logging.Formatter):
    def format(self, record):
        line = " ".join(record.getMessage().split())
        if record.exc_info and record.exc_info[0]:
            line += f" ({describe(record.exc_info[1])})"
        when = self.formatTime(record, "%Y-%m-%d %H:%M:%S")
        return f"{when} {record.name}: {line}"


def describe(failure):
    """The exception's type and where it was raised."""
    frames = traceback.extract_tb(failure.__traceback__)
    place = f" at {os.path.basename(frames[-1].filename)}:{frames[-1].lineno}" if frames else ""
    return type(failure).__name__ + place


def unexpected(failure):
    """For what nobody caught; Python itself would write it out in full."""
    log.error("unexpected: %s", describe(failure) if failure else "a failure")


def loop_failure(_loop, context):
    """An event loop's exception handler. The message may show a callback's arguments."""
    unexpected(context.get("exception"))


def set_up():
    handler = logging.StreamHandler(sys.stderr)
    handler.setFormatter(OneLine())
    logging.basicConfig(level=logging.INFO, handlers=[handler])
    logging.raiseExceptions = False  # a full disk or a closed log is no failure
    for library in ("aiohttp", "asyncio"):
        logging.getLogger(library).setLevel(logging.ERROR)
    sys.excepthook = lambda kind, failure, trace: unexpected(failure)
    sys.unraisablehook = lambda what: unexpected(what.exc_value)
    threading.excepthook = lambda what: unexpected(what.exc_value)
