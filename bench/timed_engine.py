"""A speech engine that is always idle, answers after a millisecond and stamps what arrives."""

import json
import time
from dataclasses import dataclass
from http.server import BaseHTTPRequestHandler
from urllib.parse import urlsplit

from engine import RecordingEngine

ANSWER_SECONDS = 0.001


@dataclass
class Arrival:
    """A request: when its head and its whole body were there, in time.monotonic's seconds, and
    how long the engine took to answer, filled in once it has."""
    head: float
    complete: float
    body: bytes
    took: float = 0.0

    def text(self):
        return json.loads(self.body)["text"]


class TimedEngine(RecordingEngine):
    """`requests` and `wait_for` give Arrivals in place of decoded bodies."""

    def _handler(self):
        engine = self

        class Handler(BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"  # With it, who asks whether to send a body is told yes.

            def setup(self):
                self.begun = time.monotonic()
                super().setup()

            def do_GET(self):
                head = time.monotonic()
                path = urlsplit(self.path).path
                arrival = Arrival(head, head, b"")
                engine._record("GET", path, arrival)
                self._answer(engine.status if path == "/status" else engine.voices, arrival)

            def do_POST(self):
                head = time.monotonic()
                body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
                arrival = Arrival(head, time.monotonic(), body)
                engine._record("POST", self.path, arrival)
                self._answer({"ok": True}, arrival)

            def _answer(self, content, arrival):
                body = json.dumps(content).encode()
                head = f"HTTP/1.1 200 OK\r\nContent-Type: application/json\r\n" \
                       f"Connection: close\r\nContent-Length: {len(body)}\r\n\r\n"
                time.sleep(max(0.0, self.begun + ANSWER_SECONDS - time.monotonic()))
                self.wfile.write(head.encode() + body)
                arrival.took = time.monotonic() - self.begun
                self.close_connection = True

            def log_message(self, *_):
                pass

        return Handler
