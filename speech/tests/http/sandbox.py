"""Runs Python as a program that has nothing but the network: this user's, in a sandbox."""

import subprocess
import sys

from sound import WITH_US

BWRAP = ("bwrap", "--unshare-all", "--share-net", "--die-with-parent", "--ro-bind", "/", "/")
PLACES = ("--dev", "/dev", "--proc", "/proc", "--tmpfs", "/tmp")


def start(code, *arguments):
    return subprocess.Popen(
        [*WITH_US, *BWRAP, *PLACES, sys.executable, "-c", code, *arguments],
        stdin=subprocess.PIPE,
        stdout=subprocess.PIPE,
        text=True,
    )


def run(code, *arguments):
    """What it prints."""
    with start(code, *arguments) as process:
        output, _ = process.communicate(timeout=30)
        assert process.returncode == 0
        return output
