"""What a back-end tells of itself, in the `BACKEND` of its folder."""

from collections.abc import Mapping
from dataclasses import dataclass, field


class Failure(Exception):
    """Text for the user: why the back-end as a whole cannot do what it was asked for."""


@dataclass(frozen=True)
class Backend:
    name: str  # of the folder as well
    label: str
    takes_key: bool
    longest_piece: int  # code points given to the synthesiser at once
    patience: float  # seconds without a sign of life before the worker is ended
    environment: Mapping[str, str] = field(default_factory=dict)  # of the worker, beside the engine's
    local: bool = True  # texts stay with this engine
    fetches_voices: bool = False  # the service tells them when it is asked
    needs_setup: bool = False  # files must be got and loaded before it can speak
    voice_is_download: bool = False  # each voice has files of its own, got when it is chosen
    speaks: frozenset = frozenset()  # languages that each of its voices speaks beside its own
    speaks_as_told: bool = False  # voices without a language speak what they are given
    first_piece: int | None = None  # code points at the beginning, where sound comes only at the end
    ahead: float = 5.0  # seconds of sound kept ready
    start_seconds: float = 15.0  # the longest that a worker's start may take
    idle_seconds: float | None = None  # without use, then the worker's memory is given back
