"""ElevenLabs' cloud voices, those of the user's account."""

from tavin.synthesis.backend import Backend

BACKEND = Backend(
    "elevenlabs",
    "ElevenLabs",
    takes_key=True,
    longest_piece=600,
    patience=40.0,
    voices_of_account=True,
)
