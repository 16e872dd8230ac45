"""What a back-end tells of itself, in the `BACKEND` of its folder."""

from dataclasses import dataclass


class Failure(Exception):
    """Text for the user: why the back-end as a whole cannot do what it was asked for."""


@dataclass(frozen=True)
class Backend:
    name: str  # of the folder as well
    label: str
    takes_key: bool
    longest_piece: int  # code points given to the synthesiser at once
    patience: float  # seconds without a sign of life before the worker is ended
    voices_of_account: bool = False  # they depend on the key
    needs_setup: bool = False  # files must be got and loaded before it can speak
    voice_is_download: bool = False  # each voice has files of its own, got when it is chosen
    speaks: frozenset = frozenset()  # languages that each of its voices speaks beside its own
    first_piece: int | None = None  # code points at the beginning, where sound comes only at the end
    ahead: float = 5.0  # seconds of sound kept ready
    start_seconds: float = 15.0  # the longest that a worker's start may take
    idle_seconds: float | None = None  # without use, then the worker's memory is given back

    @property
    def local(self):
        """Whether texts stay on this machine."""
        return not self.takes_key
