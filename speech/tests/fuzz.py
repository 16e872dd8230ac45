"""Requests with something wrong in them, the same ones for the same seed."""

import collections
import concurrent.futures
import itertools
import json
import random
import socket
import threading

from engine_process import PORT, POSTS

PATHS = [*POSTS, "/status", "/voices?engine=espeak"]
METHODS = ["GET", "POST", "PUT", "DELETE", "OPTIONS", "HEAD", "PATCH", "TRACE", "CONNECT", "get", "", "P\0ST"]
NAMES = ["Origin", "Sec-Fetch-Site", "sec-fetch-mode", "Host", "X-Tavin", "Content-Length", "Content-Encoding"]
NAMES += ["Transfer-Encoding", "Content-Type", "Expect", "Upgrade", "Connection", "Cookie", "", "x" * 9000]
VALUES = ["", "1", "0", "-1", "99999999999999999999", "chunked", "gzip", "deflate", "br", "100-continue", "close"]
VALUES += ["null", "http://evil.example", "websocket", "upgrade", "\x00", "\xff\xfe", "a" * 9000, "1, 1", " 1 "]
JUNK = [None, True, -1, 0.0, 1e308, 10**30, "", "x", "\ud800", "\x00", [], [[]], {}, {"a": {}}, "a" * 5000]
FIELDS = ["text", "engine", "voice", "speed", "key", "by", "nothing", ""]
GUARDED = {"origin", "host", "x-tavin"}


def cases(seed, count):
    """Pairs of bytes to send and whether an answer of 200 is allowed."""
    return itertools.islice(endless_cases(seed), count)


def endless_cases(seed):
    chance = random.Random(seed)
    while True:
        yield make(chance)


def make(chance):
    method = chance.choice(METHODS) if chance.random() < 0.15 else "POST"
    path = chance.choice(PATHS) if chance.random() < 0.9 else junk_path(chance)
    body = make_body(chance)
    headers = [("Host", f"127.0.0.1:{PORT}"), ("X-Tavin", "1"), ("Content-Length", str(len(body)))]
    allowed = True
    if chance.random() < 0.5:
        name, value = chance.choice(NAMES), chance.choice(VALUES)
        place = chance.randrange(len(headers) + 1)
        if chance.random() < 0.5 and place < len(headers):
            name = headers[place][0]
            headers[place] = (name, value)
        else:
            headers.insert(place, (name, value))
        guarded = name.lower() in GUARDED or name.lower().startswith("sec-fetch-")
        allowed = not guarded or name.lower() == "x-tavin"
    if chance.random() < 0.1:
        headers = [header for header in headers if header[0] != "X-Tavin"]
        allowed = method in ("GET", "HEAD")
    head = "".join(f"{name}: {value}\r\n" for name, value in headers)
    data = f"{method} {path} HTTP/1.1\r\n{head}\r\n".encode("utf-8", "surrogatepass") + body
    if chance.random() < 0.1:
        data = scramble(chance, data)
        allowed = True  # who knows
    return data, allowed


def junk_path(chance):
    return chance.choice(["/", "*", "//speak", "/speak/../key", "/%00", "/%ff", "/voices?engine=" + "%41" * 3000]) + chance.choice(
        ["", "?", "#", "%", "\t", "\x7f", "/" * 500]
    )


def make_body(chance):
    kind = chance.random()
    if kind < 0.5:
        content = {chance.choice(FIELDS): chance.choice(JUNK) for _ in range(chance.randrange(4))}
        return json.dumps(content).encode()
    if kind < 0.7:
        return scramble(chance, b'{"text": "Some words.", "speed": 1.5, "engine": "espeak"}')
    if kind < 0.85:
        return bytes(chance.randrange(256) for _ in range(chance.randrange(300)))
    return chance.choice([b"", b"[" * 50000, b'{"a":' * 50000, b"\xef\xbb\xbf{}", b"{}" * 2, b"NaN", b'{"a":1e999999}', b"1" * 50000])


def scramble(chance, data):
    data = bytearray(data)
    for _ in range(chance.randrange(1, 5)):
        place = chance.randrange(len(data))
        how = chance.randrange(3)
        if how == 0:
            data[place] = chance.randrange(256)
        elif how == 1:
            del data[place : place + chance.randrange(1, 20)]
        else:
            data[place:place] = bytes(chance.randrange(256) for _ in range(chance.randrange(1, 20)))
        if not data:
            break
    return bytes(data)


def status_of(data, seconds=0.3):
    """Send and hang up soon; the status code that was answered, None without one."""
    with socket.create_connection(("127.0.0.1", PORT), 5) as connection:
        try:
            connection.sendall(data)
            connection.settimeout(seconds)
            answer = connection.recv(65536)
        except (TimeoutError, ConnectionError):
            return None
    return int(answer[9:12]) if answer[:7] == b"HTTP/1." else None


def send_all(requests, clients):
    """How often each status came. Some clients at once: many a request is never answered, and is waited for."""
    requests, turn = iter(requests), threading.Lock()

    def client():
        seen = collections.Counter()
        while True:
            with turn:
                data, allowed = next(requests, (None, None))
            if data is None:
                return seen
            status = status_of(data)
            seen[status] += 1
            assert status is None or status < 500 or status in (501, 505), data[:2000]
            assert allowed or status != 200, data[:2000]

    with concurrent.futures.ThreadPoolExecutor(clients) as pool:
        return sum((done.result() for done in [pool.submit(client) for _ in range(clients)]), collections.Counter())


def assert_survives(engine, requests, clients=24):
    """How many there were; `requests` are cases()."""
    process = engine.process.pid
    seen = send_all(requests, clients)
    assert engine.running() and engine.process.pid == process
    assert engine.status()["engine"] in ("espeak", "kokoro", "piper", "elevenlabs", "openai")
    # Something of all kinds must have come through to be refused by the engine itself.
    assert {200, 400, 403, 404, 405} <= set(seen), seen
    assert "Traceback" not in engine.log() and "a request failed" not in engine.log()
    return sum(seen.values())
