"""How fast a neural voice is made on this machine, and so how long its next piece may be."""

from collections import deque

RECENT = 8  # pieces; a machine that gets busy is soon slower
RESERVE = 0.6  # of the sound that is left: a piece may become longer than was asked, and its time is a guess
GROWTH = 1.3  # behind pieces that are too much alike to tell how time grows with their length
SPARE = 1.5  # how much longer than to keep up a piece is, to be ahead soon
LEAST_SHARE = 0.2  # of a piece's time, that grows with its length
SHARE_IF_ALIKE = 0.5  # the same of pieces that are too much alike: the slope between them is chance


class Pace:
    """A piece takes some time whatever its length, and more with each code point. Short ones are made in time
    where little sound is left, but too short ones take longer than their sound lasts."""

    def __init__(self):
        self._made = deque(maxlen=RECENT)  # code points, seconds to make it, seconds of its sound
        self._manner = None

    def note(self, voice, speed, length, seconds, sound):
        if (voice, speed) != self._manner:  # another may be faster or slower
            self._made.clear()
            self._manner = voice, speed
        if length and seconds and sound:
            self._made.append((length, seconds, sound))

    def longest(self, left):
        """Code points of the next piece, where so many seconds of sound are left that nobody has heard yet; None before
        there was one, and where none can keep up."""
        if not self._made:
            return None
        lengths, seconds, sounds = zip(*self._made)
        are_alike = max(lengths) < GROWTH * min(lengths)
        fixed, each = line(lengths, seconds, SHARE_IF_ALIKE if are_alike else LEAST_SHARE)
        gain = sum(sounds) / sum(lengths) - each
        if gain <= 0:
            return None
        in_time = (RESERVE * left - fixed) / each
        tried = GROWTH * min(lengths) if are_alike else 0
        return int(max(in_time, min(max(tried, SPARE * fixed / gain), 2 * max(lengths))))


def line(lengths, seconds, least_share):
    """What any piece takes, and what each code point more: the least squares, of which a share by length at least."""
    count = len(lengths)
    length, mean = sum(lengths) / count, sum(seconds) / count
    spread = sum((one - length) ** 2 for one in lengths)
    slope = sum((one - length) * (other - mean) for one, other in zip(lengths, seconds)) / spread if spread else mean
    each = max(least_share * mean / length, min(slope, mean / length))
    return mean - each * length, each
