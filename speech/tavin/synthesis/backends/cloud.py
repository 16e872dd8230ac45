"""What the cloud back-ends and own servers share: a service over HTTPS, sound as it comes, errors in plain words.

Loaded in worker processes only. Nothing that the service writes is shown to the
user: an answer may quote the key.
"""

import base64
import contextlib
import errno
import http.client
import ipaddress
import json
import os
import socket
import ssl
import sys
import threading
import time
import urllib.parse
import urllib.request

from tavin.synthesis.backend import Failure

SILENCE_SECONDS = 8.0  # to connect, to answer, and between two portions of sound
ANSWER_SECONDS = 15.0  # until an answer's head is there, however it comes
LAG_SECONDS = 10.0  # a stream that is this much slower than the speech cannot be listened to
PORTION = 8192
# More sound than any text has; who sends it would otherwise fill the memory.
SECONDS_PER_CHARACTER, SECONDS_MORE = 0.5, 30.0
LARGEST_ANSWER = 8 * 1024 * 1024
# Such sound would be heard as noise.
ENCODED = [
    f"audio/{kind}" for kind in "mpeg mp3 ogg opus webm aac mp4 flac x-flac wav x-wav wave vnd.wave".split()
]

REASONS = {
    400: "did not accept the text",
    401: "does not accept the key",
    402: "wants to be paid: the account has no credit left",
    403: "does not allow this with the key",
    404: "does not know this voice or model",
    429: "is asked too often or the account's quota is used up; try again later",
}


class Refused(Failure):
    """The service's answer was an HTTP status that is no success."""

    def __init__(self, text, status):
        super().__init__(text)
        self.status = status


class Service:
    """One service; the connection to it is kept from one sentence to the next."""

    def __init__(self, label, address, plain=lambda peer: peer.is_loopback, where="on this computer"):
        """`plain(peer)`: whether what is sent to an IP address needs no TLS; `where`: which these are."""
        self._label = label
        self._url = urllib.parse.urlsplit(address)
        self._plain = plain, where
        self._connection = None

    def fetch(self, path, headers):
        """A JSON answer."""
        response = self._request("GET", path, None, headers)
        with self._failures():
            data = response.read(LARGEST_ANSWER)
        self._drop()
        try:
            return json.loads(data)
        except (ValueError, RecursionError):
            raise Failure(f"{self._label} sent an answer that makes no sense.") from None

    def stream(self, path, content, headers, rate, longest, emit):
        """Post, and hand on the answer's 16-bit samples as they come; Failure after `longest` seconds of sound."""
        headers = {**headers, "Content-Type": "application/json"}
        response = self._request("POST", path, json.dumps(content).encode(), headers)
        kind = response.headers.get_content_type()
        if response.headers["Content-Type"] and (kind.startswith("text/") or "json" in kind or kind in ENCODED):
            self._drop()
            raise Failure(f"{self._label} sent something other than sound.")
        begin = time.monotonic()
        received = 0
        odd = b""
        with self._failures():
            while portion := response.read1(PORTION):
                received += len(portion)
                if received > 2 * rate * longest:
                    self._drop()
                    raise Failure(f"{self._label} sent more sound than the text can have.")
                portion = odd + portion
                whole = len(portion) & ~1
                odd = portion[whole:]
                emit(native(portion[:whole]))
                if time.monotonic() - begin > LAG_SECONDS + received / (2 * rate):
                    raise TimeoutError
            if response.length or not received:
                raise http.client.IncompleteRead(b"")
            response.close()  # only now the connection can be used again

    def _request(self, method, path, body, headers):
        """The answer to a request, once it is known to be a good one."""
        with self._failures():
            response = self._send(method, path, body, headers)
            if response.status == 200:
                return response
            known = response.read(PORTION)
        self._drop()
        reason = self._reason(response.status, known)
        raise Refused(f"{self._label} {reason} (HTTP {response.status}).", response.status)

    def _send(self, method, path, body, headers):
        kept = self._connection is not None
        try:
            return self._send_once(method, path, body, headers)
        except (http.client.RemoteDisconnected, ConnectionError):
            if not kept:
                raise
            self._drop()  # it was too old
            return self._send_once(method, path, body, headers)

    def _send_once(self, method, path, body, headers):
        if self._connection is None:
            self._connection = self._connect()
        connection = self._connection
        with deadline(connection):
            connection.request(method, self._url.path.rstrip("/") + path, body, headers)
            return connection.getresponse()

    def _connect(self):
        host, port = self._url.hostname, self._url.port
        if self._url.scheme != "https":
            return PlainConnection(host, port, *self._plain)
        context = ssl.create_default_context()
        proxy = self._proxy(host)
        if proxy is None:
            return http.client.HTTPSConnection(host, port, timeout=SILENCE_SECONDS, context=context)
        connection = http.client.HTTPSConnection(
            proxy.hostname, proxy.port or 80, timeout=SILENCE_SECONDS, context=context
        )
        connection.set_tunnel(host, port, headers=authorisation(proxy))  # it sees where to, not what
        return connection

    @staticmethod
    def _proxy(host):
        return proxy_for(host)

    def _drop(self):
        if self._connection:
            self._connection.close()
            self._connection = None

    @contextlib.contextmanager
    def _failures(self):
        try:
            yield
        except (OSError, http.client.HTTPException) as failure:
            self._drop()
            raise Failure(f"{self._label} {in_words(failure)}.") from None

    @staticmethod
    def _reason(status, data):
        if b"quota_exceeded" in data or b"insufficient_quota" in data:
            return "says that the account's quota is used up"
        if status in REASONS:
            return REASONS[status]
        return "has trouble of its own; try again later" if status >= 500 else "did not do as asked"


