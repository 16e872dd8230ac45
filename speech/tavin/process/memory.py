"""What a process of the engine does with its memory."""

import contextlib
import ctypes
import os
import resource

M_MMAP_THRESHOLD = -3  # of malloc.h
LARGE = 1 << 20


def keep_private():
    """A crash must not write keys and texts to a file.

    The kernel gives a program that collects crashes everything whatever the limit is, but for 1.
    """
    _, most = resource.getrlimit(resource.RLIMIT_CORE)
    limit = 0 if most == 0 else 1
    resource.setrlimit(resource.RLIMIT_CORE, (limit, limit))


def give_back():
    """Left to itself, glibc's allocator keeps what one long text or a model's longest run took for good."""
    with contextlib.suppress(AttributeError):  # another C library
        ctypes.CDLL(None).mallopt(M_MMAP_THRESHOLD, LARGE)
