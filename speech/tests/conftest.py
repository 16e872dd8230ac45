"""Fixtures: a private network, a private sound server, an engine of the test's own."""

import shutil
import sys
import tempfile
from pathlib import Path

import private_network
import pytest

# Before anything has made a thread.
PORT_LOCK = None if private_network.enter() else private_network.lock_port()
sys.path.insert(0, str(Path(__file__).resolve().parent.parent))

from engine_process import EngineProcess  # noqa: E402
from sound import Recorder, SoundServer  # noqa: E402


@pytest.fixture(scope="session")
def sound_server():
    # Short: the path of a socket has little room.
    folder = tempfile.mkdtemp(prefix="tavin-")
    server = SoundServer(folder)
    yield server
    server.end()
    shutil.rmtree(folder)


@pytest.fixture
def new_engine(sound_server, tmp_path):
    """Makes engines that share settings; all are ended after the test."""
    made = []

    def make(environment=None, **options):
        engine = EngineProcess({**sound_server.environment, **(environment or {})}, tmp_path, **options)
        made.append(engine)
        return engine

    yield make
    for engine in made:
        engine.kill()


@pytest.fixture
def engine(new_engine):
    return new_engine().start()


@pytest.fixture
def recorder(sound_server):
    recording = Recorder(sound_server)
    yield recording
    recording.end()
