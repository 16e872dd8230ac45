"""The engine's log: one line to standard error for each event.

A line never holds the spoken text, and a traceback is cut down to the
exception's type, because messages and values in it may quote the text.
"""

import logging
import sys

log = logging.getLogger("tavin")


class OneLine(logging.Formatter):
    def format(self, record):
        line = " ".join(record.getMessage().split())
        if record.exc_info and record.exc_info[0]:
            line += f" ({record.exc_info[0].__name__})"
        when = self.formatTime(record, "%Y-%m-%d %H:%M:%S")
        return f"{when} {record.name}: {line}"


def set_up():
    handler = logging.StreamHandler(sys.stderr)
    handler.setFormatter(OneLine())
    logging.basicConfig(level=logging.INFO, handlers=[handler])
    logging.raiseExceptions = False  # a full disk or a closed log is no failure
    for library in ("aiohttp", "asyncio"):
        logging.getLogger(library).setLevel(logging.ERROR)
