"""Piper, a local neural voice that is far cheaper than Kokoro; each voice is a download of its own."""

from tavin.synthesis.backend import Backend

BACKEND = Backend(
    "piper",
    "Piper",
    takes_key=False,
    longest_piece=80,
    patience=60.0,
    needs_setup=True,
    voice_is_download=True,
    first_piece=40,
    start_seconds=60.0,
    idle_seconds=15 * 60.0,
)
