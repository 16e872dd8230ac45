"""Ties a helper process to the engine that started it."""

import ctypes
import os
import signal
import sys

PR_SET_PDEATHSIG = 1


def end_with_parent(parent):
    """Have the kernel kill this process when the engine dies, even by kill -9.

    The end of standard input says the same, but a helper that computes or
    waits for the sound server would see that too late.
    """
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
    if os.getppid() != parent:
        sys.exit(0)  # the engine died before the request above


def ignore_terminal_signals():
    """Leave Ctrl+C and SIGTERM to a group to the engine, which ends its helpers."""
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    signal.signal(signal.SIGTERM, signal.SIG_IGN)


def claim_output():
    """Keep standard output for frames alone: what a library prints goes nowhere."""
    output = os.dup(1)
    nothing = os.open(os.devnull, os.O_WRONLY)
    os.dup2(nothing, 1)
    os.close(nothing)
    return output
