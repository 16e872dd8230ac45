"""A helper process of the engine, seen from the engine: frames out, frames in.

Everything here runs on the engine's event loop. A child that dies is told to
its owner once, by `on_death`; what was sent to it is lost.
"""

import asyncio
import os
import signal
import sys

from tavin import ENGINE_FOLDER
from tavin.log import log
from tavin.process import frames

END_SECONDS = 0.5


class Child:
    living = set()  # of this engine, whoever owns them

    def __init__(self, process, on_frame, on_death):
        self._process = process
        self._on_frame = on_frame
        self._on_death = on_death
        self.pid = process.pid
        self.alive = True
        self.living.add(self)
        self._reader = asyncio.get_running_loop().create_task(self._read())

    @classmethod
    async def start(cls, module, *arguments, on_frame, on_death, quiet=False, environment=None, python=None):
        """Start a module of this package as a process; OSError when that fails. `environment` is added to ours,
        `python` may be another interpreter."""
        process = await asyncio.create_subprocess_exec(
            python or sys.executable,
            "-m",
            module,
            *arguments,
            str(os.getpid()),
            cwd=ENGINE_FOLDER,
            env={**os.environ, **(environment or {})},
            stdin=asyncio.subprocess.PIPE,
            stdout=asyncio.subprocess.PIPE,
            stderr=asyncio.subprocess.DEVNULL if quiet else None,
        )
        return cls(process, on_frame, on_death)

    def send(self, kind, number=0, payload=b""):
        """Queue one frame; silently dropped when the child is gone."""
        if self.alive:
            self._process.stdin.write(frames.pack(kind, number, payload))

    def kill(self):
        if self._process.returncode is None:
            try:
                self._process.kill()
            except ProcessLookupError:
                pass

    async def _read(self):
        try:
            while True:
                self._on_frame(*await frames.receive(self._process.stdout))
        except (asyncio.IncompleteReadError, ConnectionError):
            pass
        except Exception:
            log.exception("the frames of a helper could not be taken")
            self.kill()
        try:
            async with asyncio.timeout(END_SECONDS):
                code = await self._process.wait()
        except TimeoutError:
            self.kill()  # without its output it is of no more use
            code = await self._process.wait()
        self._process.stdin.close()
        self.alive = False
        self.living.discard(self)
        self._on_death(describe_exit(code))


def describe_exit(code):
    if code >= 0:
        return f"exit code {code}"
    try:
        return signal.Signals(-code).name
    except ValueError:
        return f"signal {-code}"
