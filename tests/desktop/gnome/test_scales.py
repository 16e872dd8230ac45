"""Windows on GNOME, at the scale of its screen."""

import contextlib

import pytest

pytest.register_assert_rewrite("scale_tests")
from gi.repository import GLib  # noqa: E402
from gnome_desktop import NativeGnome, WillingDesktop  # noqa: E402
from scale_tests import *  # noqa: E402,F401,F403
from session import wait_until  # noqa: E402

NAME = "gnome"
SCREENS, SCREENS_PATH = "org.gnome.Mutter.DisplayConfig", "/org/gnome/Mutter/DisplayConfig"


def set_scale(session, scale):
    # Fractions are no scale to it otherwise.
    session.set("org.gnome.mutter", "experimental-features", "['scale-monitor-framebuffer']")

    def scales():
        return session.call(SCREENS, SCREENS_PATH, SCREENS, "GetCurrentState")

    def offered():
        serial, monitors, _, _ = scales()
        (connector, *_), (mode, *_), _ = monitors[0]
        near = [one for one in mode[5] if abs(one - scale) < 0.05]
        return (serial, connector, mode[0], near[0]) if near else None
    serial, connector, mode, exact = wait_until(offered, 10, f"a scale of {scale}")
    one = (0, 0, exact, 0, True, [(connector, mode, {})])
    session.call(SCREENS, SCREENS_PATH, SCREENS, "ApplyMonitorsConfig",
                 GLib.Variant("(uua(iiduba(ssa{sv}))a{sv})", (serial, 1, [one], {})))
    return exact


@contextlib.contextmanager
def at_scale(folder, _build, scale, dark):
    # On a smaller one GNOME offers no scale of 2.
    with NativeGnome(folder, size=(1920, 1200)) as session, contextlib.closing(
            WillingDesktop(session)) as desktop:
        exact = set_scale(session, scale)
        session.set("org.gnome.desktop.interface", "color-scheme", "prefer-dark" if dark else "default")
        desktop.hide_messages()
        yield desktop, exact, {}
