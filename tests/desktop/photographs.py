"""Pictures of an alert, whose window each desktop finds in its own way."""

import os

from alerts import FAILED, wait_for_alert
from driver import Tavin
from engine import RecordingEngine
from pixels import Picture, on_screen
from session import wait_until

ERROR = "The sound output was disconnected."


def show_alert(desktop, build, **settings):
    """Returns its window once it has the keyboard."""
    engine = RecordingEngine()
    try:
        engine.status = {**engine.status, **FAILED, "setup_error": ERROR}
        tavin = Tavin(desktop, engine, build, settings={"LANG": "en_US.UTF-8", **settings})
        tavin.action("speak")
        return wait_for_alert(desktop)
    finally:
        engine.close()


def once_drawn(take):
    """The picture that `take` takes, when what it shows is there and stays as it is."""
    pictures = [take()]

    def drawn():
        pictures.append(take())
        return pictures[-1].is_drawn() and pictures[-1].is_like(pictures[-2])
    wait_until(drawn, 10, "an alert that is drawn", interval=0.2)
    return pictures[-1]


def on_x11(desktop, build, **settings):
    window = show_alert(desktop, build, **settings)
    told = desktop.session.run(["xwininfo", "-id", window]).splitlines()
    place = [int(next(line for line in told if label in line).split(":")[1]) for label in (
        "Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
    return once_drawn(lambda: on_screen(desktop, *place))


def on_gnome(desktop, build, scale=1):
    session = desktop.session
    window = show_alert(desktop, build)
    # The shell's own words about such a session.
    session.evaluate("Main.messageTray.getSources().forEach(s => s.destroy()); 0")
    session.evaluate("Main.messageTray.visible = false")
    desktop.wait_for_calm()
    sides = [round(scale * side) for side in desktop.window(window)["rect"]]
    path = os.path.join(session.folder, "screen.png")
    return once_drawn(lambda: session.picture(path) or Picture(path).part(*sides))
