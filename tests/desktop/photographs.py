"""Pictures of Tavin's windows, on every desktop."""

from alerts import FAILED, wait_for_alert
from driver import Tavin
from engine import RecordingEngine
from pixels import on_screen
from session import wait_until

ERROR = "The sound output was disconnected."


def show_alert(desktop, build, **settings):
    """Returns its window once it has the keyboard."""
    def fails(engine):
        engine.status = {**engine.status, **FAILED, "setup_error": ERROR}
    return show(desktop, build, settings, fails, "speak", lambda: wait_for_alert(desktop))


def show_menu(desktop, build, **settings):
    """The same with the small menu."""
    def window():
        found = desktop.windows("tavin")
        # GNOME knows one before it has a size.
        return found[0] if found and min(desktop.box(found[0])[2:]) > 0 else None
    return show(desktop, build, settings, lambda _: None, "menu",
                lambda: wait_until(window, 10, "the small menu"))


def show(desktop, build, settings, prepare, action, window):
    engine = RecordingEngine()
    try:
        prepare(engine)
        tavin = Tavin(desktop, engine, build, settings={"LANG": "en_US.UTF-8", **settings})
        tavin.action(action)
        return window()
    finally:
        engine.close()


def of_window(desktop, window, scale=1):
    """Its picture once it is drawn and stays as it is. `scale` is how many of the screen's points are one
    of the desktop's."""
    return once_drawn(lambda: on_screen(desktop, *(round(scale * side) for side in desktop.box(window))))


def once_drawn(take):
    """The picture that `take` takes, when what it shows is there and stays as it is."""
    pictures = [take()]

    def drawn():
        pictures.append(take())
        return pictures[-1].is_drawn() and pictures[-1].is_like(pictures[-2])
    wait_until(drawn, 10, "a window that is drawn", interval=0.2)
    return pictures[-1]
