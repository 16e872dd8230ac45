"""A thousand broken requests; ten times as many are among the long tests."""

import fuzz


def test_broken_requests_leave_it_answering(engine):
    fuzz.assert_survives(engine, fuzz.cases(seed=1, count=1000))
