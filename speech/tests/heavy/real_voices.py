"""A copy of the engine whose voices come from a server of the test's: the makers' files, as far as they are here.
A test file imports the fixtures."""

import hashlib
import json

import ear
import neural_models
import pytest
from neural_models import MODEL, PIPER, VOICES
from sound import Recorder
from tree import Tree

PIPER_PLACE = "en/en_US/joe/medium/"
CATALOGUE = "tavin/synthesis/backends/piper/catalogue.json"


@pytest.fixture
def engine(tmp_path, new_engine, server):
    return new_engine(tree=tree(tmp_path / "tree", tmp_path / "data", server).folder).start()


@pytest.fixture
def recorder(sound_server):
    """For the recogniser."""
    recording = Recorder(sound_server, rate=ear.RATE)
    yield recording
    recording.end()


def tree(folder, data, server):
    """It wants Kokoro's own model; Kokoro's voices and Piper's configuration are other editions, with
    other sums. The libraries are in the `data` folder already."""
    made = Tree(folder, server)
    made.serve_model(neural_models.file(MODEL))
    made.offer_instead(neural_models.file(VOICES))
    offer_piper(made.folder / CATALOGUE, server)
    for backend in ("kokoro", "piper"):
        place = data / "tavin" / backend / "libraries"
        place.parent.mkdir(parents=True)
        place.symlink_to(neural_models.libraries(backend))
    return made


def offer_piper(path, server):
    for name in (f"{PIPER}.onnx", f"{PIPER}.onnx.json", "MODEL_CARD"):
        server.files[PIPER_PLACE + name] = neural_models.file(name).read_bytes()
    catalogue = json.loads(path.read_text())
    catalogue["address"] = server.url("")
    config = server.files[f"{PIPER_PLACE}{PIPER}.onnx.json"]
    catalogue["voices"][PIPER]["config"] = [len(config), hashlib.md5(config).hexdigest()]
    path.write_text(json.dumps(catalogue))


def proportional(pid):
    """A process's memory in MB, what it shares with others divided among them."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as rollup:
        return next(int(line.split()[1]) for line in rollup if line.startswith("Pss:")) / 1000
