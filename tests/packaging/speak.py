"""Starts the engine of the working folder with the given Python, has it speak, and prints its states."""

import http.client
import json
import subprocess
import sys
import time

PORT = 47632


def request(method, path, **body):
    connection = http.client.HTTPConnection("127.0.0.1", PORT, timeout=5)
    connection.request(method, path, json.dumps(body), {"X-Tavin": "1"})
    return json.loads(connection.getresponse().read())


def is_listening():
    """Looked up: while nobody listens, a connection may get this port for its own and meet itself."""
    with open("/proc/self/net/tcp", encoding="ascii") as table:
        return any(f":{PORT:04X} " in line and " 0A " in line for line in table)


def wait_for(state):
    deadline = time.monotonic() + 20
    while time.monotonic() < deadline:
        if is_listening() and (status := request("GET", "/status"))["state"] == state:
            return status
        time.sleep(0.01)
    sys.exit(f"never {state}")


def main():
    engine = subprocess.Popen([sys.argv[1], "-m", "tavin.server"])
    try:
        wait_for("idle")
        request("POST", "/speak", text="Hello there.")
        print(wait_for("speaking")["state"])
        status = wait_for("idle")
        print(status["state"], status["error"])
    finally:
        engine.terminate()
        engine.wait(5)


main()
