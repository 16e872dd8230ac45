"""The voices of the user's own server. Loaded in a worker process only."""

import json
import os

from tavin.synthesis.backend import Failure
from tavin.synthesis.backends import server
from tavin.synthesis.backends.cloud import Refused, Service
from tavin.synthesis.backends.openai import synthesizer as openai

NO_LIST = (404, 405, 501)  # OpenAI's own interface has none
MOST_VOICES = 2000


class Synthesizer:
    def __init__(self):
        told = json.loads(os.environ[server.VARIABLE])
        self.rate = told["rate"]
        self._label = told["label"]
        self._model = told["model"]
        self._voices = told["voices"]
        plain = is_near if told["private_network"] else lambda peer: peer.is_loopback
        self._service = Service(self._label, told["address"], plain)

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
        voices = map(voice_of, listed[:MOST_VOICES]) if isinstance(listed, list) else ()
        known = {voice["id"]: voice for voice in voices if voice}
        if not known:
            raise Failure(f"{self._label} sent an answer that makes no sense.")
        return list(known.values())

    def say(self, text, voice, speed, emit):
        openai.speech(self._service, "/audio/speech", {}, self._model, self.rate, text, voice, speed, emit)


def is_near(peer):
    """On this machine or in a private network."""
    return peer.is_private and not peer.is_unspecified


def voice_of(entry):
    """Servers tell names, or objects of several forms; None where it is no voice."""
    entry = entry if isinstance(entry, dict) else {"id": entry}
    known = {field: value for field, value in entry.items() if server.is_text(value)}
    name = known.get("name") or known.get("id") or known.get("voice_id")
    if not name:
        return None
    identity = known.get("id") or known.get("voice_id") or name
    language = known.get("language") or known.get("locale") or ""
    return {"id": identity, "name": name, "language": language.replace("_", "-").lower()}
