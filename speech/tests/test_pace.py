"""How long the pieces of a neural voice become: by a voice that takes a known time for them, without a clock."""

import pytest
from tavin.pace import Pace
from tavin.text.pieces import pieces

TEXT = "Halfway up the hill we met a farmer who was looking for his dog and he asked whether we had seen it anywhere " * 12
LONGEST, FIRST = 85, 24
SPOKEN = 0.058  # as Kokoro does; seconds of sound for a code point, at normal speed


def waits(fixed, each, speed=1.0, known=True):
    """How long a listener waits for each piece behind the first, and the pieces' lengths."""
    pace, left, gaps, lengths = Pace(), 0.0, [], []
    for piece in pieces(TEXT, "en-us", LONGEST, FIRST, in_time=lambda: pace.longest(left) if known else None):
        if piece:
            seconds, sound = fixed + each * len(piece), SPOKEN / speed * len(piece)
            gaps.append(max(0.0, seconds - left))
            lengths.append(len(piece))
            left = max(0.0, left - seconds) + sound
            pace.note("voice", speed, len(piece), seconds, sound)
    return gaps[1:], lengths


# What any piece takes, what each code point more takes, and the speed.
KEEPS_UP = [(0.02, 0.002, 2.0), (0.3, 0.005, 2.0), (0.5, 0.01, 1.5), (0.3, 0.02, 1.0), (0.8, 0.01, 1.0)]
# By lengths that double there is quiet.
KEEPS_UP_WITH_SHORT_PIECES = [(0.07, 0.027, 1.5), (0.07, 0.032, 1.5), (0.2, 0.02, 1.5), (0.05, 0.05, 1.0)]
TOO_SLOW_AT_FIRST = [(0.6, 0.01, 1.5), (0.5, 0.02, 1.2), (0.4, 0.02, 1.5), (0.6, 0.03, 1.0)]


@pytest.mark.parametrize("fixed, each, speed", KEEPS_UP)
def test_a_machine_that_keeps_up_makes_each_piece_while_the_one_before_is_heard(fixed, each, speed):
    gaps, _ = waits(fixed, each, speed)
    assert max(gaps) == 0


@pytest.mark.parametrize("fixed, each, speed", KEEPS_UP_WITH_SHORT_PIECES)
def test_pieces_are_no_longer_than_is_made_in_time(fixed, each, speed):
    assert max(waits(fixed, each, speed, known=False)[0]) > 0
    assert max(waits(fixed, each, speed)[0]) == 0


@pytest.mark.parametrize("fixed, each, speed", TOO_SLOW_AT_FIRST)
def test_where_short_pieces_are_made_slower_than_heard_there_is_less_quiet_than_by_lengths_that_double(fixed, each, speed):
    adapted, doubling = (waits(fixed, each, speed, known)[0] for known in (True, False))
    assert max(adapted) < max(doubling) and sum(adapted) < sum(doubling)
    assert max(adapted[len(adapted) // 2 :]) == 0, "it is ahead soon"


def test_a_fast_machine_has_whole_sentences_from_the_second_piece_on():
    _, lengths = waits(0.02, 0.002)
    assert lengths[0] <= FIRST and all(length > LONGEST * 3 // 4 for length in lengths[1:-1])


def test_pieces_grow_as_before_where_the_machine_cannot_keep_up():
    assert waits(1.0, 0.2)[1] == waits(1.0, 0.2, known=False)[1]


def test_a_machine_that_gets_busy_is_given_shorter_pieces():
    pace = Pace()
    for _ in range(8):
        pace.note("voice", 1.0, 80, 0.8, 5.6)
    before = pace.longest(3.0)
    pace.note("voice", 1.0, 80, 4.0, 5.6)
    assert pace.longest(3.0) < before


def test_pieces_of_one_length_say_little_of_longer_ones():
    pace = Pace()
    for seconds in (0.69, 0.72, 0.74, 0.82, 0.75, 0.72, 0.85):
        pace.note("voice", 1.0, 23, seconds, 1.3)
    pace.note("voice", 1.0, 21, 1.03, 1.3)  # the machine is busier, not slower with short pieces
    left = 1.58
    assert 23 < pace.longest(left) < 21 * left / 1.03


@pytest.mark.parametrize("voice, speed", [("another", 1.0), ("voice", 1.5)])
def test_of_another_voice_or_speed_nothing_is_known(voice, speed):
    pace = Pace()
    pace.note("voice", 1.0, 80, 0.1, 5.6)
    pace.note(voice, speed, 20, 2.0, 1.4)
    alone = Pace()
    alone.note(voice, speed, 20, 2.0, 1.4)
    assert pace.longest(3.0) == alone.longest(3.0)


def test_before_the_first_piece_nothing_is_known():
    pace = Pace()
    pace.note("voice", 1.0, 0, 1.0, 0.0)
    pace.note("voice", 1.0, 10, 0.0, 1.0)
    assert pace.longest(3.0) is None
