"""What the user chose: back-end, a voice for each back-end, speed. Kept over a restart.

The file is replaced as a whole, so that it is never half written, whenever the
engine is killed, and on a thread, because a disk may be slow. A file that cannot
be read or written costs the memory of the choices, never the speech. One that
cannot be read, after a slip in what the user wrote there, is kept under another name.
"""

import asyncio
import errno
import json
import os
import stat
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from tavin.log import log
from tavin.synthesis.backends import BACKENDS, FIRST_CHOICE, NAMES, server
from tavin.synthesis.backends.kokoro import needs

SLOWEST, FASTEST = 0.5, 3.0
LARGEST_FILE = 1 << 20
UNREADABLE = ".unreadable"  # behind the name of such a file, when another takes its place
OF_UNREADABLE = {"mpris": False}  # it may have said so: nobody is shown what is read by mistake


def default_path():
    base = os.environ.get("XDG_CONFIG_HOME", "")
    if not os.path.isabs(base):  # unset, or not allowed by the standard
        base = os.path.expanduser("~/.config")
    return Path(base, "tavin", "engine.json")


class Settings:
    def __init__(self, path):
        self._path = path
        self._writer = ThreadPoolExecutor(1)  # one: the last choices must be the last written
        self.engine = "kokoro" if needs.present() else FIRST_CHOICE
        self.voices = {}  # back-end's name -> voice id
        self.languages = {}  # language -> the same for that language, the latest choice last
        self.speed = 1.0
        self.mpris = True  # whether the desktop sees a player
        self.server = None  # the back-end that is a server of the user's own
        self.fault = None  # what cannot be used of what the user wrote, for the user
        self.keyed = []  # back-ends that had a key in the keyring when that was last asked
        stored = self._read()
        self._take(OF_UNREADABLE if stored is None else stored)

    @property
    def engine(self):
        return self._engine

    @engine.setter
    def engine(self, name):
        self._engine = self._stored_engine = name

    def untold(self):
        """The fault, once."""
        fault, self.fault = self.fault, None
        return fault

    def save(self):
        """Store the choices as they are now, also for who does not wait until they are.

        Gives why they could not be stored, None when they are.
        """
        chosen = {
            "engine": self._stored_engine,
            "voices": dict(self.voices),
            "languages": {language: dict(voices) for language, voices in self.languages.items()},
            "speed": self.speed,
            "keys": self.keyed,
        }
        return asyncio.shield(asyncio.wrap_future(self._writer.submit(self._write, chosen)))

    def _write(self, chosen):
        place = Path(os.path.realpath(self._path))  # it may be a link into a folder of the user's
        stored = self._read()  # what the user has written there stays
        content = json.dumps({**(OF_UNREADABLE if stored is None else stored), **chosen}, indent=1)
        fresh = place.with_name(place.name + ".new")
        try:
            place.parent.mkdir(mode=0o700, parents=True, exist_ok=True)
            with open(fresh, "w", encoding="utf-8") as file:
                file.write(content)
                file.flush()
                os.fsync(file.fileno())
            if stored is None:
                os.replace(place, place.with_name(place.name + UNREADABLE))
            os.replace(fresh, place)
            sync(place.parent)  # else a power cut may bring the old file back
        except OSError as failure:
            log.info("the settings could not be stored: %s", failure)
            return failure.strerror
        return None

    def _read(self):
        """What the file says; None when that cannot be told, which is a fault."""
        try:
            stored = json.loads(content_of(self._path))
            if isinstance(stored, dict):
                return stored
            reason = "it must be an object"
        except (FileNotFoundError, NotADirectoryError):
            return {}
        except (OSError, ValueError, RecursionError) as failure:
            reason = getattr(failure, "strerror", None) or failure
        self._find_fault(f"engine.json cannot be read: {reason}. The next change keeps it as engine.json{UNREADABLE}.")
        return None

    def _take(self, stored):
        if "server" in stored:
            self._describe(stored["server"])
        known = NAMES if self.server else list(BACKENDS)
        if stored.get("engine") in known:
            self.engine = stored["engine"]
        elif self.fault and stored.get("engine") == server.NAME:
            self._stored_engine = server.NAME  # the choice outlasts a slip in the description
        if valid_speed(stored.get("speed")):
            self.speed = float(stored["speed"])
        self.mpris = stored.get("mpris") is not False
        keyed = stored.get("keys")
        if isinstance(keyed, list):
            self.keyed = [name for name in BACKENDS if name in keyed]
        self.voices = chosen_voices(stored.get("voices"))
        languages = stored.get("languages")
        if isinstance(languages, dict):
            self.languages = {language: chosen_voices(chosen) for language, chosen in languages.items()}

    def _describe(self, described):
        try:
            self.server = server.backend(described)
        except ValueError as reason:
            self._find_fault(f"“server” in engine.json cannot be used: {reason}.")

    def _find_fault(self, text):
        self.fault = text
        log.info("%s", text)


def chosen_voices(stored):
    """Those of known back-ends, of what a file says."""
    if not isinstance(stored, dict):
        return {}
    return {name: voice for name, voice in stored.items() if name in NAMES and isinstance(voice, str)}


def sync(folder):
    place = os.open(folder, os.O_RDONLY | os.O_DIRECTORY)
    try:
        os.fsync(place)
    finally:
        os.close(place)


def content_of(path):
    """A file's bytes. A pipe in its place would keep us until somebody writes."""
    with open(os.open(path, os.O_RDONLY | os.O_NONBLOCK), "rb") as file:
        if not stat.S_ISREG(os.fstat(file.fileno()).st_mode):
            raise OSError("no regular file")
        content = file.read(LARGEST_FILE + 1)
    if len(content) > LARGEST_FILE:
        raise OSError(errno.EFBIG, os.strerror(errno.EFBIG))
    return content


def valid_speed(value):
    number = isinstance(value, (int, float)) and not isinstance(value, bool)
    return number and SLOWEST <= value <= FASTEST
