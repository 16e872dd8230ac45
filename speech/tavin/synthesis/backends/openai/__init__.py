"""OpenAI's cloud voices."""

from tavin.synthesis.backend import Backend

BACKEND = Backend("openai", "OpenAI", takes_key=True, longest_piece=600, patience=40.0)
