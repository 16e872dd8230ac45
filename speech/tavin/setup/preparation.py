"""Prepares the neural voice: checks its libraries, verifies its files, downloads what is missing.

Run as `python3 -m tavin.setup.preparation PARENT-PID`, a process of its own, because
hashing and waiting for servers would hold up the engine's answers. Its frames:
PROGRESS while it downloads, and as the last DONE or MISSING.
"""

import os
import sys

from tavin.process import frames, lifetime
from tavin.setup import download
from tavin.synthesis.backends.kokoro import model

STEP = 0.002  # of the whole; smaller progress is not worth a message


class Progress:
    def __init__(self, files, report):
        self._sizes = {file.name: 0 for file in files}
        self._whole = sum(file.size for file in files)
        self._report = report
        self._told = -1.0

    def at(self, file, size, tell=True):
        self._sizes[file.name] = size
        fraction = sum(self._sizes.values()) / self._whole
        if tell and abs(fraction - self._told) >= STEP:
            self._told = fraction
            self._report(fraction)


def prepare(report):
    """Have all files whole; DownloadError when that cannot be."""
    files = model.files()
    progress = Progress(files, report)
    missing = []
    for file in files:
        whole = download.is_whole(file.path, file)
        progress.at(file, file.size if whole else download.size_of(download.part_of(file)), tell=False)
        if not whole:
            missing.append(file)
    for file in missing:
        download.fetch(file, lambda size, file=file: progress.at(file, size))


def main():
    lifetime.end_with_parent(int(sys.argv[1]))
    lifetime.ignore_terminal_signals()
    output = lifetime.claim_output()
    os.nice(5)
    model.use_libraries()
    try:
        objection = model.objection()
        if objection is None:
            prepare(lambda fraction: frames.write(output, frames.PROGRESS, 0, str(fraction).encode()))
    except download.DownloadError as failure:
        objection = str(failure)
    kind = frames.MISSING if objection else frames.DONE
    frames.write(output, kind, 0, (objection or "").encode())


if __name__ == "__main__":
    try:
        main()
    except BrokenPipeError:
        pass  # the engine is gone
