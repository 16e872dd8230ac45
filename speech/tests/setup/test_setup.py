"""The neural voice's set-up without its libraries: what is told, what is downloaded and kept.

Their installation is in heavy/test_libraries.py: it needs a pip from PyPI.
"""

import os
import random
import signal

import file_server as does
import pytest
from engine_process import exists
from sound import until
from tree import Tree

MODEL = random.Random(2).randbytes(2_000_000)
VOICES = random.Random(3).randbytes(500_000)
ALL = [("model", 0), ("voices", 0)]
HANG = "import time; time.sleep(60)"


@pytest.fixture
def tree(tmp_path, server):
    made = Tree(tmp_path / "tree", server)
    made.offer(model=MODEL, voices=VOICES)
    return made


@pytest.fixture
def data(tmp_path):
    return tmp_path / "data"


@pytest.fixture
def engine(tree, new_engine):
    return new_engine(tree=tree.folder)


def choose(engine):
    assert engine.post("/config", engine="kokoro") == (200, {"ok": True})


def failed(engine):
    """Wait for the set-up's failure; its text."""
    status = until(lambda: (s := engine.status())["setup_error"] and s, 20, "a failure")
    assert (status["engine"], status["ready"], status["download"]) == ("kokoro", False, None)
    return status["setup_error"]


def kept(engine):
    folder = engine.folder / "data" / "tavin" / "kokoro"
    if not folder.exists():
        return {}
    return {path.name: path.read_bytes() for path in folder.iterdir() if path.is_file()}


def files_came(engine):
    """The set-up got as far as it can without libraries."""
    assert "cannot be loaded" in failed(engine)
    assert kept(engine) == {"model": MODEL, "voices": VOICES}


def test_where_there_is_no_pip_it_says_what_to_install_and_downloads_nothing(engine, tree, server):
    tree.change("setup/libraries.py", "folders = [*WHEELS,", "folders = [] and [*WHEELS,")
    engine.start()
    status = engine.status()
    assert (status["engine"], status["ready"], status["setup_error"]) == ("espeak", True, None)
    choose(engine)
    assert failed(engine).startswith("Python's pip is missing: install the package python3-venv, then")
    assert server.requests == []
    assert engine.request("GET", "/voices?engine=kokoro") == (200, [])
    assert engine.post("/config", voice="af_heart")[0] == 400
    engine.speak("Hello.")
    assert "python3-venv" in engine.wait_for("idle")["error"]
    engine.post("/config", engine="espeak")
    status = engine.status()
    assert (status["engine"], status["ready"], status["setup_error"]) == ("espeak", True, None)
    engine.speak("Hello.")
    engine.wait_for("speaking")
    assert engine.wait_for("idle")["error"] is None


def test_too_little_room_is_told_before_anything_is_downloaded(engine, tree, server):
    tree.want_libraries("", download=10**15, disk=10**15)
    engine.start()
    choose(engine)
    text = failed(engine)
    assert text.startswith("Kokoro needs 20000") and "MB are free. Make room, then choose Kokoro again." in text
    assert server.requests == []
    assert kept(engine) == {}


def test_libraries_for_another_python_are_not_used(engine, tree, data):
    tree.change("setup/libraries.py", "folders = [*WHEELS,", "folders = [] and [*WHEELS,")
    tree.have_libraries(data)
    mark = data / "tavin" / "kokoro" / "libraries" / "built-for"
    mark.write_text(mark.read_text().replace("cpython-3", "cpython-2"))
    engine.start()
    choose(engine)
    assert "pip is missing" in failed(engine)  # they would be fetched again


def test_the_download_is_told_as_a_fraction_and_speech_says_so(engine, tree, server, data):
    tree.have_libraries(data)
    server.plans = [does.stall_after(1_000_000)]
    engine.start()
    choose(engine)
    status = until(lambda: (s := engine.status())["download"] and s["download"] > 0.39 and s, 10, "a fraction")
    assert 0.39 < status["download"] <= 0.4
    assert (status["ready"], status["setup_error"]) == (False, None)
    engine.speak("Hello.")
    assert "downloading" in engine.wait_for("idle")["error"]
    engine.post("/config", engine="espeak")
    assert engine.status()["download"] is None
    engine.speak("Meanwhile.")
    engine.wait_for("speaking")
    engine.post("/config", engine="kokoro")
    assert engine.status()["download"] > 0.39
    server.released.set()
    files_came(engine)


def test_a_killed_engine_goes_on_with_the_download_at_its_next_start(engine, tree, server, new_engine, data):
    tree.have_libraries(data)
    server.plans = [does.stall_after(1_000_000)]
    engine.start()
    choose(engine)
    until(lambda: (engine.status()["download"] or 0) > 0.39, 10, "a fraction")
    engine.kill()
    files_came(new_engine(tree=tree.folder).start())
    assert server.requests == [("model", 0), ("model", 1_000_000), ("voices", 0)]


def test_whole_files_are_not_asked_for_again(engine, tree, server, new_engine, data):
    tree.have_libraries(data)
    engine.start()
    choose(engine)
    files_came(engine)
    engine.end()
    server.end()
    files_came(new_engine(tree=tree.folder).start())
    assert server.requests == ALL


def test_a_file_that_rots_is_replaced(engine, tree, server, new_engine, data):
    tree.have_libraries(data)
    engine.start()
    choose(engine)
    files_came(engine)
    engine.end()
    (engine.folder / "data" / "tavin" / "kokoro" / "voices").write_bytes(bytes(len(VOICES)))
    files_came(new_engine(tree=tree.folder).start())
    assert server.requests == [*ALL, ("voices", 0)]


