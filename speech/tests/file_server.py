"""A server of files that misbehaves as it is told, one answer after the other."""

import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer


class FileServer:
    """Serves `files` (name -> bytes). `plans` holds, for each coming request for a file, what to do
    with it; without a plan it is answered as it should be."""

    def __init__(self):
        self.files = {}
        self.plans = []
        self.requests = []  # (name, begin of the wanted range)
        self.released = threading.Event()  # lets stalled answers go on
        self._server = ThreadingHTTPServer(("127.0.0.1", 0), self._handler())
        self._server.daemon_threads = True
        threading.Thread(target=self._server.serve_forever, daemon=True).start()

    def url(self, name):
        return f"http://127.0.0.1:{self._server.server_port}/{name}"

    def end(self):
        self.released.set()
        self._server.shutdown()
        self._server.server_close()

    def _handler(server):
        class Handler(BaseHTTPRequestHandler):
            def do_GET(self):
                name = self.path.strip("/")
                wanted = self.headers.get("Range", "")
                begin = int(wanted.removeprefix("bytes=").removesuffix("-") or 0)
                server.requests.append((name, begin))
                plan = server.plans.pop(0) if server.plans else serve
                plan(self, server, server.files[name], begin)

            def log_message(self, *_):
                pass

        return Handler


def head(handler, code, length, content_range=None):
    handler.send_response(code)
    handler.send_header("Content-Length", str(length))
    handler.send_header("Cache-Control", "max-age=365000000, immutable")  # as PyPI has it
    if content_range:
        handler.send_header("Content-Range", content_range)
    handler.end_headers()


def serve(handler, _server, content, begin):
    if begin:
        head(handler, 206, len(content) - begin, f"bytes {begin}-{len(content) - 1}/{len(content)}")
    else:
        head(handler, 200, len(content))
    handler.wfile.write(content[begin:])


def cut_after(count):
    """Promise all, send so many bytes, hang up."""

    def plan(handler, server, content, begin):
        serve(handler, server, Short(content, begin + count), begin)
        handler.connection.close()

    return plan


class Short(bytes):
    """Claims its full length but ends early."""

    def __new__(cls, content, end):
        made = super().__new__(cls, content)
        made.end = end
        return made

    def __getitem__(self, key):
        return bytes(self)[key.start : self.end]


def stall_after(count):
    def plan(handler, server, content, begin):
        serve(handler, server, Short(content, begin + count), begin)
        handler.wfile.flush()
        server.released.wait(30)

    return plan


def claim_length(length):
    def plan(handler, _server, content, begin):
        head(handler, 206 if begin else 200, length)
        handler.wfile.write(content[begin:])

    return plan


def page(length=True):
    """What a network that wants a password answers everything with."""

    def plan(handler, _server, _content, _begin):
        handler.send_response(200)
        handler.send_header("Content-Type", "text/html; charset=utf-8")
        if length:
            handler.send_header("Content-Length", "13")
        handler.end_headers()
        handler.wfile.write(b"<p>Log in</p>")

    return plan


def trickle(handler, server, content, begin):
    """A byte now and then, so that it never stalls."""
    head(handler, 206, len(content) - begin, f"bytes {begin}-{len(content) - 1}/{len(content)}")
    try:
        while not server.released.wait(0.02):
            handler.wfile.write(content[begin : begin + 1])
            begin += 1
    except OSError:
        pass  # it was hung up, as it should be


def without_length(handler, _server, content, _begin):
    handler.send_response(200)
    handler.end_headers()
    handler.wfile.write(content)


def endless(handler, _server, content, _begin):
    """No length, and far more than the file."""
    handler.send_response(200)
    handler.end_headers()
    try:
        for _ in range(1000):
            handler.wfile.write(content)
    except OSError:
        pass  # it was hung up, as it should be


def wrong_bytes(handler, server, content, begin):
    serve(handler, server, bytes(len(content)), begin)


def ignore_range(handler, server, content, _begin):
    serve(handler, server, content, 0)


def other_place(handler, _server, content, begin):
    begin += 10
    head(handler, 206, len(content) - begin, f"bytes {begin}-{len(content) - 1}/{len(content)}")
    handler.wfile.write(content[begin:])


def refuse(code):
    return lambda handler, _server, _content, _begin: head(handler, code, 0)


def redirect_to(name):
    def plan(handler, server, _content, _begin):
        handler.send_response(302)
        handler.send_header("Location", server.url(name))
        handler.end_headers()

    return plan


def garbage(handler, _server, _content, _begin):
    handler.wfile.write(b"\x00\x01 this is no HTTP\r\n\r\n")
    handler.connection.close()


def hang_up(handler, _server, _content, _begin):
    handler.connection.close()
