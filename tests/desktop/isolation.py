"""Runs a program cut off from the machine's own session, so that nothing of it survives.

With namespaces of its own (network, processes, mounts) the program may use the engine's fixed port
whatever else runs, and the kernel ends everything in them together. Where namespaces are not to be
had, a lock on the port keeps such programs apart, and their orphans are adopted and killed.
"""

import contextlib
import ctypes
import fcntl
import os
import shutil
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import time

ENGINE_PORT = 47632
KIND = "TAVIN_TEST_ISOLATION"  # "namespaces" or "lock", as the programs inside see it.
FOLDER_PREFIX = "tavin-session-"

PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None, use_errno=True)


def _unshare_flags():
    flags = ["--net", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc"]
    if os.getuid() != 0:
        flags = ["--map-current-user", "--keep-caps", *flags]
    return flags


def namespaces_allowed():
    try:
        probe = subprocess.run(["unshare", *_unshare_flags(), "true"], stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=10)
    except (OSError, subprocess.TimeoutExpired):
        return False
    return probe.returncode == 0


def bring_loopback_up():
    """A fresh network namespace has its loopback interface down."""
    SIOCGIFFLAGS, SIOCSIFFLAGS, IFF_UP = 0x8913, 0x8914, 1
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as s:
        request = struct.pack("16sh14x", b"lo", 0)
        flags = struct.unpack("16sh14x", fcntl.ioctl(s, SIOCGIFFLAGS, request))[1]
        fcntl.ioctl(s, SIOCSIFFLAGS, struct.pack("16sh14x", b"lo", flags | IFF_UP))


def open_lock_file(path):
    """A file for flock that other users may open too."""
    while True:
        with contextlib.suppress(FileNotFoundError):
            return os.open(path, os.O_RDWR | os.O_CLOEXEC)
        with contextlib.suppress(FileExistsError):
            fd = os.open(path, os.O_RDWR | os.O_CREAT | os.O_EXCL | os.O_CLOEXEC, 0o666)
            os.fchmod(fd, 0o666)
            return fd


def try_lock(fd):
    try:
        fcntl.flock(fd, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError:
        return False
    return True


def _lock_port(seconds):
    fd = open_lock_file("/tmp/tavin-test-port.lock")
    deadline = time.monotonic() + seconds
    while not try_lock(fd):
        if time.monotonic() > deadline:
            sys.exit(f"in-session: port {ENGINE_PORT} stayed in use by another session")
        time.sleep(0.1)
    return fd


def _require_free_port():
    """Another engine would be asked in place of the session's."""
    with socket.socket(socket.AF_INET, socket.SOCK_STREAM) as probe:
        probe.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        try:
            probe.bind(("127.0.0.1", ENGINE_PORT))
        except OSError:
            sys.exit(f"in-session: another program holds port {ENGINE_PORT}, and this machine gives "
                     "tests no network of their own")


def _descendants(root):
    parents = {}
    for entry in filter(str.isdigit, os.listdir("/proc")):
        with contextlib.suppress(OSError), open(f"/proc/{entry}/stat", encoding="latin-1") as f:
            parents.setdefault(int(f.read().rpartition(")")[2].split()[1]), []).append(int(entry))
    found, unseen = [], [root]
    while unseen:
        children = parents.get(unseen.pop(), [])
        found += children
        unseen += children
    return found


def kill_descendants(seconds=5.0):
    """Ends all that this process, as the adopter of its orphans, is responsible for."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        with contextlib.suppress(ChildProcessError):
            while os.waitpid(-1, os.WNOHANG)[0]:
                pass
        pids = _descendants(os.getpid())
        if not pids:
            return
        for pid in pids:
            with contextlib.suppress(ProcessLookupError, PermissionError):
                os.kill(pid, signal.SIGKILL)
        time.sleep(0.01)


def _remove_stale_folders(parent):
    """What sessions left behind that were killed outright: their lock is free."""
    for entry in os.scandir(parent):
        with contextlib.suppress(OSError):
            if not entry.name.startswith(FOLDER_PREFIX) or time.time() - entry.stat().st_mtime < 60:
                continue
            fd = os.open(os.path.join(entry.path, "lock"), os.O_RDWR | os.O_CLOEXEC)
            try:
                if try_lock(fd):
                    shutil.rmtree(entry.path, ignore_errors=True)
            finally:
                os.close(fd)


@contextlib.contextmanager
def session_folder():
    """A temporary folder, removed at the end. Yields its path."""
    _remove_stale_folders(tempfile.gettempdir())
    path = tempfile.mkdtemp(prefix=FOLDER_PREFIX)
    lock = open_lock_file(os.path.join(path, "lock"))
    try_lock(lock)
    try:
        yield path
    finally:
        os.close(lock)
        shutil.rmtree(path, ignore_errors=True)


def _die_with_parent(sig):
    def ask():
        _libc.prctl(PR_SET_PDEATHSIG, sig, 0, 0, 0)
    return ask


def run_isolated(command, environment):
    """Runs `command`, a list, to its end and returns its exit code. Nothing it started survives,
    also when this process is killed."""
    _libc.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    kind, lock, death = "namespaces", None, signal.SIGKILL
    if namespaces_allowed():
        command = ["unshare", *_unshare_flags(), "--", *command]
    else:
        # A lock that a session around this one holds serves for this one too.
        if os.environ.get(KIND) != "lock":
            lock = _lock_port(900)
            _require_free_port()
        kind, death = "lock", signal.SIGTERM
    child = None

    def stop(number, _frame):
        if child:
            child.send_signal(death)
        raise SystemExit(128 + number)

    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, stop)
    try:
        child = subprocess.Popen(command, env={**environment, KIND: kind},
                                 preexec_fn=_die_with_parent(death))
        code = child.wait()
        return code if code >= 0 else 128 - code
    finally:
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            signal.signal(number, signal.SIG_IGN)
        kill_descendants()
        if lock is not None:
            os.close(lock)


def _exit_on(number, _frame):
    raise SystemExit(128 + number)


def enter():
    """Called first by the program that `run_isolated` started: becomes the one who adopts and
    buries what runs here. Returns in a child; the first process ends with the child's code."""
    _libc.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    if os.environ[KIND] == "namespaces":
        bring_loopback_up()
    main = os.fork()
    if main == 0:
        # What it signals to its own group goes no further.
        os.setsid()
        return
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, _exit_on)
    code = 1
    try:
        while True:
            pid, status = os.wait()
            if pid == main:
                code = os.waitstatus_to_exitcode(status)
                break
    except SystemExit as stopped:
        code = stopped.code
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, signal.SIG_IGN)
    kill_descendants()
    os._exit(code if code >= 0 else 128 - code)
