"""The engine's entry: `python3 -m tavin.server`.

Serves one user on the loopback interface at a fixed port, until SIGTERM or SIGINT.
"""

import asyncio
import contextlib
import ctypes
import errno
import os
import resource
import signal
import socket

from aiohttp import web

from tavin.engine import Engine
from tavin.http.guard import PORT, Connection, guarded
from tavin.http.peer import Doorkeeper
from tavin.http.routes import application
from tavin.log import log, loop_failure, set_up
from tavin.settings import Settings, default_path

RETRY_SECONDS = 2.0
M_MMAP_THRESHOLD = -3  # of malloc.h
LONG_TEXT = 1 << 20


async def listen():
    """The listening socket. Another user's engine may hold the port: wait for it to go."""
    told = False
    while True:
        listener = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
        listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        try:
            listener.bind(("127.0.0.1", PORT))
            listener.listen(128)
            return listener
        except OSError as failure:
            listener.close()
            if not told:
                log.info("port %d cannot be had, trying again: %s", PORT, reason(failure))
                told = True
        await asyncio.sleep(RETRY_SECONDS)


def reason(failure):
    if failure.errno == errno.EADDRINUSE:
        return "another program has it, perhaps another user's Tavin"
    return failure.strerror


def leave_on_signals(engine):
    """End at once, in every state: helpers first, so that the sound stops."""

    def leave():
        engine.end()
        # Requests, helpers and buffers need no farewell, and a second signal
        # finds no half-closed loop.
        os._exit(0)

    loop = asyncio.get_running_loop()
    for number in (signal.SIGTERM, signal.SIGINT):
        loop.add_signal_handler(number, leave)


def allow_many_connections():
    """Slow clients may not use up what a status request needs."""
    _, most = resource.getrlimit(resource.RLIMIT_NOFILE)
    wanted = 4096 if most == resource.RLIM_INFINITY else min(4096, most)
    resource.setrlimit(resource.RLIMIT_NOFILE, (wanted, most))


def keep_memory_private():
    """A crash must not write keys and texts to a file."""
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def give_memory_back():
    """Left to itself, glibc's allocator keeps the memory of one long text for good."""
    with contextlib.suppress(AttributeError):  # another C library
        ctypes.CDLL(None).mallopt(M_MMAP_THRESHOLD, LONG_TEXT)


async def serve():
    asyncio.get_running_loop().set_exception_handler(loop_failure)
    engine = Engine(Settings(default_path()))
    leave_on_signals(engine)
    runner = web.AppRunner(application(engine))
    await runner.setup()
    runner.server.request_handler = guarded(runner.server.request_handler)
    listener = await listen()
    # Requests wait in the listener's queue until the voices are known.
    await engine.know_voices()
    loop = asyncio.get_running_loop()

    def connection():
        # A compressed body is no JSON, and nobody can send a small one that becomes huge.
        return Connection(runner.server, loop=loop, access_log=None, auto_decompress=False)

    serving = await loop.create_server(lambda: Doorkeeper(connection), sock=listener, backlog=128)
    log.info("serving on port %d", PORT)
    await engine.warm_up()
    await serving.serve_forever()


def main():
    set_up()
    allow_many_connections()
    keep_memory_private()
    give_memory_back()
    asyncio.run(serve())


if __name__ == "__main__":
    main()
