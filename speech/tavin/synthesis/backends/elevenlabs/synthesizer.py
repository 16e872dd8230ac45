"""ElevenLabs' voices over HTTPS. Loaded in a worker process only."""

import urllib.parse

from tavin.synthesis.backend import Failure
from tavin.synthesis.backends.cloud import Service, address_of, has_words, longest_sound, within

MODEL = "eleven_flash_v2_5"  # the one that answers fastest; 32 languages
SLOWEST, FASTEST = 0.7, 1.2  # what the service can do


class Synthesizer:
    rate = 24000

    def __init__(self):
        self._service = Service(
            "ElevenLabs", address_of("https://api.elevenlabs.io", "TAVIN_ELEVENLABS_URL")
        )

    def voices(self):
        return []

    def fetch_voices(self, key):
        """Those of the key's owner."""
        answer = self._service.fetch("/v1/voices", {"xi-api-key": key})
        listed = answer.get("voices") if isinstance(answer, dict) else None
        if not isinstance(listed, list):
            raise Failure("ElevenLabs sent an answer that makes no sense.")
        return [voice_of(entry) for entry in listed if is_voice(entry)]

    def say(self, text, voice, speed, emit, key):
        if not voice:
            raise Failure("ElevenLabs offers no voice to this account.")
        content = {"text": text, "model_id": MODEL}
        if speed != 1.0:  # otherwise the voice's own settings hold
            content["voice_settings"] = {"speed": within(speed, SLOWEST, FASTEST)}
        path = f"/v1/text-to-speech/{urllib.parse.quote(voice, safe='')}/stream?output_format=pcm_{self.rate}"
        if has_words(text):
            longest = longest_sound(text, within(speed, SLOWEST, FASTEST))
            self._service.stream(path, content, {"xi-api-key": key}, self.rate, longest, emit)


def is_voice(entry):
    if not isinstance(entry, dict):
        return False
    return all(isinstance(entry.get(name), str) and entry[name] for name in ("voice_id", "name"))


def voice_of(entry):
    labels = entry.get("labels")
    labels = labels if isinstance(labels, dict) else {}
    known = {name: value for name, value in labels.items() if isinstance(value, str)}
    traits = [known[name].replace("_", " ") for name in ("gender", "accent", "age") if known.get(name)]
    name = entry["name"].strip()
    return {
        "id": entry["voice_id"],
        "name": f"{name} ({', '.join(traits)})" if traits else name,
        "language": known.get("language", "").lower(),
    }
