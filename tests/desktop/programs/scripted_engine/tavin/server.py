"""An engine that answers with the status in its file, says nothing, and notes how it is ended.

The file is STATUS in the home directory, read for each answer; where it holds "hang", none comes.
"""

import json
import os
import signal
import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

PORT = 47632
STATUS = os.path.expanduser("~/engine-status.json")
END = os.path.expanduser("~/engine-end")


class Handler(BaseHTTPRequestHandler):
    def do_GET(self):
        with open(STATUS, encoding="utf-8") as f:
            status = json.load(f)
        if status == "hang":
            threading.Event().wait()
        self._answer(status if self.path == "/status" else [])

    def do_POST(self):
        self.rfile.read(int(self.headers.get("Content-Length", 0)))
        self._answer({"ok": True})

    def _answer(self, content):
        body = json.dumps(content).encode()
        self.send_response(200)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)


def ended(number, _frame):
    with open(END, "w", encoding="utf-8") as f:
        f.write(signal.Signals(number).name)
    os._exit(0)


signal.signal(signal.SIGTERM, ended)
server = ThreadingHTTPServer(("127.0.0.1", PORT), Handler)
server.daemon_threads = True
server.serve_forever()
