"""How Tavin finds its engine's files, and the log that it keeps of the engine."""

import contextlib
import os
import signal

import pytest
from driver import Tavin
from own_engine import engines
from scripted_engine import Pair, make_tree
from session import wait_until

NO_ENGINE = "Tavin: no bundled engine and no TavinEngineDir"


@pytest.fixture
def tree(tmp_path, build):
    return make_tree(str(tmp_path / "tree"), build)


@pytest.fixture
def log(session):
    path = os.path.join(session.env["HOME"], "Library/Logs/Tavin/engine.log")

    def read():
        with contextlib.suppress(FileNotFoundError):
            with open(path, encoding="utf-8") as f:
                return f.read()
        return ""
    return read


def run(desktop, tree, log):
    """A run of the program, and the engine's output for one request of it."""
    before = log()
    pair = Pair(desktop, tree)
    pair.tavin.action("stop")
    wait_until(lambda: "POST /stop" in log()[len(before):], 10, "the request in the log")
    end(pair)


def end(pair):
    assert pair.tavin.quit(signal.SIGTERM)[0] == 0
    pair.how_the_engine_ended()


def test_two_runs_of_the_program_append_to_the_engines_log(desktop, tree, log):
    run(desktop, tree, log)
    first = log()
    run(desktop, tree, log)
    assert log().startswith(first)


def test_the_program_is_reached_through_a_link(desktop, tree, tmp_path):
    os.makedirs(tmp_path / "links/bin")
    os.symlink(os.path.join(tree, "bin/tavin"), tmp_path / "links/bin/tavin")
    end(Pair(desktop, str(tmp_path / "links")))


@pytest.mark.parametrize("info", [None, "", "{", "[]", '{"TavinEngineDir": 5}', "\xff"])
def test_a_missing_or_malformed_information_file_reads_as_empty(desktop, session, tree, info):
    path = os.path.join(tree, "share/tavin/info.json")
    os.unlink(path)
    if info is not None:
        with open(path, "w", encoding="latin-1") as f:
            f.write(info)
    tavin = Tavin(desktop, None, tree, log=f"tavin-{info!r:.8}.log".replace("/", ""))
    wait_until(lambda: NO_ENGINE in tavin.log(), 10, "the line in the log")
    assert not engines(session)
    assert tavin.quit()[0] == 0
