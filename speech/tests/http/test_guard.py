"""Who may use the port: Tavin, and no web page."""

import socket
import threading
import time

import pytest
from engine_process import PORT, POSTS, raw

GOOD = {"X-Tavin": "1"}


@pytest.mark.parametrize("path", [*POSTS, "/nowhere"])
@pytest.mark.parametrize("headers", [{}, {"X-Tavin": ""}, {"X-Tavin": "0"}, {"X-Tavin": "11"}])
def test_a_post_needs_the_header(shared, path, headers):
    code, answer = shared.request("POST", path, '{"text": "no"}', headers)
    assert code == 403
    assert answer["error"]
    assert shared.status()["state"] == "idle"


@pytest.mark.parametrize("host", ["evil.example", f"evil.example:{PORT}", "127.0.0.1", "127.0.0.1:80", "", "[::1]:47632"])
def test_a_foreign_host_is_refused(shared, host):
    assert shared.request("GET", "/status", headers={"Host": host})[0] == 403
    assert shared.request("POST", "/stop", "{}", {"Host": host, **GOOD})[0] == 403


@pytest.mark.parametrize("host", [f"127.0.0.1:{PORT}", f"localhost:{PORT}", f"LocalHost:{PORT}"])
def test_the_own_host_is_served(shared, host):
    assert shared.request("GET", "/status", headers={"Host": host})[0] == 200


@pytest.mark.parametrize(
    "name, value",
    [
        ("Origin", "https://evil.example"),
        ("Origin", f"http://127.0.0.1:{PORT}"),
        ("origin", "null"),
        ("Sec-Fetch-Site", "cross-site"),
        ("sec-fetch-mode", "no-cors"),
    ],
)
def test_what_a_browser_sends_is_refused(shared, name, value):
    for method, path in (("GET", "/status"), ("GET", "/voices?engine=espeak"), ("POST", "/stop"), ("OPTIONS", "/speak")):
        assert shared.request(method, path, "{}", {**GOOD, name: value})[0] == 403


def test_no_answer_invites_web_pages(shared):
    answer = raw(f"GET /status HTTP/1.1\r\nHost: 127.0.0.1:{PORT}\r\nConnection: close\r\n\r\n".encode())
    assert answer.startswith(b"HTTP/1.1 200")
    assert b"access-control" not in answer.lower()


@pytest.mark.parametrize(
    "request_bytes",
    [
        b"GET /status HTTP/1.1\r\n\r\n",
        b"GET /status HTTP/1.1\r\nHost: evil\r\nHost: 127.0.0.1:47632\r\n\r\n",
        b"GET /status HTTP/1.0\r\n\r\n",
        b"\x00\x01\x02\r\n\r\n",
        b"GET " + b"/a" * 10000 + b" HTTP/1.1\r\n\r\n",
    ],
)
def test_broken_requests_are_refused(shared, request_bytes):
    answer = raw(request_bytes)
    assert answer[:12] in (b"HTTP/1.1 403", b"HTTP/1.0 403", b"HTTP/1.1 400", b"HTTP/1.0 400")
    assert b"application/json" in answer
    assert shared.status()["state"] == "idle"


def expecting(what, *headers, path="/stop"):
    lines = [f"POST {path} HTTP/1.1", f"Expect: {what}", "X-Tavin: 1", "Content-Length: 2", *headers]
    return raw("\r\n".join([*lines, "", ""]).encode())


@pytest.mark.parametrize("path", ["/stop", "/nowhere", "/status"])
@pytest.mark.parametrize("what", ["100-continue", "foo"])
@pytest.mark.parametrize("header", ["Host: evil.example", f"Host: 127.0.0.1:{PORT}\r\nOrigin: null"])
def test_nobody_else_learns_what_may_be_expected(shared, path, what, header):
    assert expecting(what, header, path=path)[:12] == b"HTTP/1.1 403"


def test_who_may_send_may_ask_before(shared):
    host = f"Host: 127.0.0.1:{PORT}"
    assert expecting("100-continue", host)[:12] == b"HTTP/1.1 100"
    answer = expecting("foo", host)
    assert answer[:12] == b"HTTP/1.1 417"
    assert b"application/json" in answer


def test_only_the_loopback_interface_is_served(shared):
    with open(f"/proc/{shared.process.pid}/net/tcp", encoding="ascii") as table:
        listening = [line.split()[1] for line in table if line.split()[3] == "0A"]
    # Other services may share the network where the tests get none of their own.
    assert [a for a in listening if a.endswith(f":{PORT:04X}")] == [f"0100007F:{PORT:04X}"]


# What a client sends at once, and then now and then.
HALF = [
    (b"", b""),
    (b"POST /speak HTTP/1.1\r\nHost: 127.0.0.1:47632\r\n", b""),
    (b"POST /speak HTTP/1.1\r\nHost: 127.0.0.1:47632\r\nX-Slow: ", b"a"),
    (b"POST /speak HTTP/1.1\r\nHost: 127.0.0.1:47632\r\nX-Tavin: 1\r\nContent-Length: 99\r\n\r\n{", b""),
    (b"POST /speak HTTP/1.1\r\nHost: 127.0.0.1:47632\r\nX-Tavin: 1\r\nContent-Length: 9999\r\n\r\n{", b" "),
]


def test_idle_half_open_and_slow_connections_keep_nobody_out(shared):
    held = []
    stop = threading.Event()

    def trickle():
        while not stop.wait(0.05):
            for connection, drop in held:
                connection.sendall(drop)

    slow = threading.Thread(target=trickle)
    try:
        for begin, drop in HALF * 40:
            connection = socket.create_connection(("127.0.0.1", PORT), 5)
            connection.sendall(begin)
            held.append((connection, drop))
        slow.start()
        assert min(status_times(shared)) < 0.1
    finally:
        stop.set()
        slow.join(10)
        for connection, _ in held:
            connection.close()


def status_times(engine):
    for _ in range(20):
        begin = time.monotonic()
        assert engine.status()["state"] == "idle"
        yield time.monotonic() - begin
