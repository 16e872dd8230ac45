"""A program of this user in a sandbox, with nothing but the network, on the engine's port."""

import os
import signal
import subprocess

import pytest
from driver import Tavin
from own_engine import engines, listening
from scripted_engine import make_tree
from session import wait_until

POSER = """
import socket, sys, threading
listener = socket.socket()
listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
listener.bind(("127.0.0.1", 47632))
listener.listen()
print("listens", flush=True)
def serve():
    while True:
        connection, _ = listener.accept()
        print("connected", connection.recv(65536), flush=True)
threading.Thread(target=serve, daemon=True).start()
sys.stdin.read()
"""
# bwrap takes no rights that it did not ask for: those of a session in namespaces of its own.
SANDBOX = ["setpriv", "--ambient-caps", "-all", "--inh-caps", "-all",
           "bwrap", "--unshare-all", "--share-net", "--die-with-parent", "--ro-bind", "/", "/",
           "--dev", "/dev", "--proc", "/proc", "--tmpfs", "/tmp"]
HELD = "Tavin: the engine's port is held by a sandboxed program, “python3”"


@pytest.fixture
def poser():
    process = subprocess.Popen([*SANDBOX, "/usr/bin/python3", "-c", POSER], stdin=subprocess.PIPE,
                               stdout=subprocess.PIPE, text=True)
    assert process.stdout.readline() == "listens\n"
    yield process
    process.kill()
    process.wait()


def test_who_listens_before_tavin_starts_gets_nothing_and_the_engine_is_started(
        desktop, session, build, poser):
    tavin = Tavin(desktop, None, build)
    wait_until(lambda: engines(session), 10, "the engine is started")
    desktop.key("alt+Escape")
    tavin.action("speak")
    tavin.action("stop")
    wait_until(lambda: HELD in tavin.log(), 10, "the line in the log")
    output, _ = poser.communicate(timeout=10)
    assert output == ""
    wait_until(lambda: listening(), 15, "the engine has the port")
    assert tavin.log().count("the engine's port is held") == 1
    assert tavin.quit(signal.SIGTERM)[0] == 0
    wait_until(lambda: not engines(session), 5, "end of the engine")


def server(session):
    """The engine's own process, not its helpers'."""
    def is_server(pid):
        with open(f"/proc/{pid}/cmdline", "rb") as f:
            return b"tavin.server" in f.read().split(b"\0")
    return next(filter(is_server, engines(session)))


def test_the_stopped_engine_of_an_earlier_run_gives_way(desktop, session, build):
    first = Tavin(desktop, None, build)
    wait_until(listening, 30, "the engine's port")
    stopped = server(session)
    os.kill(stopped, signal.SIGSTOP)
    assert first.quit(signal.SIGKILL)[0] != 0
    second = Tavin(desktop, None, build, log="second.log")
    wait_until(lambda: not os.path.exists(f"/proc/{stopped}"), 15, "its end")
    wait_until(listening, 15, "the engine's port")
    assert server(session) != stopped
    assert second.quit(signal.SIGTERM)[0] == 0
    wait_until(lambda: not engines(session), 5, "end of the engine")


def test_closed_standard_files_get_no_log_line(desktop, session, build, engine, tmp_path):
    """The first file that the program opens would have taken the log's number."""
    tree = make_tree(str(tmp_path / "tree"), build)
    program = os.path.join(tree, "bin/tavin")
    closed = desktop.start(["sh", "-c", f'exec "{program}" 0<&- 1>&- 2>&-'], log="closed.log")
    engine.wait_for("/status", seconds=15)
    for number in range(3):
        assert os.readlink(f"/proc/{closed.pid}/fd/{number}") == "/dev/null"
    closed.send_signal(signal.SIGTERM)
    assert closed.wait(10) == 0
