"""A network of the tests' own, so that the engine's fixed port is free for them.

Where the machine does not allow one, a lock keeps test runs from each other.
"""

import ctypes
import fcntl
import os
import socket
import struct
import tempfile

CLONE_NEWUSER = 0x10000000
CLONE_NEWNET = 0x40000000
SIOCSIFFLAGS = 0x8914
IFF_UP = 1
PORT = 47632
CAPABILITY_VERSION = 0x20080522
PR_SET_DUMPABLE = 4


def enter():
    """Move this process into a new network; False when that is not allowed.

    A process with threads cannot change its user namespace: call it early.
    """
    user, group = os.getuid(), os.getgid()
    libc = ctypes.CDLL(None, use_errno=True)
    is_root = libc.unshare(CLONE_NEWNET) == 0
    if not is_root:
        if libc.unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0:
            return False
        for name, content in (
            ("setgroups", "deny"),
            ("uid_map", f"{user} {user} 1"),
            ("gid_map", f"{group} {group} 1"),
        ):
            with open(f"/proc/self/{name}", "w", encoding="ascii") as file:
                file.write(content)
    with socket.socket() as any_socket:
        request = struct.pack("16sh14x", b"lo", IFF_UP)
        fcntl.ioctl(any_socket, SIOCSIFFLAGS, request)
    with open("/proc/sys/net/ipv4/ip_local_reserved_ports", "w", encoding="ascii") as file:
        file.write(str(PORT))  # no client may get it by chance
    if not is_root:
        _become_ordinary(libc)
    return True


def _become_ordinary(libc):
    """Gives up what came with the namespace. The kernel shows such a process to no program that has
    less, so not to the engine, which looks at its callers."""
    header = (ctypes.c_uint32 * 2)(CAPABILITY_VERSION, 0)
    nothing = (ctypes.c_uint32 * 6)()
    if libc.capset(header, nothing) != 0 or libc.prctl(PR_SET_DUMPABLE, 1, 0, 0, 0) != 0:
        raise OSError(ctypes.get_errno(), "the privileges of the tests' network stay")


def lock_port():
    """Wait for the other test runs on this machine. The lock lasts as long as the file."""
    file = open(os.path.join(tempfile.gettempdir(), "tavin-test-port.lock"), "w", encoding="ascii")
    fcntl.flock(file, fcntl.LOCK_EX)
    return file
