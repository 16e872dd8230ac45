"""Windows on GNOME, in the look of its settings."""

import pytest

pytest.register_assert_rewrite("look_tests")
from look_tests import *  # noqa: E402,F401,F403
from look_tests import text_contrast  # noqa: E402
from photographs import on_gnome  # noqa: E402
from pixels import luminance  # noqa: E402

LOOKS = {"usual": ("org.gnome.desktop.interface", "color-scheme", "default"),
         "dark": ("org.gnome.desktop.interface", "color-scheme", "prefer-dark"),
         "high contrast": ("org.gnome.desktop.a11y.interface", "high-contrast", "true"),
         "large letters": ("org.gnome.desktop.interface", "text-scaling-factor", "2.0")}


@pytest.fixture
def photograph(session, desktop, build):
    chosen = []

    def take(look):
        chosen.append(LOOKS[look][:2])
        session.set(*LOOKS[look])
        try:
            return on_gnome(desktop, build)
        finally:
            desktop.close()
    yield take
    for schema, key in chosen:
        session.run(["gsettings", "reset", schema, key])


def test_the_dark_style_is_followed(photograph):
    dark = photograph("dark")
    assert luminance(dark.colour(4, 20)) < 0.05
    assert text_contrast(dark) > 10
    assert luminance(photograph("usual").colour(4, 20)) > 0.7
