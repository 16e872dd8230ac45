"""A program of this user in a sandbox that has nothing but the network (bubblewrap)."""

import json
import socket
import subprocess
import sys
import time

import pytest
import sandbox
from engine_process import PORT
from sound import WITH_US, until
from tavin.http.holders import Holders

ASK = """
import http.client, sys
connection = http.client.HTTPConnection("127.0.0.1", 47632, timeout=10)
try:
    connection.request(sys.argv[1], sys.argv[2], sys.argv[3] or None, {"X-Tavin": "1"})
    print(connection.getresponse().status)
except ConnectionError:
    print("refused")  # the answer may be lost with the rest of the request
"""


@pytest.mark.parametrize(
    "method, path, body",
    [
        ("GET", "/status", ""),
        ("GET", "/voices?engine=espeak", ""),
        ("POST", "/speak", '{"text": "Not for them"}'),
        ("POST", "/config", '{"engine": "openai"}'),
        ("POST", "/key", '{"engine": "openai", "key": "the attacker\'s"}'),
    ],
)
def test_a_sandboxed_program_is_refused_everything(shared, method, path, body):
    before = shared.status()
    assert sandbox.run(ASK, method, path, body).strip() in ("403", "refused")
    assert shared.status() == before
    assert "the attacker" not in json.dumps(before)


def test_the_log_names_it_once(engine):
    for _ in range(2):
        sandbox.run(ASK, "GET", "/status", "")
    until(lambda: "refused" in engine.log(), 5, "the log line")
    assert engine.log().count("refused") == 1
    assert "a sandboxed program, “python3" in engine.log()


def test_another_program_of_the_user_is_served(shared):
    developer = subprocess.run(
        [*WITH_US, sys.executable, "-c", ASK, "GET", "/status", ""],
        capture_output=True,
        check=True,
        timeout=30,
    )
    assert developer.stdout.strip() == b"200"


def test_a_sandboxed_holder_of_the_port_is_named_and_waited_for(new_engine):
    with sandbox.start(sandbox.LISTEN) as holder:
        assert holder.stdout.readline() == "listens\n"
        engine = new_engine().start(wait=False)
        until(lambda: "has it" in engine.log(), 10, "the log line")
        assert "the sandboxed program “python3" in engine.log()
        holder.stdin.close()
    until(engine.answers, 10, "the engine answers")


def test_tavins_connections_are_known_after_the_first(shared):
    """The first costs a search, of some milliseconds; the others less than a tenth of one."""
    holders = Holders()
    with socket.create_connection(("127.0.0.1", PORT)) as client:
        inode = int(socket_of(client))
        assert not holders.is_known(inode)
        assert holders.find(inode)[1]
        times = []
        for _ in range(500):
            begin = time.perf_counter()
            assert holders.is_known(inode)
            times.append(time.perf_counter() - begin)
        assert sorted(times)[250] < 0.0001


def socket_of(client):
    import os

    return os.readlink(f"/proc/self/fd/{client.fileno()}")[len("socket:[") : -1]
