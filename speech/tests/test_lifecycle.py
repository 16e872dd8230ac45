"""Start, port, signals and the end of the engine, in every state."""

import os
import signal
import socket
import time

import pytest
from engine_process import PORT, exists
from sound import until
from tree import Tree

LONG = "The quick brown fox jumps over the lazy dog, again and again and again. " * 20
STATES = ["idle", "loading", "speaking", "paused"]


def bring_to(engine, state):
    if state != "idle":
        engine.speak(LONG)
    if state in ("speaking", "paused"):
        engine.wait_for("speaking")
    if state == "paused":
        engine.post("/toggle-pause")


@pytest.mark.parametrize(
    "number, state", [*((signal.SIGTERM, state) for state in STATES), (signal.SIGINT, "speaking")]
)
def test_a_signal_ends_everything_soon(engine, sound_server, number, state):
    helpers = [engine.helper("tavin.synthesis.worker"), engine.helper("tavin.sound.player")]
    bring_to(engine, state)
    code, seconds = engine.end(number)
    assert code == 0
    assert seconds < 0.5
    until(lambda: not any(exists(pid) for pid in helpers), 1, "the helpers' end")
    until(lambda: not sound_server.streams(), 1, "the stream's end")


@pytest.mark.parametrize("sent", [0.5, 1.0])  # of the body: while it comes, or while it is decoded
def test_a_signal_ends_it_in_the_midst_of_a_huge_request(engine, sent):
    text = b"The quick brown fox. " * 2_900_000
    head = b"POST /speak HTTP/1.1\r\nHost: 127.0.0.1:%d\r\nX-Tavin: 1\r\nContent-Length: %d\r\n\r\n"
    body = b'{"text": "%s"}' % text
    with socket.create_connection(("127.0.0.1", PORT), 10) as client:
        client.sendall(head % (PORT, len(body)) + body[: int(sent * len(body))])
        code, seconds = engine.end()
    assert code == 0
    assert seconds < 0.5


@pytest.mark.parametrize("state", ["loading", "speaking"])
def test_a_killed_engine_leaves_nothing_behind(engine, sound_server, state):
    helpers = [engine.helper("tavin.synthesis.worker"), engine.helper("tavin.sound.player")]
    bring_to(engine, state)
    engine.end(signal.SIGKILL)
    until(lambda: not any(exists(pid) for pid in helpers), 1, "the helpers' end")
    until(lambda: not sound_server.streams(), 1, "the stream's end")


def test_a_worker_that_cannot_read_ends_with_the_engine(engine):
    assert engine.status()["voice"]  # the worker is up
    worker = engine.helper("tavin.synthesis.worker")
    os.kill(worker, signal.SIGSTOP)  # sees no end of input
    engine.end(signal.SIGKILL)
    until(lambda: not exists(worker), 1, "the worker's end")


def test_sound_ends_with_the_engine(engine, recorder):
    engine.speak(LONG)
    recorder.loud_for(0.3)
    asked = time.monotonic()
    engine.end()
    recorder.quiet_for(0.5)
    assert recorder.last_loud - asked < 0.5


def test_a_second_signal_changes_nothing(engine):
    bring_to(engine, "speaking")
    engine.process.send_signal(signal.SIGTERM)
    engine.process.send_signal(signal.SIGTERM)
    assert engine.process.wait(timeout=5) == 0


def test_a_taken_port_is_told_once_and_tried_again(new_engine):
    with socket.socket() as holder:
        holder.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        holder.bind(("127.0.0.1", PORT))
        holder.listen()
        engine = new_engine().start(wait=False)
        until(lambda: str(PORT) in engine.log(), 10, "the log line")
        time.sleep(2.5)  # one more try
        assert engine.process.poll() is None
        assert engine.log().count("\n") == 1
        assert f"(process {os.getpid()}) has it" in engine.log()
    until(lambda: engine.answers(), 5, "the engine answers")
    assert engine.status()["state"] == "idle"


def test_while_it_waits_for_the_port_a_signal_ends_it(new_engine):
    with socket.socket() as holder:
        holder.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        holder.bind(("127.0.0.1", PORT))
        holder.listen()
        engine = new_engine().start(wait=False)
        until(lambda: str(PORT) in engine.log(), 10, "the log line")
        code, seconds = engine.end()
        assert code == 0
        assert seconds < 0.5


def test_a_restart_at_once_gets_the_port(engine, new_engine):
    assert engine.status()
    engine.end()
    second = new_engine().start()
    assert second.status()["state"] == "idle"
    assert "cannot be had" not in second.log()


def test_every_log_line_is_one_line_with_a_time(engine):
    engine.request("POST", "/speak", b"\xff")
    engine.end()
    lines = engine.log().splitlines()
    assert lines
    assert all(line[:4].isdigit() and " tavin: " in line for line in lines)


def test_the_neural_voices_libraries_stay_out_of_all_other_processes(new_engine, tmp_path):
    tree = Tree(tmp_path / "tree", None)
    marks = tree.poison_libraries()
    libraries = tree.folder / "site-packages"
    # As an installed Tavin starts it.
    engine = new_engine({"PYTHONPATH": f"{tree.folder}:{libraries}"}, tree=tree.folder).start()
    assert engine.post("/key", engine="openai", key="a key")[0] == 200  # asks the keyring
    assert engine.post("/config", engine="openai")[0] == 200
    assert engine.helper("openai")
    assert engine.post("/config", engine="espeak")[0] == 200
    engine.speak("Hello there.")
    engine.wait_for("speaking")
    assert engine.wait_for("idle")["error"] is None
    assert list(marks.iterdir()) == []
