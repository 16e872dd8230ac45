"""Large uploads: what is no text is refused early, and an aborted one leaves no memory behind."""

import http.client
import socket
import time

import pytest
from engine_process import PORT
from measures import memory_of
from sound import until

SIZE = 60_000_000
HEAD = "POST /speak HTTP/1.1\r\nHost: 127.0.0.1:%d\r\nX-Tavin: 1\r\nContent-Length: %d\r\n\r\n"
LISTS = b'{"more": [' + b"{}," * (SIZE // 3)


@pytest.mark.parametrize("path", ["/speak", "/config", "/stop"])
def test_a_large_body_that_is_no_text_is_refused_before_it_has_come(engine, path):
    begin = time.monotonic()
    with socket.create_connection(("127.0.0.1", PORT), 10) as client:
        client.sendall(HEAD.replace("/speak", path).encode() % (PORT, SIZE) + LISTS[:2_000_000])
        answer = client.recv(4096)
    assert answer.startswith(b"HTTP/1.1 400")
    assert engine.status()["state"] == "idle"
    assert time.monotonic() - begin < 3


def test_a_large_body_that_begins_as_a_text_and_is_none_is_refused_soon(engine):
    body = b'{"text": "Hello", "more": [' + b"[0]," * (SIZE // 4) + b"0]}"
    connection = http.client.HTTPConnection("127.0.0.1", PORT, timeout=10)
    connection.request("POST", "/speak", body, {"X-Tavin": "1"})
    sent = time.monotonic()
    assert connection.getresponse().status == 400
    connection.close()
    assert time.monotonic() - sent < 1
    assert engine.status()["state"] == "idle"


def test_aborted_uploads_leave_no_memory_behind(engine):
    engine.status()
    before = memory_of(engine.process.pid)
    for share in (0.2, 0.5, 0.9, 0.99) * 2:
        with socket.create_connection(("127.0.0.1", PORT), 10) as client:
            body = b'{"text": "' + b"word " * (int(SIZE * share) // 5)
            client.sendall(HEAD.encode() % (PORT, SIZE) + body)
        engine.status()
    print("left", memory_of(engine.process.pid) - before)
    until(lambda: memory_of(engine.process.pid) - before < 8_000_000, 5, "the memory is given back")
