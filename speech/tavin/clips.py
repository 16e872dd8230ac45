"""The text's pieces around the place that is heard, with their sound: those to come, and those that were
heard, so that going back makes nothing anew.
"""

from collections import deque

# What is kept of what was heard: some ten minutes.
KEPT_BYTES = 32 << 20
KEPT_PIECES = 500


class Clip:
    """A piece of the text and its sound."""

    def __init__(self, piece):
        self.piece = piece
        self.sent = 0  # bytes that went to the stream that is open
        self.forget()

    @property
    def place(self):
        return self.piece.place

    @property
    def waiting(self):
        return len(self.sound) - self.sent

    def take(self, most):
        part = bytes(self.sound[self.sent : self.sent + most])
        self.sent += len(part)
        return part

    def forget(self):
        """To be made anew. Who is making it fills the old sound, which nobody plays."""
        self.sound = bytearray()
        self.rate = None
        self.choice = None  # that it is made by; None until that begins
        self.complete = False


class Clips:
    """Moving is by "sentence" or "paragraph", from what is heard: of what was sent, `unheard` bytes are not."""

    def __init__(self):
        self.ahead = deque()  # in the order of playing
        self.choice = 0  # how often the user chose something else
        self._heard = deque()
        self._skips = deque()  # the moves on to what was not found in the text yet
        self._from = None  # the place that the first of these is from

    def incomplete(self):
        """The first that is to be made or is being made."""
        return next((clip for clip in self.ahead if not clip.complete), None)

    def add(self, piece):
        """The next piece of the text. Whether it will be heard."""
        clip = Clip(piece)
        if self._is_skipped(clip.place):
            self._keep(clip)
            return False
        self.ahead.append(clip)
        return True

    def insert(self, clip, pieces):
        """What of a clip's piece is to come behind it."""
        for number, piece in enumerate(pieces, self.ahead.index(clip) + 1):
            self.ahead.insert(number, Clip(piece))

    def pass_first(self):
        self._keep(self.ahead.popleft())

    def choose_anew(self):
        """Another voice or speed: from the sentence on that nobody has heard of."""
        self.choice += 1
        for clip in self.ahead:
            if not clip.sent:
                clip.forget()

    def next(self, by, unheard):
        here = self.place(unheard)
        if here is None:
            return
        if not self._skips:
            self._from = here
        self._skips.append(by)
        while self._heard and self._heard[-1].place.sentence > here.sentence:
            self.ahead.appendleft(self._heard.pop())  # it was sent, and nobody heard it
        self._rewind()
        while self.ahead and self._is_skipped(self.ahead[0].place):
            self.pass_first()

    def previous(self, by, unheard):
        """By paragraph it is the beginning of this one first."""
        self.repeat(unheard)
        if self._heard:
            self._back_to(by, getattr(self._heard[-1].place, by))

    def repeat(self, unheard):
        here = self.place(unheard)
        self._skips.clear()
        self._rewind()
        if here is not None:
            self._back_to("sentence", here.sentence)

    def place(self, unheard):
        """What is heard now."""
        if self.ahead and self.ahead[0].sent > unheard:
            return self.ahead[0].place
        behind = unheard - (self.ahead[0].sent if self.ahead else 0)
        for clip in reversed(self._heard):
            if clip.sent > behind:
                return clip.place
            behind -= clip.sent
        if self.ahead:
            return self.ahead[0].place
        return self._heard[-1].place if self._heard else None

    def _is_skipped(self, place):
        while self._skips and getattr(place, self._skips[0]) > getattr(self._from, self._skips[0]):
            self._from = place
            self._skips.popleft()
        return bool(self._skips)

    def _back_to(self, by, number):
        while self._heard and getattr(self._heard[-1].place, by) >= number:
            self.ahead.appendleft(self._heard.pop())
            self._forget_if_stale(self.ahead[0])

    def _rewind(self):
        """The stream is another one from now on."""
        for clip in (*self._heard, *self.ahead):
            clip.sent = 0
        for clip in self.ahead:
            self._forget_if_stale(clip)

    def _forget_if_stale(self, clip):
        if clip.choice != self.choice:
            clip.forget()

    def _keep(self, clip):
        if not clip.complete:
            clip.forget()
        self._heard.append(clip)
        while self._is_too_much():
            gone = self._heard.popleft().place
            while self._heard and self._heard[0].place == gone:
                self._heard.popleft()

    def _is_too_much(self):
        return len(self._heard) > KEPT_PIECES or sum(len(clip.sound) for clip in self._heard) > KEPT_BYTES
