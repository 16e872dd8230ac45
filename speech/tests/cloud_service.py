"""A local server that speaks the interfaces which ElevenLabs and OpenAI document, and can misbehave."""

import array
import http.server
import json
import math
import re
import threading
import urllib.parse

RATE = 24000
KEY = "test-key-0123456789"
VOICES = [
    {"voice_id": "zed/1", "name": "Zed", "labels": {"gender": "male", "accent": "british"}},
    {"voice_id": "ada2", "name": "Ada", "labels": {"language": "en", "use_case": "narration"}},
    {"voice_id": "kim3", "name": "Kim", "labels": {"language": "de"}, "description": None},
    {"voice_id": "", "name": "broken"},
]
SENTENCES = [f"This is sentence number {number} of the whole text." for number in range(1, 9)]
TEXT = " ".join(SENTENCES)
STREAM = re.compile(r"/v1/text-to-speech/([^/]+)/stream")


def tone(seconds):
    """Little-endian 16-bit samples; loud from the first to the last."""
    samples = array.array("h", (int(9000 * math.cos(i * 0.11)) or 1 for i in range(int(seconds * RATE))))
    return samples.tobytes()


class CloudService:
    """`trouble` is an HTTP status, or one of the ways to go wrong in `Handler._misbehave`."""

    def __init__(self, seconds=0.4, context=None, handler=None):
        self.trouble = None
        self.seconds = seconds  # of sound for each text
        self.requests = []  # (path, body)
        self.voices = None  # what an own server answers who asks for its voices; None where it has no such list
        self.connections = 0
        self.release = threading.Event()  # ends what stalls
        service = self

        class Bound(handler or Handler):
            def setup(self):
                self.service = service
                super().setup()

        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Bound)
        self._server.handle_error = lambda *_: None  # clients go away
        if context:
            self._server.socket = context.wrap_socket(self._server.socket, server_side=True)
        scheme = "https" if context else "http"
        self.url = f"{scheme}://127.0.0.1:{self._server.server_port}"
        self.environment = {"TAVIN_ELEVENLABS_URL": self.url, "TAVIN_OPENAI_URL": self.url}
        threading.Thread(target=self._server.serve_forever, args=(0.01,), daemon=True).start()

    def end(self):
        self.release.set()
        self._server.shutdown()
        self._server.server_close()

    def texts(self):
        return [body.get("text") or body.get("input") for _, body in self.requests if body]


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def setup(self):
        super().setup()
        self.service.connections += 1

    def do_GET(self):
        self.service.requests.append((self.path, None))
        if self.headers["xi-api-key"] != KEY:
            self._json(401, {"detail": {"status": "invalid_api_key", "message": f"Not {self.headers['xi-api-key']}"}})
        elif isinstance(self.service.trouble, int):
            self._json(self.service.trouble, {"detail": "no"})
        elif self.service.trouble == "stall" and not self.service.release.wait(60):
            self.close_connection = True
        elif self.path == "/v1/voices":
            self._json(200, {"voices": VOICES})
        else:
            self._json(404, {})

    def do_POST(self):
        body = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
        self.service.requests.append((self.path, body))
        url = urllib.parse.urlsplit(self.path)
        fault = self._fault(url, body)
        if fault:
            self._json(*fault)
        elif isinstance(self.service.trouble, int):
            self._json(self.service.trouble, {"error": {"message": f"Bad key {KEY}", "code": "x"}})
        elif self.service.trouble:
            self._misbehave(self.service.trouble)
        else:
            self._sound(tone(self.service.seconds))

    def _fault(self, url, body):
        """What the documented interface objects to."""
        assert self.headers["Content-Type"] == "application/json"
        if url.path == "/v1/audio/speech":
            good = body["model"] and body["response_format"] == "pcm" and 0.25 <= body["speed"] <= 4
            good = good and body["voice"] in ("alloy", "ash", "coral", "echo", "fable", "nova", "onyx", "sage", "shimmer")
            authorised = self.headers["Authorization"] == f"Bearer {KEY}"
        elif match := STREAM.fullmatch(url.path):
            known = [voice["voice_id"] for voice in VOICES[:3]]
            good = urllib.parse.unquote(match[1]) in known and body["model_id"] and body["text"]
            good = good and urllib.parse.parse_qs(url.query) == {"output_format": ["pcm_24000"]}
            good = good and 0.7 <= body.get("voice_settings", {}).get("speed", 1) <= 1.2
            authorised = self.headers["xi-api-key"] == KEY
        else:
            return 404, {}
        if not authorised:
            return 401, {"error": {"message": f"Incorrect: {self.headers['Authorization']}"}}
        return None if good else (400, {"error": {"message": "not as documented"}})

    def _misbehave(self, how):
        sound = tone(self.service.seconds)
        if how == "quota":
            self._json(401, {"detail": {"status": "quota_exceeded", "message": "..."}})
        elif how == "stall":
            self.service.release.wait(60)
        elif how == "cut":
            self._head("audio/pcm")
            self._chunk(sound[: len(sound) // 2 + 1])
            self.close_connection = True
        elif how == "short":  # than it says
            self._head("audio/pcm", len(sound))
            self.wfile.write(sound[:1001])
            self.close_connection = True
        elif how == "hang":
            self._head("audio/pcm")
            self._chunk(sound[:2001])
            self.service.release.wait(60)
        elif how == "trickle":
            self._head("audio/pcm")
            while not self.service.release.wait(0.02):
                self._chunk(sound[:3])
        elif how == "endless":
            self._head("audio/pcm")
            while not self.service.release.is_set():
                self._chunk(sound)
        elif how == "slow head":
            self.wfile.write(b"HTTP/1.1 200 OK\r\n")
            while not self.service.release.wait(0.02):
                self.wfile.write(b"X-Patience: 1\r\n")
                self.wfile.flush()
        elif how == "encoded":
            self._head("audio/mpeg")
            self._chunk(sound)
            self._chunk(b"")
        elif how == "odd":
            self._head("audio/pcm")
            for start in range(0, len(sound), 777):
                self._chunk(sound[start : start + 777])
            self._chunk(b"")
        elif how == "page":
            self._json(200, {"sound": False})
        elif how == "empty":
            self._sound(b"")
        elif how == "garbage":
            self.wfile.write(b"\xff\x00 no HTTP\r\n\r\n")
            self.close_connection = True
        elif how == "close":
            self.close_connection = True

    def _json(self, status, content):
        data = json.dumps(content).encode()
        self.send_response(status)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(data)))
        if status == 302:
            self.send_header("Location", "/elsewhere")
        self.end_headers()
        self.wfile.write(data)

    def _sound(self, data):
        self._head("audio/pcm")
        if data:
            self._chunk(data)
        self._chunk(b"")

    def _head(self, kind, length=None):
        self.send_response(200)
        self.send_header("Content-Type", kind)
        if length is None:
            self.send_header("Transfer-Encoding", "chunked")
        else:
            self.send_header("Content-Length", str(length))
        self.end_headers()

    def _chunk(self, data):
        self.wfile.write(b"%x\r\n%s\r\n" % (len(data), data))

    def log_message(self, *_):
        pass


class OwnServer(Handler):
    """As many do that people run themselves: no key, a list of voices in one of several forms."""

    def do_GET(self):
        self.service.requests.append((self.path, None))
        if isinstance(self.service.trouble, int):
            self._json(self.service.trouble, {})
        elif self.path == "/v1/audio/voices" and self.service.voices is not None:
            self._json(200, self.service.voices)
        else:
            self._json(404, {})

    def _fault(self, url, body):
        if url.path != "/v1/audio/speech":
            return 404, {}
        good = self.headers["Authorization"] is None and body["response_format"] == "pcm"
        return None if good and body["voice"] else (400, {})


def use(engine, name):
    assert engine.post("/key", engine=name, key=KEY)[0] == 200
    assert engine.post("/config", engine=name)[0] == 200


def info(engine, name):
    return next(entry for entry in engine.status()["engines"] if entry["name"] == name)


def finish(engine, text):
    engine.speak(text)
    return engine.wait_for("idle")
