"""eSpeak NG: formant synthesis in about 100 languages."""

from tavin.synthesis.backend import Backend

BACKEND = Backend(
    "espeak",
    "eSpeak NG",
    takes_key=False,
    longest_piece=600,
    patience=10.0,
)
