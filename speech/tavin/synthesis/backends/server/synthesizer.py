"""The voices of the user's own server. Loaded in a worker process only."""

import ipaddress
import json
import os
import re

import icu

from tavin.synthesis import voices
from tavin.synthesis.backend import Failure
from tavin.synthesis.backends import server
from tavin.synthesis.backends.cloud import Refused, Service, proxy_for
from tavin.synthesis.backends.openai import synthesizer as openai

NO_LIST = (404, 405, 501)  # OpenAI's own interface has none
LOCALE = re.compile("[a-z]{2,3}(-[a-z]{4})?(-([a-z]{2}|[0-9]{3}))?")
NO_LANGUAGE = ("mul", "zxx")  # several, and none
# Loopback, the networks of homes and offices, what machines without one take, and those of providers and VPNs.
NEAR = [
    ipaddress.ip_network(network)
    for network in ("127.0.0.0/8", "10.0.0.0/8", "172.16.0.0/12", "192.168.0.0/16", "169.254.0.0/16", "100.64.0.0/10")
    + ("::1/128", "fc00::/7", "fe80::/10")
]


class OwnService(Service):
    """That is sent no key, and on this machine no proxy."""

    @staticmethod
    def _reason(status, data):
        if status in (401, 403):
            return "wants a key, which Tavin does not send"
        return Service._reason(status, data)

    @staticmethod
    def _proxy(host):
        return None if host in server.THIS_MACHINE else proxy_for(host)


class Synthesizer:
    def __init__(self):
        told = json.loads(os.environ[server.VARIABLE])
        self.rate = told["rate"]
        self._label = told["label"]
        self._model = told["model"]
        self._voices = told["voices"]
        near = (is_near, "on this computer or in a private network") if told["private_network"] else ()
        self._service = OwnService(self._label, told["address"], *near)

    def voices(self):
        return [voice for name in self._voices if (voice := voice_of(name))]

    def fetch_voices(self):
        try:
            answer = self._service.fetch("/audio/voices", {})
        except Refused as refusal:
            if refusal.status not in NO_LIST:
                raise
            answer = list(openai.VOICES)
        listed = answer.get("voices") if isinstance(answer, dict) else answer
        found = map(voice_of, listed[: server.MOST_VOICES]) if isinstance(listed, list) else ()
        known = {voice["id"]: voice for voice in found if voice}
        if not known:
            raise Failure(f"{self._label} sent an answer that makes no sense.")
        return list(known.values())

    def say(self, text, voice, speed, emit):
        openai.speech(self._service, "/audio/speech", {}, self._model, self.rate, text, voice, speed, emit)


def is_near(peer):
    """On this machine or in a private network."""
    return any(peer in network for network in NEAR)


def voice_of(entry):
    """Servers tell names, or objects of several forms; None where it is no voice."""
    entry = entry if isinstance(entry, dict) else {"id": entry}
    known = {field: value for field, value in entry.items() if server.is_text(value)}
    name = known.get("name") or known.get("id") or known.get("voice_id")
    if not name:
        return None
    identity = known.get("id") or known.get("voice_id") or name
    return {"id": identity, "name": name, "language": language_of(known.get("language") or known.get("locale") or "")}


def language_of(told):
    """"" for what is no language: some servers write "English" or "multilingual" there."""
    locale = told.replace("_", "-").lower()
    if not LOCALE.fullmatch(locale):
        return ""
    language = voices.language_of_locale(icu.Locale(locale).getName())  # "en" for "eng"
    return language if voices.own_name(language) and language not in NO_LANGUAGE else ""