class PlainConnection(http.client.HTTPConnection):
    """Says nothing to a peer that its name, on this network, leads to by mistake."""

    def __init__(self, host, port, allowed, where):
        super().__init__(host, port, timeout=SILENCE_SECONDS)
        self._allowed = allowed
        self._where = where

    def connect(self):
        super().connect()
        if not self._allowed(peer_of(self.sock)):
            self.close()
            raise OSError(errno.EACCES, f"without https it would have to be {self._where}")


def peer_of(connected):
    address = ipaddress.ip_address(connected.getpeername()[0].split("%")[0])
    return getattr(address, "ipv4_mapped", None) or address


def address_of(service, variable):
    """A cloud's address, or another one for tests."""
    address = os.environ.get(variable) or service
    url = urllib.parse.urlsplit(address)
    if not url.hostname or url.scheme != "https" and (url.scheme, url.hostname) != ("http", "127.0.0.1"):
        raise RuntimeError(f"{variable} must be an https address.")
    return address


@contextlib.contextmanager
def deadline(connection):
    """TimeoutError when the block takes too long, though never too long for one portion of an answer."""
    late = threading.Event()

    def end():
        late.set()
        with contextlib.suppress(OSError, AttributeError):  # not connected (yet)
            connection.sock.shutdown(socket.SHUT_RDWR)

    timer = threading.Timer(ANSWER_SECONDS, end)
    timer.daemon = True
    timer.start()
    try:
        yield
    except (OSError, http.client.HTTPException):
        if not late.is_set():
            raise
    finally:
        timer.cancel()
    if late.is_set():  # an answer whose head was cut passes for one
        raise TimeoutError


def proxy_for(host):
    """The proxy that the environment names for HTTPS, as for the download; None without one."""
    address = urllib.request.getproxies().get("https")
    if not address or urllib.request.proxy_bypass(host):
        return None
    try:
        proxy = urllib.parse.urlsplit(address if "//" in address else f"//{address}")
        if proxy.hostname and (proxy.port is None or proxy.port > 0):
            return proxy
    except ValueError:
        pass
    raise OSError(errno.EINVAL, "https_proxy names no proxy")


def authorisation(proxy):
    if proxy.username is None:
        return {}
    name = f"{urllib.parse.unquote(proxy.username)}:{urllib.parse.unquote(proxy.password or '')}"
    return {"Proxy-Authorization": "Basic " + base64.b64encode(name.encode()).decode()}


def longest_sound(text, speed):
    """In seconds."""
    return (SECONDS_PER_CHARACTER * len(text) + SECONDS_MORE) / min(speed, 1.0)


def in_words(failure):
    if isinstance(failure, TimeoutError):
        return "is too slow or does not answer"
    if isinstance(failure, ssl.SSLCertVerificationError):
        return "cannot be trusted: its certificate is not valid"
    if isinstance(failure, socket.gaierror):
        return "cannot be found; this computer may be offline"
    if isinstance(failure, (http.client.HTTPException, ConnectionResetError, ssl.SSLError)):
        return "broke off the connection"
    return f"cannot be reached: {failure.strerror or 'the proxy does not allow it'}"


def native(samples):
    """Little-endian samples in this machine's order."""
    if sys.byteorder == "little":
        return samples
    swapped = bytearray(samples)
    swapped[::2], swapped[1::2] = samples[1::2], samples[::2]
    return bytes(swapped)


def within(value, least, most):
    return min(max(value, least), most)


def has_words(text):
    """What has none makes no sound, costs money all the same, and need not leave this machine."""
    return any(character.isalnum() for character in text)
