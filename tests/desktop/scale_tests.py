"""Tavin's windows on screens of many points. A test file imports these and gives NAME and `at_scale`: given
a folder, the build, a scale and whether the desktop is dark, it has a session, and yields its desktop,
how many points of the screen are one of the desktop's, and what Tavin is told of the look.

Where TAVIN_PICTURES names a folder, the pictures are left there.
"""

import os

import pytest
from photographs import of_window, show_alert, show_menu
from pixels import luminance

SCALES = [1.25, 1.5, 2]


@pytest.fixture(params=[False, True], ids=["light", "dark"])
def dark(request):
    return request.param


@pytest.fixture
def photograph(request, tmp_path, build, dark):
    """Of what `show` shows, at each scale, first of all at none."""
    def take(show):
        return {scale: keep(show, scale, at_scale(show, scale)) for scale in (1, *SCALES)}

    def at_scale(show, scale):
        folder = tmp_path / f"{scale}"
        folder.mkdir()
        with request.module.at_scale(str(folder), build, scale, dark) as (desktop, points, look):
            return of_window(desktop, show(desktop, build, **look), points)

    def keep(show, scale, picture):
        if folder := os.environ.get("TAVIN_PICTURES"):
            what, look = show.__name__.removeprefix("show_"), "dark" if dark else "light"
            picture.save(os.path.join(folder, f"{request.module.NAME}-{what}-{look}-{scale * 100:.0f}.png"))
        return picture
    return take


def assert_as_large_and_sharp(pictures, dark):
    """As the scale says. Where a compositor has no scale between them, Qt draws at the next whole one, and
    the compositor makes that smaller."""
    plain = pictures[1]
    assert (luminance(plain.ground()) < 0.2) is dark
    for scale in SCALES:
        picture = pictures[scale]
        for side, plain_side in zip(picture.size, plain.size):
            assert abs(side / plain_side / scale - 1) < 0.1, f"{picture.size} at {scale}"
        blurred = plain.stretched(scale).sharpness()
        assert picture.sharpness() > (blurred + plain.sharpness()) / 2, f"at {scale}"
    assert not pictures[2].is_made_of_blocks(2)


def test_an_alert_is_as_large_as_the_scale_says_and_as_sharp_as_without_one(photograph, dark):
    assert_as_large_and_sharp(photograph(show_alert), dark)


def test_so_is_the_small_menu_and_nothing_in_it_is_cut_off(photograph, dark):
    pictures = photograph(show_menu)
    assert_as_large_and_sharp(pictures, dark)
    plain = pictures[1].lines()
    assert len(plain) in (10, 11)  # On sway with a warning.
    for scale in SCALES:
        picture = pictures[scale]
        assert picture.rules() == 3
        lines = picture.lines()
        assert len(lines) == len(plain), f"at {scale}"
        for line, plain_line in zip(lines, plain):
            assert line == pytest.approx(plain_line, abs=0.03), f"at {scale}"
