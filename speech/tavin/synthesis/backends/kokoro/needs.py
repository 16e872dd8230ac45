"""What the neural voice needs on the disk. Cheap to import: nothing of the voice itself is loaded."""

import json
from pathlib import Path

from tavin.setup.needs import File, Libraries
from tavin.synthesis.backends.kokoro.voicefile import voices_in

HERE = Path(__file__).parent
PINS = json.loads((HERE / "needs.json").read_text("utf-8"))

libraries = Libraries("kokoro", HERE / "requirements.txt", **PINS["libraries"])


def files(_voice=None):
    """The model and the voices, in this order, exactly as they must be."""
    return [File("kokoro", "Kokoro", **pin) for pin in PINS["files"]]


def voices():
    """The voices, as soon as their file is there."""
    return voices_in(files()[-1].path)


def licence(_voice=None):
    return "Apache-2.0"


def present():
    """Whether everything is there by its look: libraries and files of the right sizes."""
    try:
        return libraries.present() and all(file.path.stat().st_size == file.size for file in files())
    except OSError:
        return False
