"""The engine as Tavin starts it, and a client that can also misbehave."""

import contextlib
import http.client
import json
import os
import signal
import socket
import subprocess
import sys
import time
from pathlib import Path

from sound import WITH_US, until

FOLDER = Path(__file__).resolve().parent.parent
PORT = 47632
MOVES = ["/next", "/previous", "/repeat", "/faster", "/slower"]
POSTS = ["/speak", "/stop", "/toggle-pause", "/config", "/key", *MOVES]


class EngineProcess:
    def __init__(
        self, environment, folder, language="en_US.UTF-8", command=("-m", "tavin.server"), tree=FOLDER
    ):
        self.folder = folder
        self._tree = tree
        self.settings = folder / "config" / "tavin" / "engine.json"
        self._environment = {
            **environment,
            "LANG": language,
            "XDG_CONFIG_HOME": str(folder / "config"),
            "XDG_DATA_HOME": str(folder / "data"),
            "PYTHONDONTWRITEBYTECODE": "1",
        }
        self._command = command
        self._log = folder / "engine.log"
        self.process = None

    def start(self, wait=True):
        with open(self._log, "ab") as log:
            self.process = subprocess.Popen(
                [*WITH_US, sys.executable, *self._command],
                cwd=self._tree,
                env=self._environment,
                stdin=subprocess.DEVNULL,
                stdout=log,
                stderr=log,
            )
        if wait:
            until(self.answers, 15, "the engine answers")
        return self

    def end(self, number=signal.SIGTERM):
        """Send a signal; the exit code and how long the end took."""
        begin = time.monotonic()
        self.process.send_signal(number)
        code = self.process.wait(timeout=10)
        return code, time.monotonic() - begin

    def kill(self):
        if self.running():
            self.process.kill()
            self.process.wait()

    def running(self):
        return self.process is not None and self.process.poll() is None

    def log(self):
        return self._log.read_text("utf-8")

    def request(self, method, path, body=None, headers=None):
        """One request on a connection of its own: status code and decoded answer."""
        connection = http.client.HTTPConnection("127.0.0.1", PORT, timeout=10)
        try:
            connection.request(method, path, body, {"X-Tavin": "1"} if headers is None else headers)
            answer = connection.getresponse()
            return answer.status, json.loads(answer.read() or b"null")
        finally:
            connection.close()

    def post(self, path, **body):
        return self.request("POST", path, json.dumps(body))

    def status(self):
        code, answer = self.request("GET", "/status")
        assert code == 200
        return answer

    def speak(self, text):
        assert self.post("/speak", text=text)[0] == 200

    def wait_for(self, state, seconds=15):
        return until(lambda: (s := self.status())["state"] == state and s, seconds, state)

    def helpers(self, *module):
        """Process ids of the engine's helpers that run the given module, with the given arguments."""
        found = []
        for entry in Path("/proc").iterdir():
            if entry.name.isdigit() and parent_of(entry) == self.process.pid:
                if {word.encode() for word in module} <= set(command_of(entry).split(b"\0")):
                    found.append(int(entry.name))
        return found

    def helper(self, module):
        return until(lambda: self.helpers(module), 10, module)[0]

    def answers(self):
        """Whether it listens on the port. Looked up, because connections have a price: while nobody
        listens, one may get this port for its own, meet itself and keep the port taken."""
        assert self.process.poll() is None, self.log()
        inode = listener()
        return inode is not None and f"socket:[{inode}]" in files_of(f"/proc/{self.process.pid}")


def listener():
    """The inode of the socket that listens on the port; None without one."""
    with open("/proc/self/net/tcp", encoding="ascii") as table:
        for line in map(str.split, table):
            if line[1].endswith(f":{PORT:04X}") and line[3] == "0A":
                return line[9]
    return None


def files_of(process):
    """What a process has open. A child that an engine had begun to start when it was killed has
    the engine's port for some moments, until it runs its own program."""
    found = []
    for entry in Path(process, "fd").iterdir():
        with contextlib.suppress(OSError):  # closed meanwhile
            found.append(os.readlink(entry))
    return found


def parent_of(entry):
    try:
        return int((entry / "stat").read_text().rpartition(")")[2].split()[1])
    except OSError:
        return None


def command_of(entry):
    try:
        return (entry / "cmdline").read_bytes()
    except OSError:
        return b""


def exists(pid):
    """Whether a process runs; one that ended and was not collected does not."""
    try:
        return Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[0] != "Z"
    except OSError:
        return False


def raw(data, seconds=5):
    """Send bytes as they are; everything that comes back until the engine closes or is silent."""
    with socket.create_connection(("127.0.0.1", PORT), seconds) as connection:
        connection.sendall(data)
        connection.settimeout(seconds)
        answer = b""
        while chunk := connection.recv(65536):
            answer += chunk
            if b"\r\n\r\n" in answer:
                break
        return answer


