"""Choosing a neural voice installs its libraries: by the real pip, from a server good and bad."""

import hashlib
import io
import os
import random
import subprocess
import sys
import zipfile

import file_server as does
import neural_models
import pytest
from engine_process import exists
from sound import until
from test_setup import choose, data  # noqa: F401
from tree import Tree

PACKAGE = random.Random(4).randbytes(3_000_000)
FILE = random.Random(5).randbytes(1_000_000)
# Speaks, if it finds what was installed.
SYNTHESIZER = """
import first_library, second_library

class Synthesizer:
    rate = 22050
    voices = lambda self: [{"id": "one", "name": "One", "language": "en-us"}]
    say = lambda self, text, voice, speed, emit: emit(b"\\0\\x20" * 10000)
"""


def wheel(name, content):
    info = f"{name}-1.dist-info"
    made = io.BytesIO()
    with zipfile.ZipFile(made, "w") as archive:
        archive.writestr(f"{name}/__init__.py", "")
        archive.writestr(f"{name}/content", content)
        archive.writestr(f"{info}/METADATA", f"Metadata-Version: 2.1\nName: {name}\nVersion: 1\n")
        archive.writestr(f"{info}/WHEEL", "Wheel-Version: 1.0\nRoot-Is-Purelib: true\nTag: py3-none-any\n")
        archive.writestr(f"{info}/RECORD", "")
    return made.getvalue()


@pytest.fixture
def server(server):
    for name in ("first_library", "second_library"):
        server.files[f"{name}-1-py3-none-any.whl"] = wheel(name, PACKAGE)
    return server


def requirement(name, url, content):
    return f"{name} @ {url} --hash=sha256:{hashlib.sha256(content).hexdigest()}\n"


@pytest.fixture
def tree(tmp_path, server):
    made = Tree(tmp_path / "tree", server)
    made.offer(voice=FILE)
    wheels = [(name.split("-")[0], server.url(name), content) for name, content in server.files.items()]
    made.want_libraries("".join(requirement(*entry) for entry in wheels[:2]), 2 * len(PACKAGE), 20_000_000)
    pip = neural_models.file(neural_models.PIP)
    made.replace("setup/requirements.txt", requirement("pip", pip.as_uri(), pip.read_bytes()))
    made.replace("synthesis/backends/kokoro/synthesizer.py", SYNTHESIZER)
    return made


@pytest.fixture
def start(tree, new_engine):
    """Starts engines. pip keeps what comes by HTTPS, as from PyPI, or from a host that it is told to trust."""
    return lambda: new_engine({"PIP_TRUSTED_HOST": "127.0.0.1"}, tree=tree.folder).start()


@pytest.fixture
def engine(start):
    return start()


def ready(engine):
    status = until(lambda: (s := engine.status())["ready"] and s, 120, "the voice is ready")
    assert (status["engine"], status["download"], status["setup_error"]) == ("kokoro", None, None)


def left(data):  # noqa: F811
    return sorted(path.name for path in (data / "tavin" / "kokoro").iterdir())


def asked_for(server):
    return [name.split("-")[0] for name, _ in server.requests]


def test_libraries_and_files_are_one_download_and_the_voice_speaks(engine, server, data, recorder):  # noqa: F811
    server.plans = [does.serve, does.serve, does.stall_after(len(FILE) // 2)]
    choose(engine)
    told = set()
    until(lambda: told.add(engine.status()["download"]) or max(told - {None}, default=0) > 0.9, 120, "a fraction")
    whole = 2 * len(PACKAGE) + len(FILE)
    assert max(told - {None}) == pytest.approx((whole - len(FILE) / 2) / whole, abs=0.01)
    server.released.set()
    ready(engine)
    assert left(data) == ["libraries", "voice"]
    engine.speak("Hello.")
    engine.wait_for("speaking")
    assert engine.wait_for("idle")["error"] is None
    recorder.quiet_for(0.2)
    assert recorder.last_loud


def test_what_the_hashes_do_not_name_is_refused_and_costs_nothing(engine, server, data):  # noqa: F811
    server.plans = [does.serve, does.wrong_bytes]
    choose(engine)
    text = until(lambda: engine.status()["setup_error"], 60, "a failure")
    assert text == "Other libraries than expected were sent. Choose Kokoro again, or update Tavin."
    assert left(data) == []
    choose(engine)
    ready(engine)
    assert left(data) == ["libraries", "voice"]


def test_after_a_cut_it_goes_on_where_it_was(engine, server, data):  # noqa: F811
    server.plans = [does.cut_after(2_000_000)]
    choose(engine)
    ready(engine)
    assert asked_for(server) == ["first_library", "first_library", "second_library", "voice"]
    assert server.requests[1][1] == 2_000_000


def test_a_killed_engine_leaves_no_pip_and_the_next_goes_on(engine, server, data, start):  # noqa: F811
    server.plans = [does.serve, does.stall_after(1_000_000)]
    choose(engine)
    until(lambda: (engine.status()["download"] or 0) > 0.45, 60, "a fraction")
    helper = engine.helper("tavin.setup.preparation")
    pips = children(helper)
    assert pips
    engine.kill()
    until(lambda: not any(map(exists, [helper, *pips])), 5, "their end")
    assert left(data) == ["libraries.new", "libraries.wheels"]
    ready(start())
    assert asked_for(server) == ["first_library", "second_library", "second_library", "voice"]
    assert left(data) == ["libraries", "voice"]


def children(pid):
    with open(f"/proc/{pid}/task/{pid}/children", encoding="ascii") as listed:
        return [int(child) for child in listed.read().split()]


def test_a_new_python_of_the_system_gets_them_again(engine, server, data, start):  # noqa: F811
    choose(engine)
    ready(engine)
    engine.end()
    mark = data / "tavin" / "kokoro" / "libraries" / "built-for"
    now = mark.read_text()
    mark.write_text(now.replace("cpython-3", "cpython-2"))
    server.requests.clear()
    ready(start())
    assert asked_for(server) == ["first_library", "second_library"]
    assert mark.read_text() == now


def test_without_a_network_it_says_so(engine, server, data):  # noqa: F811
    server.end()
    choose(engine)
    text = until(lambda: engine.status()["setup_error"], 90, "a failure")
    assert text == "Kokoro's libraries could not be downloaded. Check the network, then choose Kokoro again."
    assert "libraries" not in left(data)


def test_they_do_not_depend_on_where_the_engine_is(tree, tmp_path, data):  # noqa: F811
    link = tmp_path / "python3"  # as an installed engine has it
    link.symlink_to(sys.executable)
    environment = {**os.environ, "XDG_DATA_HOME": str(data)}
    done = subprocess.run([link, "-B", "-c", neural_models.INSTALL, "kokoro"], cwd=tree.folder, env=environment)
    assert done.returncode == 0
    link.unlink()
    python = data / "tavin" / "kokoro" / "libraries" / "bin" / "python3"
    assert subprocess.run([python, "-c", "import first_library"]).returncode == 0
