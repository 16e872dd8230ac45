"""Which process holds a socket, and whether it is one of ours.

Ours are the programs of this user that see the same files: in this process's user
and mount namespaces and with its root folder, or the process that started this one.
What runs in a container, in a sandbox such as Flatpak's or behind a changed root is
a stranger, and so is what cannot be seen.
"""

import contextlib
import math
import os
import time

NAMESPACES = ("ns/user", "ns/mnt")
SEARCH_SECONDS = 2.0
KNOWN_SECONDS = 0.02  # of the event loop


class Process:
    """A process by its folder in /proc: never one that got its number later."""

    def __init__(self, pid):
        """OSError when there is none."""
        self.pid = pid
        self._folder = os.open(f"/proc/{pid}", os.O_PATH | os.O_DIRECTORY)

    def __del__(self):
        if hasattr(self, "_folder"):
            os.close(self._folder)

    def is_ours(self):
        try:
            if os.fstat(self._folder).st_uid != os.getuid():
                return False
            return self.pid == os.getppid() or self._sees_our_files()
        except OSError:
            return False

    def _sees_our_files(self):
        # The namespaces first: a stranger's root may be a file system that never answers.
        if any(self._link(name) != os.readlink(f"/proc/self/{name}") for name in NAMESPACES):
            return False
        return os.path.samestat(os.stat("root", dir_fd=self._folder), os.stat("/"))

    def descriptor(self, inode, deadline=math.inf):
        """The number of the descriptor with this socket; None without one, or when it is too late."""
        wanted = f"socket:[{inode}]"
        with contextlib.suppress(OSError):
            files = os.open("fd", os.O_RDONLY | os.O_DIRECTORY, dir_fd=self._folder)
            try:
                for entry in os.scandir(files):
                    if link(entry.name, files) == wanted:
                        return int(entry.name)
                    if time.monotonic() > deadline:
                        break
            finally:
                os.close(files)
        return None

    def holds(self, descriptor, inode):
        with contextlib.suppress(OSError):
            return self._link(f"fd/{descriptor}") == f"socket:[{inode}]"
        return False

    def name(self):
        """As it calls itself; nothing of it may steer the terminal that shows the log."""
        name = self._read("comm").decode(errors="replace").strip()
        return "".join(sign if sign.isprintable() else "?" for sign in name)

    def arguments(self):
        return self._read("cmdline").split(b"\0")

    def _link(self, name):
        return os.readlink(name, dir_fd=self._folder)

    def _read(self, name):
        with contextlib.suppress(OSError):
            file = os.open(name, os.O_RDONLY, dir_fd=self._folder)
            try:
                return os.read(file, 4096)
            finally:
                os.close(file)
        return b""


class Holders:
    """Remembers who was found last: mostly it is Tavin again."""

    def __init__(self):
        self._last = None
        self._descriptor = None

    def is_known(self, inode):
        """Whether the process that was found last holds this socket; trusts nothing read before.

        Mostly by the same descriptor as the last one; else its others are looked through.
        """
        last = self._last
        if last is None or not last.is_ours():
            return False
        if last.holds(self._descriptor, inode):
            return True
        return self._take(last, inode, time.monotonic() + KNOWN_SECONDS)

    def find(self, inode, seconds=SEARCH_SECONDS):
        """The process that holds a socket, and whether it is ours; None when nobody shows it.

        Takes milliseconds; runs on a thread of its own, one search at a time. Who started this
        process and who was found last come first: no stranger can make the search for them long.
        """
        deadline = time.monotonic() + seconds
        for process in (self._last, opened(os.getppid())):
            if process and process.is_ours() and self._take(process, inode, deadline):
                return process, True
        return self._search(inode, deadline)

    def _search(self, inode, deadline):
        """A socket that a stranger holds too is a stranger's: it may have lent it to one of ours."""
        found = None
        for pid in filter(str.isdigit, os.listdir("/proc")):
            if time.monotonic() > deadline:
                return None
            process = opened(int(pid))
            descriptor = process and process.descriptor(inode, deadline)
            if descriptor is None:
                continue
            if not process.is_ours():
                return process, False
            found = process, descriptor
        if not found or time.monotonic() > deadline:
            return None
        self._last, self._descriptor = found
        return found[0], True

    def _take(self, process, inode, deadline):
        descriptor = process.descriptor(inode, deadline)
        if descriptor is not None:
            self._last, self._descriptor = process, descriptor
        return descriptor is not None


def link(name, folder):
    try:
        return os.readlink(name, dir_fd=folder)
    except OSError:
        return None  # closed meanwhile


def opened(pid):
    with contextlib.suppress(OSError):
        return Process(pid)
    return None
