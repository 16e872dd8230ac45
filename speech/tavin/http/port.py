"""The engine's port: one engine has it at a time, others wait for it to become free.

An engine of this user that has the port and answers nothing any more, because it was
stopped or its home hangs, is ended: else nothing would speak until the next login.
"""

import asyncio
import errno
import os
import select
import signal
import socket

from tavin.http import sockets
from tavin.http.guard import PORT
from tavin.http.holders import Holders
from tavin.log import log

RETRY_SECONDS = 2.0
STATUS_SECONDS = 3.0
END_SECONDS = 1.0
SEARCH_SECONDS = 10.0  # nobody waits for it
STATUS = f"GET /status HTTP/1.1\r\nHost: 127.0.0.1:{PORT}\r\n\r\n".encode()


async def listen():
    """The listening socket, as soon as it can be had."""
    holder, told = None, False
    while True:
        try:
            return bound()
        except OSError as failure:
            holder = await asyncio.to_thread(Holder.now, holder)
            if not told:
                taken = failure.errno == errno.EADDRINUSE
                reason = f"{holder.name()} has it" if taken else failure.strerror
                log.info("port %d cannot be had, trying again: %s", PORT, reason)
                told = True
        if holder.is_engine_of_ours() and not await answers():
            await holder.end()
        else:
            await asyncio.sleep(RETRY_SECONDS)


def bound():
    listener = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
    try:
        listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        listener.bind(("127.0.0.1", PORT))
        listener.listen(128)
    except OSError:
        listener.close()
        raise
    return listener


class Holder:
    """Who has the port now. It may be a listener, or a connection that got the number by chance."""

    def __init__(self, found):
        self._socket = self._state, self._user, self._inode = found
        own = self._inode and self._user == os.getuid()
        self._process, self._ours = (own and Holders().find(self._inode, SEARCH_SECONDS)) or (None, False)

    @classmethod
    def now(cls, before):
        """`before` is who had it the last time: mostly it is the same, and needs no search."""
        found = sockets.on_port(PORT) or (0, os.getuid(), 0)
        return before if before and before.is_known_to_have(found) else cls(found)

    def is_known_to_have(self, found):
        return self._socket == found and (self._process or self._user != os.getuid())

    def name(self):
        if self._user != os.getuid():
            return "another user's program, perhaps another Tavin,"
        if not self._process:
            return "a program that does not show itself"
        what = "" if self._ours else "the sandboxed program "
        return f"{what}“{self._process.name()}” (process {self._process.pid})"

    def is_engine_of_ours(self):
        listens = self._state == sockets.LISTENS
        return self._ours and listens and b"tavin.server" in self._process.arguments()

    async def end(self):
        """Politely, then by force. Of a stopped process only the latter is any use."""
        pid = self._process.pid
        try:
            process = os.pidfd_open(pid)
        except OSError:
            return  # it has just ended
        try:
            # The number may be another process's by now, the socket is not.
            if self._process.descriptor(self._inode) is None:
                return
            log.info("ending process %d, an engine that gave no status for %d s", pid, STATUS_SECONDS)
            for number in (signal.SIGTERM, signal.SIGKILL):
                signal.pidfd_send_signal(process, number)
                if await ended(process):
                    return
        except ProcessLookupError:
            pass
        finally:
            os.close(process)


async def ended(process):
    return await asyncio.to_thread(select.select, [process], [], [], END_SECONDS) != ([], [], [])


async def answers():
    """Whether an engine on the port gives its status in time."""
    try:
        async with asyncio.timeout(STATUS_SECONDS):
            reader, writer = await asyncio.open_connection("127.0.0.1", PORT)
            try:
                writer.write(STATUS)
                return b" 200 " in await reader.readline()
            finally:
                writer.transport.abort()
    except TimeoutError:
        return False
    except (OSError, ValueError):
        return True  # it ended, or refuses: no reason to end it
