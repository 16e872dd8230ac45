"""Tavin's windows on screens of many points. A test file imports these and gives the fixture
`photograph`: given a scale and whether the desktop is dark, it shows an alert and returns its
picture.

Where TAVIN_PICTURES names a folder, the pictures are left there.
"""

import os

import pytest
from pixels import luminance

SCALES = [1.25, 1.5, 2]


@pytest.fixture(params=[False, True], ids=["light", "dark"])
def dark(request):
    return request.param


@pytest.fixture
def pictures(request, photograph, dark):
    """At each scale, first of all at none."""
    taken = {scale: photograph(scale, dark) for scale in (1, *SCALES)}
    if folder := os.environ.get("TAVIN_PICTURES"):
        for scale, picture in taken.items():
            look = "dark" if dark else "light"
            picture.save(os.path.join(folder, f"{request.module.NAME}-{look}-{scale * 100:.0f}.png"))
    return taken


# Where a compositor has no scale between them, Qt draws at the next whole one, and the compositor makes
# that smaller.
def test_an_alert_is_as_large_as_the_scale_says_and_as_sharp_as_without_one(pictures, dark):
    plain = pictures[1]
    assert (luminance(plain.colour(4, 20)) < 0.2) is dark
    for scale in SCALES:
        picture = pictures[scale]
        for side, plain_side in zip(picture.size, plain.size):
            assert abs(side / plain_side / scale - 1) < 0.1, f"{picture.size} at {scale}"
        blurred = plain.stretched(scale).sharpness()
        assert picture.sharpness() > (blurred + plain.sharpness()) / 2, f"at {scale}"
    assert not pictures[2].is_made_of_blocks(2)
