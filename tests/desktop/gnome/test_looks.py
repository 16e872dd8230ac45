"""Windows on GNOME, in the look of its settings and without a frame."""

import pytest

pytest.register_assert_rewrite("look_tests")
from gnome_desktop import LEFT, RIGHT  # noqa: E402
from look_tests import *  # noqa: E402,F401,F403
from look_tests import lines_high, text_contrast  # noqa: E402
from photographs import of_window, show_alert  # noqa: E402
from pixels import luminance  # noqa: E402
from session import wait_until  # noqa: E402

LOOKS = {"usual": ("org.gnome.desktop.interface", "color-scheme", "default"),
         "dark": ("org.gnome.desktop.interface", "color-scheme", "prefer-dark"),
         "high contrast": ("org.gnome.desktop.a11y.interface", "high-contrast", "true"),
         "letters at 150 %": ("org.gnome.desktop.interface", "text-scaling-factor", "1.5"),
         "large letters": ("org.gnome.desktop.interface", "text-scaling-factor", "2.0")}


@pytest.fixture
def photograph(session, desktop, build):
    def take(look):
        schema, key, value = LOOKS[look]
        session.set(schema, key, value)
        try:
            desktop.hide_messages()
            return of_window(desktop, show_alert(desktop, build))
        finally:
            desktop.close()
            session.run(["gsettings", "reset", schema, key])
    return take


def test_the_dark_style_is_followed(photograph):
    dark = photograph("dark")
    assert luminance(dark.colour(4, 20)) < 0.05
    assert text_contrast(dark) > 10
    assert luminance(photograph("usual").colour(4, 20)) > 0.7


def test_letters_are_as_high_as_the_text_scale_says(photograph):
    usual = lines_high(photograph("usual"))
    assert lines_high(photograph("letters at 150 %")) / usual == pytest.approx(1.5, abs=0.2)
    assert lines_high(photograph("large letters")) / usual == pytest.approx(2, abs=0.2)


def test_an_alert_is_dragged_by_its_background_with_the_left_button(desktop, build):
    alert = show_alert(desktop, build)
    desktop.wait_for_calm()

    def place():
        return desktop.window(alert)["rect"][:2]

    def drag(button):
        left, top, _, height = desktop.window(alert)["rect"]
        x, y = left + 4, top + height // 2
        desktop.drag((x, y), (x + 30, y + 30), (x + 60, y + 60), (x + 90, y + 90), code=button)
        desktop.wait_for_calm()
    before = place()
    drag(RIGHT)
    assert place() == before
    drag(LEFT)
    wait_until(lambda: all(now - then > 20 for now, then in zip(place(), before)), 5, "the moved alert")
