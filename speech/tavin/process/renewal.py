"""Lets a running engine take up its own new files, as after an upgrade.

Helpers that start later run the new files, so the engine must not stay the old one for long. Between two
readings it becomes the new one, in the same process: Tavin keeps its child, and requests wait in the
listening socket, which is handed over. Nothing wakes up for it: each request is an occasion to look.
"""

import asyncio
import os
import sys

from tavin import ENGINE_FOLDER
from tavin.log import log
from tavin.process.child import Child

TRIAL_SECONDS = 20.0
PATIENCE = 2.0
TURNS_TO_OPEN = 10  # of the loop, until an accepted connection shows among the open ones; it takes 4


class Renewal:
    def __init__(self, entrance, is_idle):
        """`entrance` lets connections in (see Entrance); `is_idle()` while nothing is read or set up."""
        self._entrance = entrance
        self._is_idle = is_idle
        self._files = loaded_files()
        self._requests = 0  # under way; one may wait long, as a key does for the keyring's password
        self._task = None

    def watching(self, handle):
        """`handle`, which answers a request, and a look at the files after it."""

        async def handle_and_look(request):
            self._requests += 1
            try:
                return await handle(request)
            finally:
                self._requests -= 1
                asyncio.get_running_loop().call_later(0, self._look)  # when the answer is out

        return handle_and_look

    def _look(self):
        if not self._task and not self._requests and self._is_idle() and self._changed():
            self._task = asyncio.get_running_loop().create_task(self._renew())

    def _changed(self):
        """Whether a file that was loaded is another one now. Those that are loaded later join in."""
        now = loaded_files()
        if any(now.get(path) != state for path, state in self._files.items()):
            return True
        self._files = now
        return False

    async def _renew(self):
        try:
            files = loaded_files()
            if await new_files_work():
                await self._entrance.close()
                if self._is_idle() and not self._requests:
                    await end_helpers()
                    become_new(self._entrance.listener)
                await self._entrance.open()
            else:
                log.info("this engine's files were changed and do not work: it stays as it is")
                self._files = files
        except OSError as failure:
            log.info("this engine's new files cannot be taken up: %s", failure.strerror)
            await self._entrance.open()
        finally:
            self._task = None


class Entrance:
    """Where connections come in. While it is closed they wait in the listening socket's queue."""

    def __init__(self, listener, protocol, connections):
        """`connections()` are those that are open now."""
        self.listener = listener
        self._protocol = protocol
        self._connections = connections
        self._server = None

    async def open(self):
        if not self._server:
            loop = asyncio.get_running_loop()
            self._server = await loop.create_server(self._protocol, sock=self.listener.dup(), backlog=128)

    async def close(self):
        """Let nobody in, and wait a little until those inside have their answers."""
        loop = asyncio.get_running_loop()
        deadline = loop.time() + PATIENCE
        for listener in self._server.sockets:
            loop.remove_reader(listener.fileno())
        for _ in range(TURNS_TO_OPEN):
            await asyncio.sleep(0)
        self._server.close()  # not before: it drops, without a word, who was accepted a moment ago
        self._server = None
        while self._connections() and loop.time() < deadline:
            await asyncio.sleep(0.01)


def loaded_files():
    """The files that this process runs, and which of their states; None for one that is gone."""
    own = os.path.join(ENGINE_FOLDER, "tavin", "")
    paths = [getattr(module, "__file__", None) for module in list(sys.modules.values())]
    return {path: state_of(path) for path in paths if path and path.startswith(own)}


def state_of(path):
    try:
        found = os.stat(path)
    except OSError:
        return None
    return found.st_ino, found.st_mtime_ns, found.st_size


async def new_files_work():
    """Whether an engine could start from them, as far as importing tells."""
    trial = await asyncio.create_subprocess_exec(
        sys.executable,
        "-c",
        "import tavin.server",
        cwd=ENGINE_FOLDER,
        stdin=asyncio.subprocess.DEVNULL,
        stdout=asyncio.subprocess.DEVNULL,
        stderr=asyncio.subprocess.DEVNULL,
    )
    try:
        async with asyncio.timeout(TRIAL_SECONDS):
            return await trial.wait() == 0
    except TimeoutError:
        trial.kill()
        return False


async def end_helpers():
    for child in Child.living:
        child.kill()
    try:
        async with asyncio.timeout(PATIENCE):
            while Child.living:
                await asyncio.sleep(0.01)
    except TimeoutError:
        pass


def become_new(listener):
    log.info("this engine's files were changed: taking up the new ones")
    os.chdir(ENGINE_FOLDER)
    listener.set_inheritable(True)
    os.execv(sys.executable, [sys.executable, "-m", "tavin.server", str(listener.fileno())])
