"""Who is at the other end of a connection on the loopback interface.

Asked as soon as a connection is accepted, before a byte of it is read. Only a
socket that still belongs to a process shows its owner: one that was closed at
once shows no inode and user 0, and must not pass for root's.
"""

import asyncio
import errno
import os
import socket
import struct

from tavin.log import log

SOCK_DIAG = 4  # the netlink family
SOCK_DIAG_BY_FAMILY = 20
ERROR = 2
REQUEST = 1
MESSAGE = struct.Struct("=IHHII")  # length, type, flags, number, port
ADDRESSES = struct.Struct("=4s12s4s12sI8s")  # local, remote, interface, any cookie
ANSWER = struct.Struct("=xB62xII")  # state, user, inode
ANY_COOKIE = b"\xff" * 8
CLOSED = 7
# Those of a connection that was made and whose program has not closed it.
CONNECTED = {1, 4, 5, 8}  # established, two of a half-closed end, half closed by us
ANSWER_SECONDS = 1.0

REFUSAL_BODY = b'{"error": "Another user\'s programs are not served."}'
REFUSAL = (
    b"HTTP/1.1 403 Forbidden\r\nContent-Type: application/json\r\nConnection: close\r\n"
    b"Content-Length: %d\r\n\r\n%s" % (len(REFUSAL_BODY), REFUSAL_BODY)
)


class Doorkeeper(asyncio.Protocol):
    """Hands a connection of this user's own processes to the HTTP server, refuses any other."""

    told = False

    def __init__(self, server):
        """`server()` makes the protocol of an accepted connection."""
        self._server = server

    def connection_made(self, transport):
        if is_own(transport.get_extra_info("socket")):
            protocol = self._server()
            transport.set_protocol(protocol)
            protocol.connection_made(transport)
        else:
            if not Doorkeeper.told:
                Doorkeeper.told = True  # once: nobody else may fill the user's disk
                log.info("refused: a connection from a program of another user, or closed at once")
            transport.write(REFUSAL)
            transport.close()


def is_own(connection):
    """Whether a process of this user holds the other end."""
    try:
        state, user, inode = owner(connection.getpeername(), connection.getsockname())
        # While our end lives, no other socket can have come to the peer's address.
        ours = connection.getsockopt(socket.IPPROTO_TCP, socket.TCP_INFO, 1)[0]
    except OSError:
        return False
    return inode != 0 and user == os.getuid() and state in CONNECTED and ours != CLOSED


def owner(local, remote):
    """State, user and inode of the socket with these addresses; OSError when there is none."""
    try:
        return ask_kernel(local, remote)
    except OSError as failure:
        if failure.errno == errno.ENOENT:
            raise
        return look_up(local, remote)  # a kernel without that interface


def ask_kernel(local, remote):
    with socket.socket(socket.AF_NETLINK, socket.SOCK_RAW, SOCK_DIAG) as netlink:
        netlink.settimeout(ANSWER_SECONDS)
        question = struct.pack("=BBBBI", socket.AF_INET, socket.IPPROTO_TCP, 0, 0, 0xFFFFFFFF)
        question += struct.pack(">HH", local[1], remote[1])
        question += ADDRESSES.pack(
            socket.inet_aton(local[0]), b"", socket.inet_aton(remote[0]), b"", 0, ANY_COOKIE
        )
        length = MESSAGE.size + len(question)
        netlink.sendto(MESSAGE.pack(length, SOCK_DIAG_BY_FAMILY, REQUEST, 1, 0) + question, (0, 0))
        data, sender = netlink.recvfrom(8192)
    _, kind, _, _, _ = MESSAGE.unpack_from(data)
    if sender[0] != 0:
        raise PermissionError(errno.EPERM, "not from the kernel")
    if kind == ERROR:
        code = -struct.unpack_from("=i", data, MESSAGE.size)[0]
        raise OSError(code, os.strerror(code))
    return ANSWER.unpack_from(data, MESSAGE.size)


def look_up(local, remote):
    """The same from the kernel's table, which takes longer the more connections there are."""
    wanted = f"{hexadecimal(local)} {hexadecimal(remote)}".encode()
    with open("/proc/self/net/tcp", "rb") as table:
        for line in table:
            if wanted in line:
                fields = line.split()
                return int(fields[3], 16), int(fields[7]), int(fields[9])
    raise FileNotFoundError(errno.ENOENT, "no such socket")


def hexadecimal(address):
    number = struct.unpack("=I", socket.inet_aton(address[0]))[0]
    return f"{number:08X}:{address[1]:04X}"
