"""The cloud back-ends' synthesizers against a local server, without an engine."""

import base64
import socket
import ssl
import subprocess
import threading
import time

import pytest
from cloud_service import KEY, VOICES, CloudService, tone
from tavin.synthesis.backend import Failure
from tavin.synthesis.backends import cloud
from tavin.synthesis.backends.elevenlabs import synthesizer as elevenlabs
from tavin.synthesis.backends.openai import synthesizer as openai

TROUBLES = {
    401: "does not accept the key",
    402: "no credit left",
    403: "does not allow",
    404: "voice or model",
    429: "too often",
    302: "did not do as asked",
    500: "trouble of its own",
    503: "trouble of its own",
    "quota": "quota is used up",
    "cut": "broke off",
    "short": "broke off",
    "garbage": "broke off",
    "close": "broke off",
    "empty": "broke off",
    "page": "other than sound",
    "stall": "too slow",
    "hang": "too slow",
    "trickle": "too slow",
    "slow head": "too slow",
    "endless": "more sound than the text can have",
}


@pytest.fixture
def service(monkeypatch):
    server = CloudService()
    for name, value in server.environment.items():
        monkeypatch.setenv(name, value)
    monkeypatch.setattr(cloud, "SILENCE_SECONDS", 0.5)
    monkeypatch.setattr(cloud, "LAG_SECONDS", 0.5)
    monkeypatch.setattr(cloud, "ANSWER_SECONDS", 0.5)
    yield server
    server.end()


@pytest.fixture(params=["elevenlabs", "openai"])
def synthesizer(request, service):
    return {"elevenlabs": elevenlabs, "openai": openai}[request.param].Synthesizer()


def voice_for(synthesizer):
    return "zed/1" if isinstance(synthesizer, elevenlabs.Synthesizer) else "alloy"


def say(synthesizer, text="Hello there.", speed=1.0, key=KEY):
    sound = bytearray()
    synthesizer.say(text, voice_for(synthesizer), speed, sound.extend, key)
    return bytes(sound)


@pytest.mark.parametrize("trouble", [None, "odd"])
def test_the_sound_arrives_whole(service, synthesizer, trouble):
    service.trouble = trouble
    for _ in range(3):
        assert say(synthesizer) == tone(service.seconds)
    assert service.connections == 1
    assert service.texts() == ["Hello there."] * 3


@pytest.mark.parametrize("trouble", TROUBLES)
def test_trouble_is_told_in_plain_words_and_passes(service, synthesizer, trouble):
    service.trouble = trouble
    with pytest.raises(Failure) as failure:
        say(synthesizer)
    assert TROUBLES[trouble] in str(failure.value)
    assert KEY not in str(failure.value)
    service.trouble = None
    assert say(synthesizer) == tone(service.seconds)


def test_a_wrong_key_is_not_repeated(synthesizer):
    with pytest.raises(Failure, match="does not accept the key") as failure:
        say(synthesizer, key="wrong-one")
    assert "wrong-one" not in str(failure.value)


def test_a_connection_that_grew_too_old_is_made_anew(service, synthesizer):
    say(synthesizer)
    synthesizer._service._connection.sock.shutdown(2)
    assert say(synthesizer) == tone(service.seconds)
    assert service.connections == 2


def test_nobody_there(service, synthesizer):
    service.end()
    with pytest.raises(Failure, match="cannot be reached|broke off"):
        say(synthesizer)


@pytest.mark.parametrize("speed, eleven, open_ai", [(0.5, 0.7, 0.5), (1.1, 1.1, 1.1), (3.0, 1.2, 3.0), (1.0, None, 1.0)])
def test_the_speed_is_one_that_the_service_can_do(service, speed, eleven, open_ai):
    say(elevenlabs.Synthesizer(), speed=speed)
    say(openai.Synthesizer(), speed=speed)
    first, second = (body for _, body in service.requests)
    assert first.get("voice_settings", {}).get("speed") == eleven
    assert second["speed"] == open_ai


@pytest.mark.parametrize("text", ["...", " ", "—", "😀", "?!"])
def test_what_has_no_words_does_not_leave_the_machine(service, synthesizer, text):
    assert say(synthesizer, text) == b""
    assert service.requests == []


def test_elevenlabs_voices(service):
    synthesizer = elevenlabs.Synthesizer()
    assert synthesizer.voices() == []
    voices = synthesizer.fetch_voices(KEY)
    assert [(voice["id"], voice["name"], voice["language"]) for voice in voices] == [
        ("zed/1", "Zed (male, british)", ""),
        ("ada2", "Ada", "en"),
        ("kim3", "Kim", "de"),
    ]


@pytest.mark.parametrize("answer", [[], {}, {"voices": {}}, {"voices": None}, "x"])
def test_elevenlabs_voices_that_make_no_sense(monkeypatch, service, answer):
    synthesizer = elevenlabs.Synthesizer()
    monkeypatch.setattr(synthesizer._service, "fetch", lambda *_: answer)
    with pytest.raises(Failure, match="makes no sense"):
        synthesizer.fetch_voices(KEY)
    monkeypatch.setattr(synthesizer._service, "fetch", lambda *_: {"voices": [None, 1, {}, VOICES[3]]})
    assert synthesizer.fetch_voices(KEY) == []


