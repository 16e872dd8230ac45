"""Ten thousand broken requests."""

import fuzz


def test_broken_requests_leave_it_answering(engine):
    fuzz.assert_survives(engine, seed=2, count=10_000)
