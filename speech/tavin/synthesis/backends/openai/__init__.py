"""OpenAI's cloud voices."""

from tavin.synthesis.backend import Backend

BACKEND = Backend(
    "openai",
    "OpenAI",
    takes_key=True,
    local=False,
    longest_piece=600,
    patience=40.0,
    speaks=frozenset(
        "af ar az be bg bs ca cmn cs cy da de el en es et fa fi fil fr gl he hi hr hu hy id is it ja kk kn ko lt lv"
        " mi mk mr ms nb ne nl pl pt ro ru sk sl sr sv sw ta th tr uk ur vi".split()
    ),
)
