"""Downloads one file whose size and sum are known, over cuts, stalls and restarts.

What has come so far is kept beside the file's final place, which gets nothing
but the whole and verified file. Blocks; for a process of its own.
"""

import hashlib
import http.client
import os
import re
import time
import urllib.error
import urllib.parse
import urllib.request

CHUNK = 1 << 16
STALL_SECONDS = 30.0
PAUSE_SECONDS = 1.0  # before the second try; doubled for each further one
FRUITLESS_TRIES = 5
SLOWEST = 2000  # bytes a second, in the mean of STALL_SECONDS: less would take days
WORTH_ANOTHER_TRY = {408, 425, 429, 500, 502, 503, 504}


class DownloadError(Exception):
    """Text for the user: why the file cannot be had, and what to do."""


class Cut(Exception):
    """One transfer ended too early; the next may get further. The text says why."""


class TooSlow(Cut):
    """What came is not worth further tries."""


def part_of(file):
    return file.path.with_name(file.name + ".part")


def left_of(file):
    """How many bytes of it are still to come."""
    return max(0, file.size - size_of(part_of(file)))


def is_whole(path, file):
    return size_of(path) == file.size and has_sum(path, file)


def fetch(file, on_size, stall=STALL_SECONDS, pause=PAUSE_SECONDS):
    """Get `file` to its path. `on_size(bytes)` tells how much of it is there."""
    part = part_of(file)
    try:
        file.path.parent.mkdir(mode=0o700, parents=True, exist_ok=True)
    except OSError as failure:
        raise unwritable(file, failure) from None
    while True:
        resumed = size_of(part) > 0
        complete(file, part, on_size, stall, pause)
        if has_sum(part, file):
            move(part, file)
            return
        part.unlink(missing_ok=True)
        if not resumed:  # else what was kept may be to blame
            raise DownloadError(
                f"{host(file)} sent other files than expected. Choose {file.label} again, or update Tavin."
            )


def complete(file, part, on_size, stall, pause):
    """Transfer until the part has the file's size."""
    fruitless = 0
    while (before := size_of(part)) != file.size:
        try:
            transfer(file, part, on_size, stall)
        except Cut as cut:
            fruitful = size_of(part) > before and not isinstance(cut, TooSlow)
            fruitless = 0 if fruitful else fruitless + 1
            if fruitless == FRUITLESS_TRIES:
                raise DownloadError(
                    f"No download from {host(file)}: {cut}. Check the network, then choose {file.label} again."
                ) from None
            time.sleep(pause * 2**fruitless)


def transfer(file, part, on_size, stall):
    """One request for what is missing; Cut when it did not all come."""
    have = size_of(part)
    if have > file.size:
        part.unlink()
        have = 0
    try:
        with urllib.request.urlopen(request_for(file, have), timeout=stall) as answer:
            begin = begin_of(answer, have, file)
            receive(answer, file, begin, on_size, stall)
    except urllib.error.HTTPError as refusal:
        refused(file, part, refusal.code)
    except urllib.error.URLError as failure:
        raise Cut(reason(failure.reason)) from None
    except (OSError, http.client.HTTPException) as failure:
        raise Cut(reason(failure)) from None
    if size_of(part) < file.size:
        raise Cut("it ended too early")


def request_for(file, have):
    headers = {"User-Agent": "Tavin", "Accept-Encoding": "identity"}
    if have:
        headers["Range"] = f"bytes={have}-"
    return urllib.request.Request(file.url, headers=headers)


def begin_of(answer, have, file):
    """Where in the file the answer begins; Cut or DownloadError when it is another file's."""
    length = answer.headers.get("Content-Length", "")
    span = re.match(r"bytes (\d+)-\d+/(\d+|\*)$", answer.headers.get("Content-Range", ""))
    begin, total = 0, length
    if answer.status == 206:
        if not span or int(span[1]) > have:
            raise Cut("it went on at another place")
        begin, total = int(span[1]), span[2]
    if total.isdigit() and int(total) > file.size:
        raise DownloadError(
            f"{host(file)} offers another file than expected. Choose {file.label} again, or update Tavin."
        )
    # Such as the page that a hotel's network answers everything with: it must not cost what is there.
    if answer.headers.get_content_type() == "text/html" or (total.isdigit() and int(total) != file.size):
        raise Cut("something else was sent")
    return begin


def receive(answer, file, begin, on_size, stall):
    """Write the answer's bytes, and never more of them than the file has."""
    with Writer(file, begin) as writer:
        on_size(begin)
        first, watched, since = begin, begin, time.monotonic()
        while begin < file.size:
            if time.monotonic() - since > stall:
                if begin - watched < SLOWEST * stall:
                    raise TooSlow("it is too slow")
                watched, since = begin, time.monotonic()
            try:
                data = answer.read1(min(CHUNK, file.size - begin))
            except TimeoutError:
                if begin - first < SLOWEST * stall:  # a few bytes before each silence are no gain
                    raise TooSlow("it is too slow") from None
                raise
            if not data:
                break
            writer.write(data)
            begin += len(data)
            on_size(begin)


class Writer:
    """Appends to the part from a place on; its failures are not the network's."""

    def __init__(self, wanted, begin):
        self._wanted = wanted
        part = part_of(wanted)
        try:
            self._file = open(part, "r+b" if part.exists() else "w+b", buffering=0)
            self._file.truncate(begin)
            self._file.seek(begin)
        except OSError as failure:
            raise unwritable(wanted, failure) from None

    def write(self, data):
        try:
            view = memoryview(data)
            while view:
                view = view[self._file.write(view) :]
        except OSError as failure:
            raise unwritable(self._wanted, failure) from None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._file.close()


def refused(file, part, code):
    if code == 416:  # nothing there from that place on: what we have is wrong
        part.unlink(missing_ok=True)
    if code == 416 or code in WORTH_ANOTHER_TRY:
        raise Cut(f"answer {code}")
    raise DownloadError(
        f"{host(file)} refuses the download (answer {code}). Choose {file.label} again later, or update Tavin."
    )


def move(part, file):
    try:
        with open(part, "rb") as whole:
            os.fsync(whole.fileno())
        os.replace(part, file.path)
    except OSError as failure:
        raise unwritable(file, failure) from None


def size_of(path):
    try:
        return path.stat().st_size
    except OSError:
        return 0


def has_sum(path, file):
    kind, wanted = file.sum
    try:
        with open(path, "rb") as content:
            return hashlib.file_digest(content, kind).hexdigest() == wanted
    except OSError:
        return False


def host(file):
    return urllib.parse.urlsplit(file.url).hostname


def reason(failure):
    if isinstance(failure, TimeoutError):
        return "no answer"
    return getattr(failure, "strerror", None) or str(failure) or type(failure).__name__


def unwritable(file, failure):
    return DownloadError(
        f"{file.path.parent} cannot be written: {failure.strerror}. See to it, then choose {file.label} again."
    )
