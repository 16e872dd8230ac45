"""The icon in lxqt-panel."""

from panel import start_lxqt_panel, tray_items
from session import stop, wait_until


def test_the_icon_comes_back_after_a_restart_of_the_panel(desktop, tavin):
    panel = start_lxqt_panel(desktop)
    wait_until(lambda: tray_items(desktop), 10, "the icon")
    stop(panel)
    wait_until(lambda: tray_items(desktop) is None, 10, "end of the tray")
    start_lxqt_panel(desktop)
    wait_until(lambda: tray_items(desktop), 10, "the icon after the restart")
