"""The back-ends that this engine offers, in the order in which it lists them.

The module named `tavin.backends.NAME` is loaded in the worker process only. Its
class `Synthesizer` has `rate`, `voices()` and `say(text, voice, speed, emit)`; that
of a back-end which takes a key takes it in both, as `key`.
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


BACKENDS = {
    backend.name: backend
    for backend in (
        Backend("espeak", "eSpeak NG", takes_key=False, longest_piece=600, patience=10.0),
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
