"""Fixtures: a private network, a private sound server, an engine of the test's own."""

import shutil
import sys
import tempfile
from pathlib import Path

import private_network
import pytest

# Before anything has made a thread.
PORT_LOCK = None if private_network.enter() else private_network.lock_port()
HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
sys.path += map(str, sorted(HERE.glob("*/")))  # tests share steps with those of other folders

from cloud_service import CloudService  # noqa: E402
from engine_process import EngineProcess  # noqa: E402
from file_server import FileServer  # noqa: E402
from keyring_session import KeyringSession  # noqa: E402
from sound import Recorder, start_server  # noqa: E402


@pytest.fixture(scope="session")
def sound_server():
    # Short: the path of a socket has little room.
    folder = tempfile.mkdtemp(prefix="tavin-")
    server = start_server(folder)
    yield server
    server.end()
    shutil.rmtree(folder)


@pytest.fixture
def new_engine(sound_server, quiet_engine, tmp_path):
    """Makes engines that share settings; all are ended after the test."""
    quiet_engine.kill()
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


@pytest.fixture(scope="session")
def quiet_engine(sound_server, tmp_path_factory):
    """One engine for all tests that only have requests refused or answered."""
    engine = EngineProcess(sound_server.environment, tmp_path_factory.mktemp("quiet"))
    yield engine
    engine.kill()


@pytest.fixture
def shared(quiet_engine):
    """The quiet engine, if need be started again: only one engine has the port at a time."""
    if not quiet_engine.running():
        quiet_engine.start()
    yield quiet_engine
    assert quiet_engine.running(), quiet_engine.log()
    quiet_engine.post("/stop")


@pytest.fixture
def recorder(sound_server):
    recording = Recorder(sound_server)
    yield recording
    recording.end()


@pytest.fixture
def service():
    server = CloudService()
    yield server
    server.end()


@pytest.fixture
def cloud_engine(new_engine, service):
    return new_engine(service.environment).start()


@pytest.fixture
def keyring(sound_server):
    folder = Path(tempfile.mkdtemp(prefix="tavin-"))  # short: the path of a socket has little room
    session = KeyringSession(folder, {"PATH": sound_server.environment["PATH"]})
    yield session
    session.end()
    shutil.rmtree(folder)


@pytest.fixture
def start(new_engine, keyring, service):
    """Starts engines that have the keyring and the cloud."""
    return lambda: new_engine({**service.environment, **keyring.environment}).start()


@pytest.fixture
def server():
    """Of files, for what is downloaded."""
    made = FileServer()
    yield made
    made.end()
