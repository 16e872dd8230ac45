"""The back-ends that this engine offers, in the order in which it lists them.

The module named `tavin.backends.NAME` is loaded in the worker process only. Its
class `Synthesizer` has `rate`, `voices()` and `say(text, voice, speed, emit)`; that
of a back-end which takes a key takes it in both, as `key`. A text that ends with a
blank goes on in the next one. A back-end whose `say` takes long has `abandon(now)`, called on another thread to have it return soon, or no more.
"""

from dataclasses import dataclass


class Failure(Exception):
    """Text for the user: why the back-end as a whole cannot do what it was asked for."""


@dataclass(frozen=True)
class Backend:
    name: str
    label: str
    takes_key: bool
    longest_piece: int  # code points given to the synthesiser at once
    patience: float  # seconds without a sign of life before the worker is ended
    voices_of_account: bool = False  # they depend on the key
    needs_setup: bool = False  # files must be got and loaded before it can speak
    follows_language: bool = False  # has a voice for the language of any text
    first_piece: int | None = None  # code points at the beginning, where sound comes only at the end
    ahead: float = 5.0  # seconds of sound kept ready
    start_seconds: float = 15.0  # the longest that a worker's start may take
    idle_seconds: float | None = None  # without use, then the worker's memory is given back


BACKENDS = {
    backend.name: backend
    for backend in (
        Backend(
            "kokoro",
            "Kokoro",
            takes_key=False,
            longest_piece=300,
            patience=60.0,
            needs_setup=True,
            first_piece=80,
            ahead=30.0,
            start_seconds=60.0,
            idle_seconds=15 * 60.0,
        ),
        Backend(
            "espeak",
            "eSpeak NG",
            takes_key=False,
            longest_piece=600,
            patience=10.0,
            follows_language=True,
        ),
        Backend(
            "elevenlabs",
            "ElevenLabs",
            takes_key=True,
            longest_piece=600,
            patience=40.0,
            voices_of_account=True,
        ),
        Backend("openai", "OpenAI", takes_key=True, longest_piece=600, patience=40.0),
    )
}

# Speaks at once, without a download or a key.
FIRST_CHOICE = "espeak"
