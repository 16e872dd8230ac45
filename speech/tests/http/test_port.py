"""Who has the port, and what the engine that waits for it does about that."""

import os
import signal
import socket
import subprocess
import sys
import time

import pytest
import sandbox
from engine_process import PORT
from sound import WITH_US, until
from tavin.http import sockets


def test_a_stopped_engine_is_ended_for_the_next_one(engine, new_engine):
    assert engine.status()
    engine.process.send_signal(signal.SIGSTOP)
    second = new_engine().start(wait=False)
    assert engine.process.wait(timeout=10) == -signal.SIGKILL
    line = f"ending process {engine.process.pid}, an engine that gave no status for 3 s"
    assert line in second.log()
    until(second.answers, 10, "the next engine has the port")


def test_an_engine_that_answers_is_not_ended(engine, new_engine):
    second = new_engine().start(wait=False)
    until(lambda: "has it" in second.log(), 10, "the log line")
    time.sleep(4)
    assert engine.running()
    assert "ending" not in second.log()
    engine.end()
    until(second.answers, 10, "the next engine has the port")


@pytest.mark.parametrize("way", ["another program", "a sandboxed engine"])
def test_who_is_no_engine_of_ours_is_not_ended(new_engine, way):
    holder = stopped_listener() if way == "another program" else sandboxed_engine()
    try:
        engine = new_engine().start(wait=False)
        until(lambda: "has it" in engine.log(), 10, "the log line")
        time.sleep(6)
        assert holder.poll() is None
        assert "ending" not in engine.log()
    finally:
        holder.kill()
        holder.communicate()


def stopped_listener():
    holder = subprocess.Popen(
        [*WITH_US, sys.executable, "-c", sandbox.LISTEN], stdin=subprocess.PIPE, stdout=subprocess.PIPE
    )
    assert holder.stdout.readline() == b"listens\n"
    holder.send_signal(signal.SIGSTOP)
    return holder


def sandboxed_engine():
    """By its arguments it is one; it listens and answers nothing."""
    holder = sandbox.start(sandbox.LISTEN, "tavin.server")
    assert holder.stdout.readline() == "listens\n"
    return holder


def test_a_connection_that_got_the_port_by_chance_is_named(new_engine):
    with socket.socket() as listener, socket.socket() as client:
        listener.bind(("127.0.0.1", 0))
        listener.listen()
        client.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        client.bind(("127.0.0.1", PORT))
        client.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 0)  # as of one that got it by chance
        client.connect(listener.getsockname())
        engine = new_engine().start(wait=False)
        until(lambda: "has it" in engine.log(), 10, "the log line")
        assert f"(process {os.getpid()}) has it" in engine.log()
        client.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, b"\1\0\0\0\0\0\0\0")
    until(engine.answers, 10, "the engine has the port")


@pytest.mark.parametrize(
    "family, address", [(socket.AF_INET, "127.0.0.1"), (socket.AF_INET, "0.0.0.0"), (socket.AF_INET6, "::")]
)
def test_a_listener_on_each_address_that_takes_the_port_is_found(family, address):
    with socket.socket(family) as listener:
        listener.bind((address, 0))
        listener.listen()
        found = sockets.on_port(listener.getsockname()[1])
        assert found == (sockets.LISTENS, os.getuid(), os.fstat(listener.fileno()).st_ino)


def test_a_listener_on_another_address_is_not_found():
    with socket.socket() as listener:
        listener.bind(("127.0.0.2", 0))
        listener.listen()
        assert sockets.on_port(listener.getsockname()[1]) is None


def test_the_settings_are_read_when_the_port_is_there(engine, new_engine):
    second = new_engine().start(wait=False)
    until(lambda: "has it" in second.log(), 10, "the log line")
    assert engine.post("/config", speed=2.5)[0] == 200
    engine.end()
    until(second.answers, 10, "the next engine has the port")
    assert second.status()["speed"] == 2.5
    assert second.post("/config", voice="gmw/de")[0] == 200
    assert '"speed": 2.5' in second.settings.read_text("utf-8")
