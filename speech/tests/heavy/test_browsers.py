"""A web page that is open in a real browser tries to use the engine.

The page comes from another port of the same machine, under an address and under
a name of its own, which is the nearest that a stranger's page can get. It tries
every kind of request that a page can make and reports what it could read.
"""

import http.server
import json
import subprocess
import threading
from pathlib import Path

import pytest
from cloud_service import KEY, CloudService
from sound import WITH_US, until

PAGE = (Path(__file__).parent / "page.html").read_bytes()
BROWSERS = {
    "chromium": lambda profile, url: [
        *("chromium", "--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run"),
        *("--disable-dev-shm-usage", f"--user-data-dir={profile}", url),
    ],
    "firefox": lambda profile, url: [
        *("firefox-esr", "--headless", "--no-remote", "--profile", str(profile), url),
    ],
}
# What a page that is allowed everything would have seen: the local double answers to everybody.
REACHABLE = {"fetch-status", "fetch-speak", "fetch-key", "xhr-status", "xhr-speak"}


class PageServer:
    """Serves the page, takes its report, and is on other ports the double that a page may use."""

    def __init__(self):
        self.report = None
        self.received = []
        server = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                server.received.append((self.command, self.path))
                page = self.path.startswith("/page")
                self._answer(PAGE if page else b'{"state": "double"}', "text/html" if page else "application/json")

            def do_POST(self):
                body = self.rfile.read(int(self.headers["Content-Length"] or 0))
                server.received.append((self.command, self.path))
                if self.path == "/report":
                    server.report = json.loads(body)
                self._answer(b"{}", "application/json")

            def do_OPTIONS(self):
                self._answer(b"", "text/plain")

            def _answer(self, content, kind):
                self.send_response(200)
                self.send_header("Content-Type", kind)
                self.send_header("Content-Length", str(len(content)))
                self.send_header("Access-Control-Allow-Origin", "*")
                self.send_header("Access-Control-Allow-Headers", "*")
                self.end_headers()
                self.wfile.write(content)

            def log_message(self, *_):
                pass

        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self._server.handle_error = lambda *_: None
        self.port = self._server.server_port
        threading.Thread(target=self._server.serve_forever, args=(0.05,), daemon=True).start()

    def end(self):
        self._server.shutdown()
        self._server.server_close()


@pytest.fixture
def pages():
    server = PageServer()
    yield server
    server.end()


def visit(browser, folder, pages, target):
    """Have the page attack a port; its report of what it could read."""
    pages.report = None
    profile = folder / "profile"
    profile.mkdir(exist_ok=True)
    url = f"http://127.0.0.1:{pages.port}/page?{target}"
    with open(folder / "browser.log", "ab") as log:
        process = subprocess.Popen(
            [*WITH_US, *BROWSERS[browser](profile, url)],
            stdin=subprocess.DEVNULL,
            stdout=log,
            stderr=log,
            env={"HOME": str(folder), "PATH": "/usr/bin:/bin", "XDG_RUNTIME_DIR": str(folder)},
        )
        try:
            return until(lambda: pages.report, 120, "the page's report")
        finally:
            process.terminate()
            process.wait(30)


@pytest.mark.parametrize("browser", BROWSERS)
def test_a_page_can_use_what_allows_it(browser, pages, tmp_path):
    """Otherwise the next test would show nothing."""
    report = visit(browser, tmp_path, pages, pages.port)
    assert REACHABLE <= set(report["read"]), report
    assert ("POST", "/form") in pages.received and ("GET", "/image") in pages.received


@pytest.mark.parametrize("browser", BROWSERS)
def test_a_page_can_do_nothing_with_the_engine(browser, pages, new_engine, tmp_path, recorder):
    service = CloudService()
    engine = new_engine(service.environment).start()
    assert engine.post("/config", engine="openai")[0] == 200
    engine.post("/config", engine="espeak")
    before = engine.status()
    report = visit(browser, tmp_path, pages, 47632)
    assert report["read"] == []
    assert len(report["tried"]) > 12
    assert engine.status() == before
    assert not any(info["available"] for info in before["engines"] if info["name"] in ("openai", "elevenlabs"))
    assert recorder.first_loud is None
    assert KEY not in engine.log()
    # And the engine is still there for Tavin.
    engine.speak("Hello.")
    engine.wait_for("speaking")
    service.end()
