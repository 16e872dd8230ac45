"""Runs Python as a program that has nothing but the network: this user's, in a sandbox."""

import subprocess
import sys

from sound import WITH_US

BWRAP = ("bwrap", "--unshare-all", "--share-net", "--die-with-parent", "--ro-bind", "/", "/")
PLACES = ("--dev", "/dev", "--proc", "/proc", "--tmpfs", "/tmp")
# Has the engine's port until its standard input ends.
LISTEN = """
import socket, sys
with socket.socket() as listener:
    # Connections of the tests before are still waiting for their end.
    listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    listener.bind(("127.0.0.1", 47632))
    listener.listen()
    print("listens", flush=True)
    sys.stdin.read()
"""


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
