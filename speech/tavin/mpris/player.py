"""The reading as a player: its properties and what it can be asked for, as MPRIS has them.

A sentence is a track: its number is the track number, its text the title.
"""

from tavin.settings import FASTEST, SLOWEST, valid_speed
from tavin.text.spoken.marks import without_marks

PATH = "/org/mpris/MediaPlayer2"
PROGRAM = "org.mpris.MediaPlayer2"
PLAYER = PROGRAM + ".Player"
PROPERTIES = "org.freedesktop.DBus.Properties"
TRACK = "/app/tavin/Tavin/sentence/{}"
NO_TRACK = PATH + "/TrackList/NoTrack"
LONGEST_TITLE = 300  # code points


class Unknown(Exception):
    """There is no such interface, property or method; the arguments are the error's name and text."""


def unknown(what):
    return Unknown(f"org.freedesktop.DBus.Error.Unknown{what}", f"There is no such {what.lower()}.")


def refused(name, text):
    return Unknown(f"org.freedesktop.DBus.Error.{name}", text)


class Player:
    def __init__(self, engine):
        self._engine = engine
        self._methods = {
            ("org.freedesktop.DBus.Peer", "Ping"): nothing,
            (PROGRAM, "Raise"): nothing,
            (PROGRAM, "Quit"): nothing,
            (PLAYER, "Play"): lambda: engine.pause(False),
            (PLAYER, "Pause"): lambda: engine.pause(True),
            (PLAYER, "PlayPause"): engine.toggle_pause,
            (PLAYER, "Stop"): engine.stop,
            (PLAYER, "Next"): lambda: engine.next("sentence"),
            (PLAYER, "Previous"): lambda: engine.previous("sentence"),
            (PLAYER, "Seek"): nothing,
            (PLAYER, "SetPosition"): nothing,
            (PLAYER, "OpenUri"): nothing,
        }

    def method(self, interface, name):
        """What one of MPRIS's methods does; those without a meaning here do nothing, as it wants."""
        if (interface, name) not in self._methods:
            raise unknown("Method")
        return self._methods[interface, name]

    def properties(self, interface):
        """Names with D-Bus types and values."""
        if interface == PROGRAM:
            return PROGRAM_PROPERTIES
        if interface != PLAYER:
            raise unknown("Interface")
        return {
            "PlaybackStatus": ("s", self._engine.playback()),
            "Rate": ("d", self._engine.speed),
            "MinimumRate": ("d", SLOWEST),
            "MaximumRate": ("d", FASTEST),
            "Metadata": ("a{sv}", metadata(self._engine.place())),
            "Volume": ("d", 1.0),
            "Position": ("x", 0),
            **ABILITIES,
        }

    def property(self, interface, name):
        found = self.properties(interface)
        if name not in found:
            raise unknown("Property")
        return found[name]

    async def set(self, interface, name, value):
        self.property(interface, name)
        if (interface, name) == (PLAYER, "Volume"):
            return  # the desktop's own volume control is for that
        if (interface, name) != (PLAYER, "Rate"):
            raise refused("PropertyReadOnly", "This cannot be set.")
        if value == ("d", 0.0):
            self._engine.pause(True)  # as MPRIS has it
        elif value[0] == "d" and valid_speed(value[1]):
            await self._engine.configure({"speed": value[1]})
        else:
            raise refused("InvalidArgs", f"The rate must be from {SLOWEST} to {FASTEST}.")


def nothing():
    pass


def metadata(place):
    if place is None:
        return {"mpris:trackid": ("o", NO_TRACK)}
    return {
        "mpris:trackid": ("o", TRACK.format(place.sentence)),
        "xesam:title": ("s", title(place.text)),
        "xesam:artist": ("as", ["Tavin"]),  # panels fill its line with "unknown" otherwise
        "xesam:trackNumber": ("i", place.sentence + 1),
    }


def title(sentence):
    text = " ".join(without_marks(sentence).split())
    return text if len(text) <= LONGEST_TITLE else text[: LONGEST_TITLE - 1] + "…"


PROGRAM_PROPERTIES = {
    "Identity": ("s", "Tavin"),
    "DesktopEntry": ("s", "app.tavin.Tavin"),
    "CanQuit": ("b", False),
    "CanRaise": ("b", False),
    "HasTrackList": ("b", False),
    "SupportedUriSchemes": ("as", []),
    "SupportedMimeTypes": ("as", []),
}
ABILITIES = {
    "CanGoNext": ("b", True),
    "CanGoPrevious": ("b", True),
    "CanPlay": ("b", True),
    "CanPause": ("b", True),
    "CanSeek": ("b", False),
    "CanControl": ("b", True),
}