@pytest.mark.parametrize("plan, text", [(does.wrong_bytes, "other files"), (does.refuse(404), "404")])
def test_after_a_failure_choosing_again_retries(engine, tree, server, plan, text, data):
    tree.have_libraries(data)
    server.plans = [plan]
    engine.start()
    choose(engine)
    assert text in failed(engine)
    assert kept(engine) == {}
    assert engine.post("/config", speed=2)[0] == 200
    assert text in engine.status()["setup_error"]  # only choosing it tries again
    choose(engine)
    until(lambda: text not in (engine.status()["setup_error"] or ""), 10, "another try")
    files_came(engine)


def test_a_killed_download_is_a_failure_that_can_be_retried(engine, tree, server, data):
    tree.have_libraries(data)
    server.plans = [does.stall_after(1_000_000)]
    engine.start()
    choose(engine)
    until(lambda: engine.status()["download"], 10, "a fraction")
    os.kill(engine.helper("tavin.setup.preparation"), signal.SIGKILL)
    assert "SIGKILL" in failed(engine)
    choose(engine)
    until(lambda: "SIGKILL" not in (engine.status()["setup_error"] or ""), 10, "another try")
    files_came(engine)


def test_a_preparation_that_hangs_is_a_failure(engine, tree):
    tree.change("setup/setup.py", "PATIENCE = 900.0", "PATIENCE = 0.5")
    tree.replace("setup/preparation.py", HANG)
    engine.start()
    choose(engine)
    helper = engine.helper("tavin.setup.preparation")
    assert failed(engine) == "Getting the voices takes too long. Choose Kokoro again."
    until(lambda: not exists(helper), 5, "the preparation's end")


def test_a_server_that_trickles_is_a_failure_and_nobody_waits_for_it(engine, tree, server, data):
    tree.have_libraries(data)
    tree.change("setup/download.py", "STALL_SECONDS = 30.0", "STALL_SECONDS = 0.3")
    tree.change("setup/download.py", "PAUSE_SECONDS = 1.0", "PAUSE_SECONDS = 0.01")
    server.plans = [does.trickle] * 5
    engine.start()
    choose(engine)
    until(lambda: engine.status()["download"] is not None, 10, "a fraction")
    engine.speak("Hello.")
    assert "downloading" in engine.wait_for("idle")["error"]
    assert "too slow" in failed(engine)


def test_what_stands_in_the_way_is_named(engine, tree, data):
    tree.offer(model=b"less than a folder takes", voices=VOICES)
    tree.have_libraries(data)
    obstacle = data / "tavin" / "kokoro" / "model.part"
    obstacle.mkdir()
    engine.start()
    choose(engine)
    assert failed(engine) == f"{obstacle} cannot be written: Is a directory. See to it, then choose Kokoro again."


def test_a_full_disk_is_told_and_what_came_is_kept(tree, new_engine, data):
    tree.have_libraries(data)
    full = (
        "import resource; resource.setrlimit(resource.RLIMIT_FSIZE, (1_500_000, -1));"
        "from tavin import server; server.main()"
    )
    engine = new_engine(tree=tree.folder, command=("-c", full)).start()
    choose(engine)
    text = failed(engine)
    assert "cannot be written" in text and "Kokoro again" in text
    assert kept(engine) == {"model.part": MODEL[:1_500_000]}
    engine.end()
    files_came(new_engine(tree=tree.folder).start())


@pytest.fixture
def loading(engine, tree, data):
    """An engine whose voice is being loaded; its worker."""
    tree.have_libraries(data)
    tree.replace("synthesis/backends/kokoro/synthesizer.py", HANG)
    engine.start()
    choose(engine)
    return until(lambda: engine.helpers("tavin.synthesis.worker", "kokoro"), 10, "the worker")[0]


def test_a_worker_that_dies_while_it_loads_is_told_with_what_to_do(engine, loading):
    engine.speak("Hello.")
    assert "still loading" in engine.wait_for("idle")["error"]
    os.kill(loading, signal.SIGKILL)
    text = failed(engine)
    assert "Kokoro could not be started (SIGKILL)" in text
    assert "memory" in text and "Choose Kokoro again." in text
    choose(engine)
    until(lambda: engine.helpers("tavin.synthesis.worker", "kokoro"), 10, "a new worker")
    assert engine.status()["setup_error"] is None


def test_a_signal_ends_the_loading_as_well(engine, loading):
    code, seconds = engine.end()
    assert code == 0
    assert seconds < 0.5
    until(lambda: not exists(loading), 1, "the worker's end")


def test_a_signal_ends_the_download_as_well(engine, tree, server, data):
    tree.have_libraries(data)
    server.plans = [does.stall_after(1_000_000)]
    engine.start()
    choose(engine)
    helper = engine.helper("tavin.setup.preparation")
    until(lambda: engine.status()["download"], 10, "a fraction")
    code, seconds = engine.end()
    assert code == 0
    assert seconds < 0.5
    until(lambda: not exists(helper), 1, "the download's end")


def test_with_libraries_and_files_it_is_the_first_choice(engine, tree, new_engine, data):
    tree.have_libraries(data)
    engine.start()
    choose(engine)
    files_came(engine)
    engine.end()
    engine.settings.unlink()
    assert new_engine(tree=tree.folder).start().status()["engine"] == "kokoro"
