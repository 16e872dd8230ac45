"""TCP sockets of this machine, as the kernel describes them."""

import errno
import os
import socket
import struct

SOCK_DIAG = 4  # the netlink family
SOCK_DIAG_BY_FAMILY = 20
ERROR = 2
REQUEST = 1
MESSAGE = struct.Struct("=IHHII")  # length, type, flags, number, port
ADDRESSES = struct.Struct("=4s12s4s12sI8s")  # local, remote, interface, any cookie
ANSWER = struct.Struct("=xB62xII")  # state, user, inode
ANY_COOKIE = b"\xff" * 8
ANSWER_SECONDS = 1.0
LISTENS = 10
TABLES = ("/proc/self/net/tcp", "/proc/self/net/tcp6")


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


def on_port(port):
    """State, user and inode of what keeps others from listening there; a listener before others."""
    found = None
    for table in TABLES:
        for fields in rows(table):
            address, _, number = fields[1].decode().partition(":")
            if int(number, 16) != port or address not in taking_addresses():
                continue
            state, user, inode = int(fields[3], 16), int(fields[7]), int(fields[9])
            if state == LISTENS:
                return state, user, inode
            if inode and not found:
                found = state, user, inode
    return found


def rows(table):
    try:
        with open(table, "rb") as file:
            return [line.split() for line in file][1:]
    except OSError:
        return []  # no IPv6, perhaps


def taking_addresses():
    """Those that take what is sent to 127.0.0.1, as the tables write them."""
    any4, loopback = (hexadecimal((name, 0))[:8] for name in ("0.0.0.0", "127.0.0.1"))
    mapped = f"{0:08X}{0:08X}{socket.htonl(0xFFFF):08X}"
    return {any4, loopback, mapped + any4, mapped + loopback, "0" * 32}


def hexadecimal(address):
    number = struct.unpack("=I", socket.inet_aton(address[0]))[0]
    return f"{number:08X}:{address[1]:04X}"
