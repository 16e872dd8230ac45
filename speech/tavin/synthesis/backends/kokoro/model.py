"""The neural voice's files: which they are, where they are kept, and its libraries' folder.

Cheap to import: nothing of the neural voice itself is loaded here.
"""

import json
import os
import sys
from dataclasses import dataclass
from importlib import metadata
from pathlib import Path

import tavin

LIBRARIES = Path(tavin.LIBRARIES)
PINS = Path(__file__).with_name("files.json")
IN_SOURCE_TREE = Path(tavin.ENGINE_FOLDER, "requirements-kokoro.txt").exists()
REMEDY = 'run "make kokoro" in Tavin\'s source folder{}, then choose Kokoro again.'.format(
    "" if IN_SOURCE_TREE else " and install Tavin"
)


@dataclass(frozen=True)
class ModelFile:
    name: str
    url: str
    size: int  # bytes
    sha256: str

    @property
    def path(self):
        return folder() / self.name


def files():
    """The model and the voices, in this order, exactly as they must be."""
    return [ModelFile(**entry) for entry in json.loads(PINS.read_text("utf-8"))["files"]]


def folder():
    base = os.environ.get("XDG_DATA_HOME", "")
    if not os.path.isabs(base):  # unset, or not allowed by the standard
        base = os.path.expanduser("~/.local/share")
    return Path(base, "tavin", "kokoro")


def present():
    """Whether everything is there by its look: libraries and files of the right sizes."""
    try:
        return LIBRARIES.is_dir() and all(file.path.stat().st_size == file.size for file in files())
    except OSError:
        return False


def use_libraries():
    """Put the libraries before the system's, which may be too old for each other."""
    if LIBRARIES.is_dir():
        sys.path.insert(0, str(LIBRARIES))


def objection():
    """Why the libraries cannot be used, and what to do; None when they can."""
    try:
        metadata.version("kokoro-onnx")
        wheel = metadata.distribution("onnxruntime").read_text("WHEEL") or ""
    except metadata.PackageNotFoundError:
        return f"Kokoro's libraries are not installed: {REMEDY}"
    own = f"cp{sys.version_info.major}{sys.version_info.minor}"
    built_for = [line.split()[1].split("-")[0] for line in wheel.splitlines() if line.startswith("Tag: ")]
    if built_for and own not in built_for:
        return f"Kokoro's libraries are for Python {readable(built_for[0])}, this is {readable(own)}: {REMEDY}"
    return None


def readable(tag):
    """ "3.11" of "cp311"."""
    return f"{tag[2:3]}.{tag[3:]}"
