"""Who is at the other end of a connection on the loopback interface.

Asked as soon as a connection is accepted, before a byte of it is read. Only a
socket that still belongs to a process shows its owner: one that was closed at
once shows no inode and user 0, and must not pass for root's.
"""

import asyncio
import os
import socket
from concurrent.futures import ThreadPoolExecutor

from tavin.http.holders import Holders
from tavin.http.sockets import owner
from tavin.log import log

CLOSED = 7
# Those of a connection that was made and whose program has not closed it.
CONNECTED = {1, 4, 5, 8}  # established, two of a half-closed end, half closed by us
MOST_WAITING = 32  # for the search for their process: more come from nobody who is in good faith

REFUSAL_BODY = b'{"error": "Programs of other users and in sandboxes are not served."}'
REFUSAL = (
    b"HTTP/1.1 403 Forbidden\r\nContent-Type: application/json\r\nConnection: close\r\n"
    b"Content-Length: %d\r\n\r\n%s" % (len(REFUSAL_BODY), REFUSAL_BODY)
)


class Peers:
    """Tells of connections whether a program of ours is at the other end."""

    def __init__(self):
        self._holders = Holders()
        self._searcher = ThreadPoolExecutor(1)
        self.waiting = 0  # connections of which it is not known yet

    def is_known(self, connection):
        inode = own_inode(connection)
        return inode != 0 and self._holders.is_known(inode)

    async def stranger(self, connection):
        """Who it is when it is none of ours, in words for the log; None when it is."""
        inode = own_inode(connection)
        if not inode or self.waiting >= MOST_WAITING:
            return "a program of another user, or one that was gone at once"
        self.waiting += 1
        try:
            found = await asyncio.get_running_loop().run_in_executor(
                self._searcher, self._holders.find, inode
            )
        finally:
            self.waiting -= 1
        if not found:
            return "a program that does not show itself"
        process, ours = found
        if not ours:
            return f"a sandboxed program, “{process.name()}” (process {process.pid})"
        # It may have left while it was searched for.
        return None if own_inode(connection) == inode else "a program that was gone at once"


class Doorkeeper(asyncio.Protocol):
    """Hands a connection of our own programs to the HTTP server, refuses any other."""

    told = False

    def __init__(self, server, peers):
        """`server()` makes the protocol of an accepted connection."""
        self._server = server
        self._peers = peers
        self._transport = None
        self._search = None

    def connection_made(self, transport):
        self._transport = transport
        if self._peers.is_known(transport.get_extra_info("socket")):
            self._accept()
        else:
            # Not here: the transport begins to read after this call.
            asyncio.get_running_loop().call_soon(self._look)

    def data_received(self, data):
        self._transport.abort()  # nothing is read before it is known from whom

    def _look(self):
        self._transport.pause_reading()
        self._search = asyncio.get_running_loop().create_task(self._decide())

    async def _decide(self):
        stranger = await self._peers.stranger(self._transport.get_extra_info("socket"))
        if self._transport.is_closing():
            return
        if stranger:
            self._refuse(stranger)
        else:
            self._accept()
            self._transport.resume_reading()

    def _accept(self):
        protocol = self._server()
        self._transport.set_protocol(protocol)
        protocol.connection_made(self._transport)

    def _refuse(self, stranger):
        if not Doorkeeper.told:
            Doorkeeper.told = True  # once: nobody else may fill the user's disk
            log.info("refused: a connection of %s", stranger)
        self._transport.write(REFUSAL)
        self._transport.close()


def own_inode(connection):
    """The inode of the other end's socket, when it is this user's and still in use; 0 else."""
    try:
        state, user, inode = owner(connection.getpeername(), connection.getsockname())
        # While our end lives, no other socket can have come to the peer's address.
        ours = connection.getsockopt(socket.IPPROTO_TCP, socket.TCP_INFO, 1)[0]
    except OSError:
        return 0
    return inode if user == os.getuid() and state in CONNECTED and ours != CLOSED else 0
