"""Kokoro, the local neural voice."""

from tavin.synthesis.backend import Backend

BACKEND = Backend(
    "kokoro",
    "Kokoro",
    takes_key=False,
    longest_piece=85,
    patience=60.0,
    needs_setup=True,
    first_piece=24,
    ahead=30.0,
    start_seconds=60.0,
    idle_seconds=15 * 60.0,
)
