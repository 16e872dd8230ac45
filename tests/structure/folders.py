"""Which folder of src includes which, and what docs/architecture.md says about it."""
import re
from collections import defaultdict
from pathlib import Path

CONTRACTS = "platform"
# The process entry makes the platform and hands it to the logic.
ENTRY = "app/main.cpp"


def sources(src):
    return sorted(path for path in src.rglob("*") if path.suffix in (".h", ".cpp"))


def folders(src):
    return sorted({path.relative_to(src).parent.as_posix() for path in sources(src)})


def includes(src):
    """Each include of one folder's file from another: (file, folder, folder of the header)."""
    for path in sources(src):
        file = path.relative_to(src)
        for header in re.findall(r'^#include "(.+/.+)"', path.read_text(), re.MULTILINE):
            folder, used = file.parent.as_posix(), Path(header).parent.as_posix()
            if folder != used:
                yield file.as_posix(), folder, used


def is_logic(folder):
    return folder.split("/")[0] != CONTRACTS


def is_back_end(folder):
    return folder.startswith(CONTRACTS + "/")


def trespasses(src):
    """Files of the platform that include the logic, and files of the logic that include a back end."""
    return [(file, used) for file, folder, used in includes(src) if file != ENTRY
            and (is_logic(used) if not is_logic(folder) else is_back_end(used))]


def locks(src):
    """Files of the logic that name a lock of the standard library or of Qt."""
    return [path.relative_to(src).as_posix() for path in sources(src)
            if is_logic(path.relative_to(src).parent.as_posix())
            and re.search(r"\b(\w*mutex|\w+_lock|lock_guard|QMutex\w*|QReadWriteLock)\b", path.read_text())]


def uses(src):
    """By the folders' last names: 'x11' is platform/x11."""
    found = defaultdict(set)
    for _, folder, used in includes(src):
        found[Path(folder).name].add(Path(used).name)
    return dict(found)


def upward(drawn):
    """The pairs of the drawing in which a folder uses one that does not stand below it."""
    order = list(drawn)
    return [(folder, used) for folder in order for used in sorted(drawn[folder])
            if used in order and order.index(used) <= order.index(folder)]


def gui_headers(qt):
    """The names of Qt's headers for graphics and windows, below its folder of headers."""
    return {path.name for module in ("QtGui", "QtWidgets") for path in (qt / module).iterdir()
            if path.name.startswith("Q")}


def shows_windows(src, headers):
    """The folders with a file that includes one of these headers, by their last names."""
    found = set()
    for path in sources(src):
        names = re.findall(r"^#include <(?:Qt\w+/)?(Q\w+)>", path.read_text(), re.MULTILINE)
        if headers & set(names):
            found.add(path.parent.name)
    return found


def drawing(document):
    """The lines 'folder -> folder, folder' of the document's block, in their order."""
    lines = re.findall(r"^(\S+) +-> (.+)$", document, re.MULTILINE)
    return {folder: set(used.split(", ")) for folder, used in lines}


def described(document):
    """The folders in the first column of the document's table."""
    return set(re.findall(r"^\| `src/([^`]+)` \|", document, re.MULTILINE))
