"""Connections of other users' processes, and of processes that are gone."""

import errno
import os
import signal
import socket
import struct
import subprocess
import sys

import pytest
from engine_process import PORT, raw
from sound import WITH_US, until
from tavin.http import peer, sockets

SPEAK = (
    f"POST /speak HTTP/1.1\r\nHost: 127.0.0.1:{PORT}\r\nX-Tavin: 1\r\nContent-Length: 24\r\n\r\n".encode()
    + b'{"text": "Not for them"}'
)
STATUS = f"GET /status HTTP/1.1\r\nHost: 127.0.0.1:{PORT}\r\n\r\n".encode()
WAYS = [sockets.ask_kernel, sockets.look_up]


@pytest.fixture
def pair():
    """The client's and the server's end of a connection."""
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        listener.listen()
        with socket.create_connection(listener.getsockname()) as client:
            server, _ = listener.accept()
            with server:
                yield client, server


def owner(way, server):
    return way(server.getpeername(), server.getsockname())


@pytest.mark.parametrize("way", WAYS)
def test_the_owner_of_a_connection(pair, way):
    client, server = pair
    assert owner(way, server) == (1, os.getuid(), os.fstat(client.fileno()).st_ino)


@pytest.mark.parametrize("way", WAYS)
def test_a_socket_that_was_closed_has_no_inode(pair, way):
    client, server = pair
    client.close()
    assert owner(way, server)[2] == 0


@pytest.mark.parametrize("way", WAYS)
def test_a_socket_that_is_gone_is_not_found(pair, way):
    client, server = pair
    abort(client)
    until(lambda: state_of(server) == peer.CLOSED, 5, "the reset")
    local = ("127.0.0.1", 1)
    with pytest.raises(OSError) as failure:
        way(local, server.getsockname())
    assert failure.value.errno == errno.ENOENT
    assert not peer.own_inode(server)


def test_own_until_closed(pair):
    client, server = pair
    assert peer.own_inode(server)
    client.shutdown(socket.SHUT_WR)
    assert peer.own_inode(server)
    client.close()
    assert not peer.own_inode(server)


def test_another_users_is_not_own(pair, monkeypatch):
    user = os.getuid()
    monkeypatch.setattr(os, "getuid", lambda: user + 1)
    assert not peer.own_inode(pair[1])


def test_without_the_kernels_interface_the_table_is_read(pair, monkeypatch):
    def missing(*_):
        raise OSError(errno.EPROTONOSUPPORT, "no such interface")

    monkeypatch.setattr(sockets, "ask_kernel", missing)
    assert peer.own_inode(pair[1])
    pair[0].close()
    assert not peer.own_inode(pair[1])


FOREIGN = "import os; os.getuid = lambda: 4321; from tavin import server; server.main()"


def test_an_engine_of_another_user_serves_nobody(new_engine):
    engine = new_engine(command=("-c", FOREIGN)).start()
    for request in (STATUS, SPEAK):
        assert talk(request)[:12] in (b"HTTP/1.1 403", b"")
    until(lambda: "refused" in engine.log(), 5, "the log line")
    assert engine.log().count("refused") == 1
    assert "loading" not in engine.log()


@pytest.mark.parametrize("gently", [True, False])
def test_a_request_whose_sender_is_gone_is_not_carried_out(engine, sound_server, gently):
    """The engine sleeps until the sender has left, as it may when the machine is busy."""
    engine.status()
    engine.process.send_signal(signal.SIGSTOP)
    client = socket.create_connection(("127.0.0.1", PORT), 5)
    client.sendall(SPEAK)
    if gently:
        client.close()
    else:
        abort(client)
    engine.process.send_signal(signal.SIGCONT)
    until(lambda: "refused" in engine.log(), 5, "the log line")
    status = engine.status()
    assert (status["state"], status["chars"]) == ("idle", 0)


STRANGER = """
import os, socket, sys
for how in ("wait", "leave") * 50:
    with socket.create_connection(("127.0.0.1", 47632), 5) as client:
        try:
            client.sendall(sys.argv[1].encode())
            if how == "wait":
                answer = client.recv(65536)
                if answer and not answer.startswith(b"HTTP/1.1 403"):
                    sys.exit(f"{os.getuid()} was served: {answer}")
        except ConnectionError:
            pass
"""


# Root becomes somebody else; for anybody else the engine is somebody else's.
AS_STRANGER = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"] if os.getuid() == 0 else []
WATCHED = (
    "from tavin import engine, log; engine.Engine.speak = lambda *_: log.log.info('carried out');"
    + ("from tavin import server; server.main()" if AS_STRANGER else FOREIGN)
)


def test_no_request_of_a_stranger_is_carried_out(new_engine):
    engine = new_engine(command=("-c", WATCHED)).start()
    for request in (STATUS, SPEAK):
        stranger = subprocess.run(
            [*WITH_US, *AS_STRANGER, sys.executable, "-c", STRANGER, request.decode()],
            capture_output=True,
            check=False,
            timeout=60,
        )
        assert stranger.returncode == 0, stranger.stderr
    until(lambda: "refused" in engine.log(), 5, "the log line")
    assert "carried out" not in engine.log()
    answer = talk(SPEAK)  # as ourselves
    assert answer.startswith(b"HTTP/1.1 200" if AS_STRANGER else b"HTTP/1.1 403")
    assert ("carried out" in engine.log()) == bool(AS_STRANGER)


def abort(client):
    client.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    client.close()


def state_of(server):
    return server.getsockopt(socket.IPPROTO_TCP, socket.TCP_INFO, 1)[0]


def talk(request):
    try:
        return raw(request)
    except ConnectionError:
        return b""