def test_openai_voices():
    names = [voice["name"] for voice in openai.Synthesizer().voices()]
    assert "Alloy" in names and "Nova" in names and len(set(names)) == len(names)


@pytest.mark.parametrize("address", ["http://example.org", "ftp://127.0.0.1.example.org", "http://", "http://127.0.0.1:x@example.org"])
def test_a_key_goes_nowhere_without_encryption(monkeypatch, address):
    monkeypatch.setenv("TAVIN_OPENAI_URL", address)
    with pytest.raises(RuntimeError, match="https"):
        openai.Synthesizer()


@pytest.fixture
def encrypted(monkeypatch, tmp_path):
    """A service with a certificate of its own."""
    key, certificate = tmp_path / "key.pem", tmp_path / "certificate.pem"
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=127.0.0.1"]
        + ["-addext", "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out", certificate],
        check=True,
        capture_output=True,
    )
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    service = CloudService(context=context)
    service.certificate = str(certificate)
    monkeypatch.setenv("TAVIN_OPENAI_URL", service.url)
    yield service
    service.end()


def test_a_certificate_that_nobody_vouches_for(monkeypatch, encrypted):
    with pytest.raises(Failure, match="certificate"):
        say(openai.Synthesizer())
    assert encrypted.requests == []
    monkeypatch.setenv("SSL_CERT_FILE", encrypted.certificate)
    assert say(openai.Synthesizer()) == tone(encrypted.seconds)


class Proxy:
    """Connects whoever asks for it, and keeps what it saw."""

    def __init__(self):
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.address = f"127.0.0.1:{self._listener.getsockname()[1]}"
        self.seen = b""
        threading.Thread(target=self._serve, daemon=True).start()

    def _serve(self):
        client, _ = self._listener.accept()
        while b"\r\n\r\n" not in self.seen:
            self.seen += client.recv(1)
        host, _, port = self.seen.split()[1].decode().rpartition(":")
        server = socket.create_connection((host, int(port)))
        client.sendall(b"HTTP/1.1 200 Connected\r\n\r\n")
        threading.Thread(target=self._pass_on, args=(server, client), daemon=True).start()
        self._pass_on(client, server)

    def _pass_on(self, source, target):
        while data := source.recv(65536):
            self.seen += data
            target.sendall(data)


def test_a_proxy_is_used_and_learns_no_key(monkeypatch, encrypted):
    proxy = Proxy()
    monkeypatch.setenv("SSL_CERT_FILE", encrypted.certificate)
    monkeypatch.setenv("https_proxy", f"http://me:my%20word@{proxy.address}")
    monkeypatch.setenv("no_proxy", "example.org")
    assert say(openai.Synthesizer()) == tone(encrypted.seconds)
    host = encrypted.url.removeprefix("https://").encode()
    assert proxy.seen.startswith(b"CONNECT " + host)
    assert b"Proxy-Authorization: Basic " + base64.b64encode(b"me:my word") in proxy.seen
    assert KEY.encode() not in proxy.seen and b"Hello there" not in proxy.seen
    seen = len(proxy.seen)
    monkeypatch.setenv("no_proxy", "127.0.0.1")
    assert say(openai.Synthesizer()) == tone(encrypted.seconds)
    assert len(proxy.seen) == seen


@pytest.mark.parametrize("address", ["http://127.0.0.1:port", "127.0.0.1:0", "http://[::1", "http://:80"])
def test_a_proxy_that_is_none_is_told(monkeypatch, encrypted, address):
    monkeypatch.setenv("https_proxy", address)
    monkeypatch.setenv("no_proxy", "example.org")
    with pytest.raises(Failure, match="cannot be reached: https_proxy names no proxy"):
        say(openai.Synthesizer())


def test_a_proxy_that_refuses_is_told(monkeypatch, encrypted):
    listener = socket.create_server(("127.0.0.1", 0))

    def refuse():
        client, _ = listener.accept()
        with client:
            client.recv(65536)
            client.sendall(b"HTTP/1.1 407 Proxy Authentication Required\r\nContent-Length: 0\r\n\r\n")

    threading.Thread(target=refuse, daemon=True).start()
    monkeypatch.setenv("https_proxy", f"http://127.0.0.1:{listener.getsockname()[1]}")
    monkeypatch.setenv("no_proxy", "example.org")
    with listener, pytest.raises(Failure, match="the proxy does not allow it"):
        say(openai.Synthesizer())


def test_a_machine_with_the_other_byte_order(monkeypatch):
    monkeypatch.setattr(cloud.sys, "byteorder", "big")
    assert cloud.native(b"\x01\x02\x03\x04") == b"\x02\x01\x04\x03"


def test_a_stream_that_hangs_is_given_up_soon(service, synthesizer):
    service.trouble = "hang"
    begin = time.monotonic()
    with pytest.raises(Failure):
        say(synthesizer)
    assert 0.4 < time.monotonic() - begin < 3
