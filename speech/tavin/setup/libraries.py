"""Installs a back-end's libraries from PyPI with pip, pinned by hash, in a virtual environment.

It is built beside its place and moved there whole. The wheels that have come are
kept until then, so a restart goes on after the last of them. Blocks; for a process
of its own.
"""

import importlib.util
import os
import re
import shutil
import subprocess
import sys
import sysconfig
from pathlib import Path

from tavin.process import lifetime
from tavin.setup.download import DownloadError

OWN_PIP = Path(__file__).with_name("requirements.txt")
# Where distributions keep the pip that virtual environments begin with; Python itself has it in `ensurepip`.
WHEELS = ("/usr/share/python-wheels", sysconfig.get_config_var("WHEEL_PKG_DIR"))
RUN_WHEEL = "import runpy, sys; sys.path.insert(0, sys.argv.pop(1)); runpy.run_module('pip', run_name='__main__')"
INSTALL = (
    *("install", "--require-hashes", "--no-deps", "--only-binary", ":all:", "--ignore-installed"),
    *("--no-user", "--no-input", "--disable-pip-version-check", "--no-warn-script-location"),
)
PROGRESS = re.compile(r"Progress (\d+) of (\d+)")
KEPT = re.compile(r"Using cached \S+ \(([\d.]+) ([kM])B\)")
UNITS = {"k": 1000, "M": 1_000_000}
MISMATCH = "DO NOT MATCH THE HASHES"
MESSAGES = 30  # lines of pip's that are kept, to tell what went wrong


def install(libraries, label, on_size):
    """Have the libraries in their place; DownloadError when that cannot be. `on_size(bytes)` tells
    how much of their download is there."""
    place = libraries.folder
    fresh, kept = place.with_name("libraries.new"), place.with_name("libraries.wheels")
    wheel = first_pip(label)
    try:
        shutil.rmtree(fresh, ignore_errors=True)
        kept.mkdir(mode=0o700, parents=True, exist_ok=True)
        build(fresh, kept, wheel, libraries, label, on_size)
        libraries.mark(fresh).write_text(libraries.wanted(), "utf-8")
        shutil.rmtree(place, ignore_errors=True)  # of another Python
        fresh.rename(place)
        shutil.rmtree(kept, ignore_errors=True)
    except OSError as failure:
        raise DownloadError(
            f"{place.parent} cannot be written: {failure.strerror}. See to it, then choose {label} again."
        ) from None
    finally:
        shutil.rmtree(fresh, ignore_errors=True)


def first_pip(label):
    """The wheel of the system's pip, good enough to get ours; DownloadError without one."""
    own = importlib.util.find_spec("ensurepip")  # Debian has it in a package of its own
    folders = [*WHEELS, own and Path(own.origin).with_name("_bundled")]
    for wheel in (wheel for folder in folders if folder for wheel in Path(folder).glob("pip-*.whl")):
        return wheel
    raise DownloadError(f"Python's pip is missing: install the package python3-venv, then choose {label} again.")


def build(environment, kept, wheel, libraries, label, on_size):
    python, install = environment / "bin" / "python3", [*INSTALL, "--cache-dir", kept]
    runner = Runner(label, kept, on_size)
    # By its real name: the engine's own is a link, in a tree that may be moved. With the system's packages,
    # because the worker needs what the engine needs; those that are installed now come first.
    system = os.path.realpath(sys.executable)
    runner.run([system, "-I", "-m", "venv", "--system-site-packages", "--without-pip", environment])
    runner.run([python, "-I", "-c", RUN_WHEEL, wheel, *install, "--requirement", OWN_PIP])
    pip = [python, "-I", "-m", "pip", *install, "--progress-bar", "raw"]
    runner.run([*pip, "--requirement", libraries.requirements])


class Runner:
    """Runs commands, understands pip's progress and what it says of failures."""

    def __init__(self, label, kept, on_size):
        self._label = label
        self._kept = kept
        self._on_size = on_size
        self._size = 0
        self._messages = []

    def run(self, command):
        """Run to the end, telling the progress; DownloadError when it fails."""
        me = os.getpid()
        process = subprocess.Popen(
            command,
            env={**os.environ, "LC_ALL": "C.UTF-8", "TMPDIR": str(self._kept)},
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            errors="replace",
            preexec_fn=lambda: lifetime.end_with_parent(me),
        )
        for line in process.stdout:
            self._take(line)
        if process.wait() != 0:
            if MISMATCH in "\n".join(self._messages):
                shutil.rmtree(self._kept, ignore_errors=True)  # or it would be taken from there again
            raise DownloadError(self._reason())

    def _take(self, line):
        if progress := PROGRESS.match(line):
            self._on_size(self._size + int(progress[1]))
            if progress[1] == progress[2]:
                self._size += int(progress[2])
        elif kept := KEPT.search(line):
            self._size += int(float(kept[1]) * UNITS[kept[2]])
            self._on_size(self._size)
        else:
            self._messages = [*self._messages[1 - MESSAGES :], line.strip()]

    def _reason(self):
        """What went wrong, for the user, from what pip said."""
        said = "\n".join(self._messages)
        label = self._label
        if MISMATCH in said:
            return f"Other libraries than expected were sent. Choose {label} again, or update Tavin."
        if "No space left" in said or "quota exceeded" in said:
            return f"The disk is full: make room in {self._kept.parent}, then choose {label} again."
        if re.search(r"Retrying|connection|timed out|resolve", said, re.IGNORECASE):
            return f"{label}'s libraries could not be downloaded. Check the network, then choose {label} again."
        if "No matching distribution" in said:
            version = f"{sys.version_info.major}.{sys.version_info.minor}"
            return f"{label}'s libraries are not to be had for Python {version} on this computer. Update Tavin."
        errors = [line.removeprefix("ERROR: ") for line in self._messages if line.startswith("ERROR: ")]
        why = errors[-1] if errors else "pip or venv ended unexpectedly"
        return f"{label}'s libraries could not be installed ({why}). Choose {label} again."

