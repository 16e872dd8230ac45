"""What a back-end needs on the disk before it can speak: libraries and files, each in one place.

A back-end with `needs_setup` has a module `needs` with `libraries`, `files(voice)`, `voices()` and
`licence(voice)`. Cheap to import, for the engine.
"""

import hashlib
import importlib
import os
import sys
import sysconfig
from dataclasses import dataclass
from pathlib import Path


def of(backend):
    return importlib.import_module(f"tavin.synthesis.backends.{backend.name}.needs")


def folder(name):
    base = os.environ.get("XDG_DATA_HOME", "")
    if not os.path.isabs(base):  # unset, or not allowed by the standard
        base = os.path.expanduser("~/.local/share")
    return Path(base, "tavin", name)


@dataclass(frozen=True)
class File:
    backend: str
    label: str  # of the back-end, for people
    name: str
    url: str
    size: int  # bytes
    sha256: str = ""
    md5: str = ""  # where its makers tell no better sum

    @property
    def sum(self):
        """The hash's name and what it must be."""
        return ("sha256", self.sha256) if self.sha256 else ("md5", self.md5)

    @property
    def path(self):
        return folder(self.backend) / self.name


@dataclass(frozen=True)
class Libraries:
    """A virtual environment with what PyPI has, pinned by hash."""

    backend: str
    requirements: Path
    download: int  # bytes, about
    disk: int

    @property
    def folder(self):
        return folder(self.backend) / "libraries"

    @property
    def python(self):
        """The interpreter that finds them."""
        return self.folder / "bin" / "python3"

    def present(self):
        """Whether they are there, whole, and for the Python that runs this."""
        try:
            return self.python.exists() and self.mark(self.folder).read_text("utf-8") == self.wanted()
        except (OSError, ValueError):
            return False

    @staticmethod
    def mark(environment):
        """The file that says what an environment was built for; written last."""
        return environment / "built-for"

    def wanted(self):
        digest = hashlib.sha256(self.requirements.read_bytes()).hexdigest()
        return f"{sys.implementation.cache_tag} {sysconfig.get_platform()} {digest}"
