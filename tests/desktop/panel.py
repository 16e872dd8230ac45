"""Panels with a tray, and who stands in it."""

import os

from session import wait_until

ENTRY = "app.tavin.Tavin.desktop"
VOLUME = (1562, 1184)  # Its plugin's icon, beside Tavin's.
XFCE4_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=8;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
        <value type="int" value="3"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="tasklist"/>
    <property name="plugin-2" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-3" type="string" value="systray"/>
  </property>
</channel>
"""


# Left of the tray: volume and players.
SOUND = (('<value type="int" value="3"/>', '<value type="int" value="4"/>'),
         ('<property name="plugin-3"', '<property name="plugin-4" type="string" value="pulseaudio"/>'))


def with_sound(panel):
    for before, more in SOUND:
        panel = panel.replace(before, more + before)
    return panel


def prepare_for_players(desktop, build):
    """What xfce4-panel's volume plugin needs to show a player."""
    folder = os.path.join(desktop.session.env["XDG_DATA_HOME"], "applications")
    os.makedirs(folder)
    os.symlink(os.path.join(build, "share/applications", ENTRY), os.path.join(folder, ENTRY))
    # Of another desktop that is installed the bus would start one that waits for its shell.
    desktop.start(["/usr/bin/python3", "-m", "dbusmock", "--session", "--template",
                   "notification_daemon"])
    wait_until(lambda: "org.freedesktop.Notifications" in desktop.session.run(
        ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
         "org.freedesktop.DBus.ListNames"]), 20, "a service for notifications")


def start_xfce4_panel(desktop, dark=True, sound=False):
    """A panel with a tray along the lower edge; returns its process."""
    folder = os.path.join(desktop.session.env["XDG_CONFIG_HOME"],
                          "xfce4/xfconf/xfce-perchannel-xml")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "xfce4-panel.xml"), "w", encoding="utf-8") as f:
        panel = with_sound(XFCE4_PANEL) if sound else XFCE4_PANEL
        f.write(panel if dark else panel.replace('"true"', '"false"', 1))
    wait_for_no_tray(desktop)
    process = desktop.start(["xfce4-panel", "--disable-wm-check"])
    wait_until(lambda: tray_items(desktop) is not None, 30, "tray of xfce4-panel")
    return process


LXQT_PANEL = """[General]
panels=panel1
[panel1]
alignment=-1
plugins=spacer, statusnotifier
position=Bottom
width=100
width-percent=true
panelSize=32
iconSize=22
[spacer]
type=spacer
expandable=true
size=2000
[statusnotifier]
type=statusnotifier
"""


def set_lxqt_theme(session, theme):
    folder = os.path.join(session.env["XDG_CONFIG_HOME"], "lxqt")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "lxqt.conf"), "w", encoding="utf-8") as f:
        f.write(f"[General]\ntheme={theme}\n")


def start_lxqt_panel(desktop, theme=None):
    """The same with lxqt-panel."""
    if theme:
        set_lxqt_theme(desktop.session, theme)
    folder = os.path.join(desktop.session.env["XDG_CONFIG_HOME"], "lxqt")
    os.makedirs(folder, exist_ok=True)
    path = os.path.join(folder, "panel.conf")
    with open(path, "w", encoding="utf-8") as f:
        f.write(LXQT_PANEL)
    wait_for_no_tray(desktop)
    process = desktop.start(["lxqt-panel", "-c", path])
    wait_until(lambda: tray_items(desktop) is not None, 30, "tray of lxqt-panel")
    return process


def tray_items(desktop):
    """The services registered with the session's tray; None where there is no tray."""
    out = desktop.session.run(
        ["dbus-send", "--session", "--print-reply", "--reply-timeout=2000",
         "--dest=org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
         "org.freedesktop.DBus.Properties.Get", "string:org.kde.StatusNotifierWatcher",
         "string:RegisteredStatusNotifierItems"], check=False, stderr=-3)
    if "array" not in out:
        return None
    return [line.split('"')[1] for line in out.splitlines() if '"' in line]


def wait_for_no_tray(desktop):
    """xfce4-panel's tray is a process of its own, which outlives the panel for a moment and keeps
    the next tray out."""
    wait_until(lambda: tray_items(desktop) is None
               and not desktop.selection_owner("_NET_SYSTEM_TRAY_S0"), 20, "end of the tray before")
