"""What Tavin's own engine says of itself, where a test, the demonstration or a picture runs it."""

import contextlib
import json
import os
import urllib.error
import urllib.request

from driver import Tavin
from isolation import ENGINE_PORT
from session import SessionError, wait_until


def status():
    """The engine's status, or None where none answers."""
    try:
        with urllib.request.urlopen(f"http://127.0.0.1:{ENGINE_PORT}/status", timeout=2) as answer:
            return json.load(answer)
    except (OSError, ValueError):
        return None


def post(path, **body):
    """As Tavin does it."""
    request = urllib.request.Request(f"http://127.0.0.1:{ENGINE_PORT}{path}", json.dumps(body).encode(),
                                     {"X-Tavin": "1"})
    with urllib.request.urlopen(request, timeout=5) as answer:
        assert json.load(answer) == {"ok": True}


def configure(**changes):
    """As the menu does it."""
    post("/config", **changes)


def wait_for(*states, seconds=30.0):
    """Until the engine is ready and in one of the states; SessionError where it reports an error."""
    def reached():
        said = status()
        if said and said.get("error"):
            raise SessionError(f"the engine says: {said['error']}")
        return said and said["ready"] and said["state"] in states
    wait_until(reached, seconds, f"an engine that is {' or '.join(states)}", interval=0.05)


def engines(session):
    """The processes of the session that run the engine."""
    home = f"HOME={session.env['HOME']}".encode()
    found = []
    for entry in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{entry}/cmdline", "rb") as f:
                arguments = f.read().split(b"\0")
            with open(f"/proc/{entry}/environ", "rb") as f:
                environment = f.read().split(b"\0")
        except OSError:
            continue
        if home in environment and any(a.startswith(b"tavin.") for a in arguments):
            found.append(int(entry))
    return found


def listening():
    with open("/proc/net/tcp", encoding="ascii") as f:
        return any(f":{ENGINE_PORT:04X} 00000000:0000 0A" in line for line in f)


@contextlib.contextmanager
def tavin_with_its_engine(desktop, build):
    """A Tavin whose own engine is ready. Both end with the desktop's programs."""
    program = Tavin(desktop, None, build)
    wait_until(listening, 30, "the engine's port")
    wait_for("idle")
    yield program
    desktop.close()
    wait_until(lambda: not listening(), 10, "end of the engine")
