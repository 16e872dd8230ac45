"""Gets what a back-end needs: installs its libraries, verifies its files, downloads what is missing.

Run as `python3 -m tavin.setup.preparation BACK-END VOICE PARENT-PID`, a process of its own, because
hashing and waiting for servers would hold up the engine's answers. Its frames:
PROGRESS while it downloads, and as the last DONE or MISSING.
"""

import os
import shutil
import sys

from tavin.process import frames, lifetime
from tavin.setup import download, libraries, needs
from tavin.synthesis.backends import BACKENDS

STEP = 0.002  # of the whole; smaller progress is not worth a message
SPARE = 20_000_000  # bytes of the disk that are left to others


class Progress:
    """One fraction over everything that is downloaded."""

    def __init__(self, sizes, report):
        self._there = {name: 0 for name in sizes}
        self._whole = sum(sizes.values()) or 1
        self._sizes = sizes
        self._report = report
        self._told = -1.0

    def at(self, name, size, tell=True):
        self._there[name] = min(size, self._sizes[name])
        fraction = sum(self._there.values()) / self._whole
        if tell and abs(fraction - self._told) >= STEP:
            self._told = fraction
            self._report(fraction)


def prepare(backend, voice, report):
    """Have everything whole; DownloadError when that cannot be."""
    wanted = needs.of(backend)
    files = wanted.files(voice)
    packages = wanted.libraries
    sizes = {packages: packages.download, **{file: file.size for file in files}}
    progress = Progress(sizes, report)
    missing = [file for file in files if not download.is_whole(file.path, file)]
    for file in files:
        there = file.size if file not in missing else download.size_of(download.part_of(file))
        progress.at(file, there, tell=False)
    absent = not packages.present()
    require_space(backend, (packages.disk + packages.download) * absent + sum(map(download.left_of, missing)))
    if absent:
        libraries.install(packages, backend.label, lambda size: progress.at(packages, size))
    progress.at(packages, packages.download, tell=False)
    for file in missing:
        download.fetch(file, lambda size, file=file: progress.at(file, size))


def require_space(backend, size):
    """DownloadError when the disk has too little room."""
    place = needs.folder(backend.name)
    while not place.exists():
        place = place.parent
    free = shutil.disk_usage(place).free
    if size and free < size + SPARE:
        raise download.DownloadError(
            f"{backend.label} needs {megabytes(size + SPARE)} MB in {needs.folder(backend.name)}, "
            f"and {megabytes(free)} MB are free. Make room, then choose {backend.label} again."
        )


def megabytes(size):
    return -(-size // 1_000_000)


def main():
    backend, voice = BACKENDS[sys.argv[1]], sys.argv[2]
    lifetime.end_with_parent(int(sys.argv[3]))
    lifetime.ignore_terminal_signals()
    output = lifetime.claim_output()
    os.nice(5)
    objection = ""
    try:
        prepare(backend, voice, lambda fraction: frames.write(output, frames.PROGRESS, 0, str(fraction).encode()))
    except download.DownloadError as failure:
        objection = str(failure)
    except OSError as failure:
        place = failure.filename or needs.folder(backend.name)
        why = failure.strerror or failure
        objection = f"{place} cannot be written: {why}. See to it, then choose {backend.label} again."
    frames.write(output, frames.MISSING if objection else frames.DONE, 0, objection.encode())


if __name__ == "__main__":
    try:
        main()
    except BrokenPipeError:
        pass  # the engine is gone
