"""A speech engine that records what it is asked and says nothing."""

import json
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from urllib.parse import urlsplit

from isolation import ENGINE_PORT
from session import SessionError

IDLE = {"state": "idle", "chars": 0, "error": None, "engine": "espeak", "voice": "en",
        "speed": 1.0, "ready": True, "download": None, "setup_error": None,
        "engines": [{"name": "espeak", "label": "eSpeak NG", "available": True}]}


class RecordingEngine:
    """Serves from construction until `close`. `status` is what the next status answers."""

    def __init__(self):
        self.status = dict(IDLE)
        self.voices = [{"id": "en", "name": "English"}, {"id": "de", "name": "German"}]
        self._requests = []  # (method, path, body) in the order of arrival
        self._changed = threading.Condition()
        self._may_answer = threading.Event()
        self._may_answer.set()
        self._server = ThreadingHTTPServer(("127.0.0.1", ENGINE_PORT), self._handler())
        self._server.daemon_threads = True
        self._thread = threading.Thread(target=self._server.serve_forever, args=(0.05,))
        self._thread.start()

    def hang(self):
        """From now on requests are taken and not answered."""
        self._may_answer.clear()

    def answer_again(self):
        self._may_answer.set()

    def close(self):
        self._may_answer.set()
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()

    def requests(self, path, since=0):
        """The bodies sent to `path` from the request numbered `since` on."""
        with self._changed:
            return [body for _, p, body in self._requests[since:] if p == path]

    def mark(self):
        """The number of requests so far, for `since`."""
        with self._changed:
            return len(self._requests)

    def wait_for(self, path, count=1, since=0, seconds=10.0):
        """The bodies sent to `path`, once there are `count`."""
        deadline = time.monotonic() + seconds
        with self._changed:
            while True:
                got = [body for _, p, body in self._requests[since:] if p == path]
                if len(got) >= count:
                    return got
                left = deadline - time.monotonic()
                if left <= 0 or not self._changed.wait(left):
                    if time.monotonic() > deadline:
                        raise SessionError(f"{path}: {len(got)} of {count} requests in {seconds} s")

    def _record(self, method, path, body):
        with self._changed:
            self._requests.append((method, path, body))
            self._changed.notify_all()

    def _handler(self):
        engine = self

        class Handler(BaseHTTPRequestHandler):
            def do_GET(self):
                path = urlsplit(self.path).path
                engine._record("GET", path, None)
                self._answer(engine.status if path == "/status" else engine.voices)

            def do_POST(self):
                raw = self.rfile.read(int(self.headers.get("Content-Length", 0)))
                engine._record("POST", self.path, json.loads(raw))
                self._answer({"ok": True})

            def _answer(self, content):
                engine._may_answer.wait()
                body = json.dumps(content).encode()
                self.send_response(200)
                self.send_header("Content-Type", "application/json")
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        return Handler
