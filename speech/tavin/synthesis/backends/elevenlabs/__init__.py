"""ElevenLabs' cloud voices, those of the user's account."""

from tavin.synthesis.backend import Backend

BACKEND = Backend(
    "elevenlabs",
    "ElevenLabs",
    takes_key=True,
    local=False,
    longest_piece=600,
    patience=40.0,
    fetches_voices=True,
    # Of the model that `synthesizer.py` names.
    speaks=frozenset(
        "ar bg cmn cs da de el en es fi fil fr hi hr hu id it ja ko ms nb nl pl pt ro ru sk sv ta tr uk vi".split()
    ),
)
