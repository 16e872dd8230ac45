"""Ten thousand broken requests, or as many as there is time for in FUZZ_SECONDS, others each time or
those of FUZZ_SEED."""

import itertools
import os
import random
import time

import fuzz


def requests():
    if "FUZZ_SECONDS" not in os.environ:
        return fuzz.cases(seed=2, count=10_000)
    seed = int(os.environ.get("FUZZ_SEED") or random.SystemRandom().randrange(1 << 32))
    print("seed", seed)
    end = time.monotonic() + float(os.environ["FUZZ_SECONDS"])
    return itertools.takewhile(lambda _: time.monotonic() < end, fuzz.endless_cases(seed))


def test_broken_requests_leave_it_answering(engine):
    print("http:", fuzz.assert_survives(engine, requests()), "inputs")
