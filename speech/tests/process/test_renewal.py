"""A running engine whose files are replaced, as by an upgrade, becomes the new one between two readings."""

import asyncio
import os
import socket
import threading
import time

import file_server as does
import pytest
from engine_process import PORT, exists
from sound import until
from tavin.process.renewal import Entrance
from tree import Tree

TEXT = "The quick brown fox jumps over the lazy dog. "
NEW = "serving anew on port"


@pytest.fixture
def tree(tmp_path, server):
    made = Tree(tmp_path / "tree", server)
    made.offer(model=b"m" * 100_000, voices=b"v" * 100_000)
    made.have_libraries(tmp_path / "data")
    return made


@pytest.fixture
def engine(new_engine, tree):
    engine = new_engine(tree=tree.folder).start()
    engine.speak("Hello.")  # so that its helpers have read their files
    engine.wait_for("speaking")
    engine.wait_for("idle")
    return engine


def replace(tree, module, old, new):
    """As dpkg does it: another file takes the name."""
    path = tree.folder / "tavin" / module
    source = path.read_text()
    assert source.count(old) == 1
    fresh = path.with_suffix(".new")
    fresh.write_text(source.replace(old, new))
    os.replace(fresh, path)


def upgrade(tree):
    replace(tree, "server.py", "serving on port", NEW)


def is_new(engine):
    return engine.status() and NEW in engine.log()


def test_it_becomes_the_new_one_as_the_same_process(engine, tree):
    helpers = [engine.helper("tavin.synthesis.worker"), engine.helper("tavin.sound.player")]
    upgrade(tree)
    until(lambda: is_new(engine), 15, "the new engine")
    assert engine.running()
    assert not any(exists(pid) for pid in helpers)
    engine.speak(TEXT)
    engine.wait_for("speaking")
    assert engine.wait_for("idle")["error"] is None
    code, seconds = engine.end()
    assert (code, seconds < 0.5) == (0, True)


def test_a_reading_goes_on_to_its_end_first(engine, tree):
    engine.speak(TEXT * 3)
    engine.wait_for("speaking")
    upgrade(tree)
    worker = engine.helper("tavin.synthesis.worker")
    while engine.status()["state"] != "idle":
        assert NEW not in engine.log()
        assert engine.helper("tavin.synthesis.worker") == worker
    assert engine.status()["error"] is None
    until(lambda: is_new(engine), 15, "the new engine")


def test_a_set_up_goes_on_to_its_end_first(engine, tree, server):
    server.plans = [does.stall_after(50_000)]
    assert engine.post("/config", engine="kokoro")[0] == 200
    until(lambda: engine.status()["download"], 15, "a fraction")
    upgrade(tree)
    preparation = engine.helper("tavin.setup.preparation")
    begun = time.monotonic()
    while time.monotonic() - begun < 3:  # longer than it takes to try the new files
        assert engine.status()["download"] and exists(preparation) and NEW not in engine.log()
    server.released.set()
    until(lambda: is_new(engine), 30, "the new engine")


def test_modules_that_are_loaded_later_are_no_change(engine):
    assert engine.request("GET", "/voices?engine=piper")[0] == 200
    begun = time.monotonic()
    while time.monotonic() - begun < 3:  # longer than it takes to try new files
        assert engine.status() and "files were changed" not in engine.log()


def test_no_request_is_lost_meanwhile(engine, tree):
    failures = []
    done = threading.Event()

    def ask():
        while not done.is_set():
            try:
                assert engine.status()["error"] is None
                assert engine.post("/stop")[0] == 200
            except Exception as failure:
                failures.append(failure)
                return

    threads = [threading.Thread(target=ask) for _ in range(3)]
    for thread in threads:
        thread.start()
    upgrade(tree)
    until(lambda: NEW in engine.log(), 15, "the new engine")
    done.set()
    for thread in threads:
        thread.join()
    assert failures == []


@pytest.mark.parametrize("turns", range(8))
def test_a_connection_that_comes_while_the_entrance_closes_is_let_in_or_waits(turns):
    """Whatever has become of it by then: each turn of the loop takes it a step further."""
    inside = []

    class Guest(asyncio.Protocol):
        def connection_made(self, transport):
            inside.append(transport)

    async def scenario():
        with socket.create_server(("127.0.0.1", 0)) as listener:
            entrance = Entrance(listener, Guest, lambda: [])
            await entrance.open()
            with socket.create_connection(listener.getsockname()):
                for _ in range(turns):
                    await asyncio.sleep(0)
                await entrance.close()
                await entrance.open()
                async with asyncio.timeout(5):
                    while not inside:
                        await asyncio.sleep(0.01)
                await entrance.close()

    asyncio.run(scenario())
    assert len(inside) == 1


def test_a_request_that_takes_long_is_answered_first(engine, tree):
    with socket.create_connection(("127.0.0.1", PORT)) as slow:
        slow.sendall(b"POST /key HTTP/1.1\r\nHost: 127.0.0.1:%d\r\nX-Tavin: 1\r\n"
                     b"Content-Length: 2\r\n\r\n{" % PORT)
        engine.status()
        upgrade(tree)
        begun = time.monotonic()
        while time.monotonic() - begun < 4:  # longer than it waits for connections that are open
            assert engine.status() and NEW not in engine.log()
        slow.sendall(b"}")
        assert slow.recv(100).startswith(b"HTTP/1.1 ")
    until(lambda: is_new(engine), 15, "the new engine")


def test_files_that_do_not_work_are_not_taken_up(engine, tree):
    replace(tree, "engine.py", "PATIENCE_AT_START = 1.0", "PATIENCE_AT_START = ")
    until(lambda: engine.status() and "do not work" in engine.log(), 15, "the line in the log")
    engine.speak(TEXT)
    engine.wait_for("speaking")
    engine.wait_for("idle")
    replace(tree, "engine.py", "PATIENCE_AT_START = ", "PATIENCE_AT_START = 1.0")
    upgrade(tree)
    until(lambda: is_new(engine), 15, "the new engine, once its files work")


def test_an_engine_whose_files_are_gone_goes_on(engine, tree):
    for path in (tree.folder / "tavin").rglob("*.py"):
        path.unlink()
    until(lambda: engine.status() and "do not work" in engine.log(), 15, "the line in the log")
    engine.speak(TEXT)
    engine.wait_for("speaking")
    assert engine.wait_for("idle")["error"] is None
