"""OpenAI's voices over HTTPS. Loaded in a worker process only."""

from tavin.synthesis.backends.cloud import Service, address_of, has_words, longest_sound, within

MODEL = "tts-1"  # answers fast and heeds the speed
VOICES = ("alloy", "ash", "coral", "echo", "fable", "nova", "onyx", "sage", "shimmer")
SLOWEST, FASTEST = 0.25, 4.0  # what the service can do


class Synthesizer:
    rate = 24000  # of the format called pcm

    def __init__(self):
        self._service = Service("OpenAI", address_of("https://api.openai.com", "TAVIN_OPENAI_URL"))

    def voices(self):
        # They speak every language.
        return [{"id": name, "name": name.capitalize(), "language": ""} for name in VOICES]

    def say(self, text, voice, speed, emit, key):
        headers = {"Authorization": f"Bearer {key}"}
        speech(self._service, "/v1/audio/speech", headers, MODEL, self.rate, text, voice, speed, emit)


def speech(service, path, headers, model, rate, text, voice, speed, emit):
    content = {
        "model": model,
        "input": text,
        "voice": voice,
        "response_format": "pcm",
        "speed": within(speed, SLOWEST, FASTEST),
    }
    if has_words(text):
        service.stream(path, content, headers, rate, longest_sound(text, content["speed"]), emit)
