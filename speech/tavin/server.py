"""The engine's entry: `python3 -m tavin.server`.

Serves one user on the loopback interface at a fixed port, until SIGTERM or SIGINT.
"""

import asyncio
import os
import resource
import signal
import socket
import sys

from aiohttp import web

from tavin.engine import Engine
from tavin.http.guard import PORT, Connection, guarded
from tavin.http.peer import Doorkeeper, Peers
from tavin.http.port import listen
from tavin.http.routes import application
from tavin.log import log, loop_failure, set_up
from tavin.process import memory
from tavin.process.renewal import Entrance, Renewal
from tavin.settings import Settings, default_path


async def listening_socket():
    if len(sys.argv) > 1:
        return socket.socket(fileno=int(sys.argv[1]))  # of the engine that this one was until now
    return await listen()


def leave_on_signals(ends):
    """End at once, in every state: first what `ends` holds by then, so that the sound stops."""

    def leave():
        for end in ends:
            end()
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


async def serve():
    asyncio.get_running_loop().set_exception_handler(loop_failure)
    ends = []
    leave_on_signals(ends)
    listener = await listening_socket()
    # Not before: another engine that had the port may have stored newer choices.
    engine = Engine(Settings(default_path()))
    ends.append(engine.end)
    runner = web.AppRunner(application(engine))
    await runner.setup()
    peers = Peers()
    entrance = Entrance(
        listener,
        lambda: Doorkeeper(connection, peers),
        lambda: runner.server.connections or peers.waiting,
    )
    renewal = Renewal(entrance, engine.is_idle)
    runner.server.request_handler = renewal.watching(guarded(runner.server.request_handler))
    # Requests wait in the listener's queue until the voices are known.
    await engine.know_voices()
    loop = asyncio.get_running_loop()

    def connection():
        # A compressed body is no JSON, and nobody can send a small one that becomes huge.
        return Connection(runner.server, loop=loop, access_log=None, auto_decompress=False)

    await entrance.open()
    log.info("serving on port %d", PORT)
    await engine.warm_up()
    await asyncio.Event().wait()  # for a signal


def main():
    set_up()
    allow_many_connections()
    memory.keep_private()
    memory.give_back()
    asyncio.run(serve())


if __name__ == "__main__":
    main()
