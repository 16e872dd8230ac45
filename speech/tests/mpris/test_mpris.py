"""The player that a desktop sees while a text is read: the real engine, a bus of its own, playerctl."""

import contextlib
import json
import os
import subprocess
import sys
import time
from pathlib import Path

import pytest
from jeepney import DBusAddress, MessageType, new_method_call
from jeepney.bus_messages import message_bus
from sound import WITH_US, until
from tavin.log import log
from tavin.mpris import presence_of

FIRST = "The first sentence goes on" + " and on and on" * 15 + ". "  # several processes run while it is read
TEXT = FIRST + "The second one is longer. The third follows. " * 20
ABOUT = DBusAddress("/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2.tavin", "org.freedesktop.DBus.Properties")
PLAYER = "org.mpris.MediaPlayer2.Player"


class Desktop:
    """Sees the players of a bus as a desktop does."""

    def __init__(self, keyring):
        self._keyring = keyring
        self._environment = {**os.environ, **keyring.environment}

    def playerctl(self, *command):
        done = subprocess.run(
            ["playerctl", "--player=tavin", *command], env=self._environment, capture_output=True, text=True, timeout=10
        )
        return done.stdout.strip()

    def players(self):
        return subprocess.run(
            ["playerctl", "--list-all"], env=self._environment, capture_output=True, text=True, timeout=10
        ).stdout.split()

    @contextlib.contextmanager
    def following(self, key, path):
        """Have each new value of the player's written to a file."""
        command = ["stdbuf", "--output=L", "playerctl", "--player=tavin", "--follow", "metadata", key]
        with open(path, "wb") as file:
            process = subprocess.Popen([*WITH_US, *command], env=self._environment, stdout=file)
        try:
            yield
        finally:
            process.kill()
            process.wait()

    @contextlib.contextmanager
    def running(self, *command):
        process = subprocess.Popen([*WITH_US, *command], env=self._environment, stdout=subprocess.DEVNULL)
        try:
            yield
        finally:
            process.kill()
            process.wait()

    def active(self, *command):
        """What a media key does: it is for the player that was active last."""
        done = subprocess.run(
            ["playerctl", "--player=playerctld", *command], env=self._environment, capture_output=True, text=True, timeout=10
        )
        return done.stdout.strip()

    def title(self):
        return self.playerctl("metadata", "xesam:title")

    def wait_for_title(self, begin):
        until(lambda: self.title().startswith(begin), 10, f"the title {begin}")

    def call(self, message):
        with self._keyring.connected() as connection:
            return connection.send_and_get_reply(message, timeout=5)

    def all_of(self, interface):
        properties, = self.call(new_method_call(ABOUT, "GetAll", "s", (interface,))).body
        return {name: value for name, (_, value) in properties.items()}

    def owner(self):
        """The connection that has the player's name, or None."""
        answer = self.call(message_bus.GetNameOwner(ABOUT.bus_name))
        return answer.body[0] if answer.header.message_type == MessageType.method_return else None

    def set_rate(self, kind, rate):
        return self.call(new_method_call(ABOUT, "Set", "ssv", (PLAYER, "Rate", (kind, rate)))).header.message_type


@pytest.fixture
def desktop(keyring):
    return Desktop(keyring)


@pytest.fixture
def reading(desktop, start):
    engine = start()
    engine.speak(TEXT)
    until(lambda: desktop.players() == ["tavin"], 10, "the player")
    desktop.wait_for_title("The first")
    return engine


def test_the_player_is_there_while_a_text_is_read_or_paused_and_only_then(desktop, start):
    engine = start()
    assert desktop.players() == []
    engine.speak(TEXT)
    until(lambda: desktop.players() == ["tavin"], 10, "the player")
    engine.post("/toggle-pause")
    until(lambda: desktop.playerctl("status") == "Paused", 10, "paused")
    engine.post("/stop")
    until(lambda: desktop.players() == [], 10, "no player")
    engine.speak("This one is read to its end, and that takes a while, so that there is time to look at the bus.")
    until(lambda: desktop.players() == ["tavin"], 10, "the player")
    engine.wait_for("idle")
    until(lambda: desktop.players() == [], 10, "no player")


def test_the_desktops_player_steers_the_reading(desktop, reading):
    assert desktop.playerctl("status") == "Playing"
    desktop.playerctl("pause")
    assert reading.wait_for("paused")
    desktop.playerctl("pause")
    assert reading.status()["state"] == "paused"
    desktop.playerctl("next")
    desktop.wait_for_title("The second")
    assert desktop.playerctl("metadata", "xesam:trackNumber") == "2"
    assert reading.status()["state"] == "paused"
    desktop.playerctl("previous")
    desktop.wait_for_title("The first")
    desktop.playerctl("play")
    reading.wait_for("speaking")
    desktop.playerctl("play-pause")
    reading.wait_for("paused")
    desktop.playerctl("stop")
    reading.wait_for("idle")
    until(lambda: desktop.players() == [], 10, "no player")
    assert reading.status()["error"] is None


def test_a_desktop_that_shows_a_tracks_artist_shows_who_reads(desktop, reading):
    assert desktop.playerctl("metadata", "xesam:artist") == "Tavin"


def test_the_desktop_is_told_of_each_sentence(desktop, reading, tmp_path):
    told = tmp_path / "told"
    with desktop.following("xesam:title", told):
        until(lambda: "The first" in told.read_text(), 10, "that it follows")
        reading.speak("One of three sentences. Two of three sentences. Three of three sentences.")
        until(lambda: "Three" in told.read_text(), 30, "the last sentence")
    words = [line.split()[0] for line in told.read_text().splitlines() if line]
    assert words == ["The", "One", "Two", "Three"]


def test_the_rate_is_the_speed(desktop, reading):
    properties = desktop.all_of(PLAYER)
    assert (properties["Rate"], properties["MinimumRate"], properties["MaximumRate"]) == (1.0, 0.5, 3.0)
    assert desktop.set_rate("d", 1.5) == MessageType.method_return
    assert reading.status()["speed"] == desktop.all_of(PLAYER)["Rate"] == 1.5
    for kind, rate in (("d", 4.0), ("d", -1.0), ("d", float("nan")), ("s", "fast"), ("i", 1)):
        assert desktop.set_rate(kind, rate) == MessageType.error
    assert reading.status()["speed"] == 1.5
    reading.post("/faster")
    until(lambda: desktop.all_of(PLAYER)["Rate"] == 1.75, 10, "the new rate")
    assert desktop.set_rate("d", 0.0) == MessageType.method_return
    reading.wait_for("paused")


def test_the_rate_is_kept_for_the_next_start(desktop, reading):
    assert desktop.set_rate("d", 1.5) == MessageType.method_return
    assert reading.status()["speed"] == 1.5
    reading.kill()
    assert reading.start().status()["speed"] == 1.5


def test_it_says_who_it_is_and_what_it_can_do(desktop, reading):
    known = desktop.all_of("org.mpris.MediaPlayer2")
    assert (known["Identity"], known["DesktopEntry"], known["CanQuit"]) == ("Tavin", "app.tavin.Tavin", False)
    about = DBusAddress(ABOUT.object_path, ABOUT.bus_name, "org.freedesktop.DBus.Introspectable")
    told, = desktop.call(new_method_call(about, "Introspect")).body
    assert all(f'"{name}"' in told for name in (*known, *desktop.all_of(PLAYER), "Seek", "PlayPause"))
    reading.wait_for("speaking")


@pytest.mark.parametrize(
    "path, interface, method, signature, values",
    [("/", PLAYER, "Stop", None, ()),
     (ABOUT.object_path, PLAYER, "Explode", None, ()),
     (ABOUT.object_path, "org.example.Other", "Stop", None, ()),
     (ABOUT.object_path, ABOUT.interface, "Get", "s", (PLAYER,)),
     (ABOUT.object_path, ABOUT.interface, "Get", "ss", (PLAYER, "Nothing")),
     (ABOUT.object_path, ABOUT.interface, "GetAll", "s", ("org.example.Other",)),
     (ABOUT.object_path, ABOUT.interface, "Set", "ssv", (PLAYER, "Metadata", ("s", "x")))],
)  # fmt: skip
def test_what_it_does_not_know_is_refused(desktop, reading, path, interface, method, signature, values):
    address = DBusAddress(path, ABOUT.bus_name, interface)
    assert desktop.call(new_method_call(address, method, signature, values)).header.message_type == MessageType.error
    assert desktop.playerctl("status") == "Playing"


def test_the_title_is_the_sentence_as_a_person_reads_it(desktop, start):
    engine = start()
    engine.speak("See [the page](https://example.org/a)   and\n`some_code` for $5. " + "More of it. " * 50)
    until(lambda: desktop.title() == "See the page and some code for $5.", 10, "the title")
    engine.speak("word " * 300)
    until(lambda: desktop.title().startswith("word"), 10, "the long title")
    assert len(desktop.title()) <= 300


def test_it_can_be_turned_off_for_good(desktop, start, tmp_path):
    settings = tmp_path / "config" / "tavin" / "engine.json"
    settings.parent.mkdir(parents=True)
    settings.write_text('{"mpris": false}')
    engine = start()
    engine.post("/config", speed=1.25)
    engine.speak(TEXT)
    engine.wait_for("speaking")
    assert desktop.players() == []
    stored = json.loads(settings.read_text())
    assert (stored["mpris"], stored["speed"]) == (False, 1.25)


def test_without_the_library_there_is_no_player_and_a_line_in_the_log(monkeypatch, caplog):
    monkeypatch.delitem(sys.modules, "tavin.mpris.presence", raising=False)
    monkeypatch.setitem(sys.modules, "jeepney", None)
    with caplog.at_level("INFO", logger=log.name):
        nowhere = presence_of(None)
    nowhere.show()
    nowhere.tell()
    nowhere.hide()
    assert "python3-jeepney" in caplog.text


def test_it_does_not_answer_where_another_player_is_the_active_one_unless_it_is_asked(desktop, reading, tmp_path):
    asked = tmp_path / "asked"
    asked.touch()
    with desktop.running("playerctld"):
        until(lambda: desktop.active("metadata", "xesam:title").startswith("The first"), 10, "who knows the active one")
        desktop.playerctl("pause")
        reading.wait_for("paused")
        with desktop.running(sys.executable, "-B", str(Path(__file__).with_name("other_player.py")), str(asked)):
            until(lambda: desktop.active("metadata", "xesam:title") == "A song", 10, "the other player to be the active one")
            for command in ("play-pause", "next", "stop"):
                desktop.active(command)
            until(lambda: asked.read_text().split() == ["PlayPause", "Next", "Stop"], 10, "what the other was asked for")
            assert reading.status()["state"] == "paused"
            assert desktop.title().startswith("The first")
            assert desktop.active("metadata", "xesam:title") == "A song", "a paused reading tells nothing"
            desktop.playerctl("play")
            reading.wait_for("speaking")


def test_a_new_text_keeps_the_player(desktop, reading):
    before = desktop.owner()
    reading.speak("Another text" + ", and more of it" * 20)
    desktop.wait_for_title("Another")
    assert desktop.owner() == before


def test_a_bus_that_hangs_or_ends_holds_nothing_up(keyring, desktop, reading):
    reading.post("/stop")
    until(lambda: desktop.players() == [], 10, "no player")
    before = sockets(reading)
    keyring.freeze_bus()
    begin = time.monotonic()
    for _ in range(5):
        reading.speak("This is read without a bus.")
        reading.wait_for("speaking")
        reading.post("/stop")
    assert time.monotonic() - begin < 10
    until(lambda: sockets(reading) == before, 10, "no connection is left")
    keyring.freeze_bus(False)
    reading.speak(TEXT)
    desktop.wait_for_title("The first")
    keyring.end_bus()
    reading.post("/next")
    reading.wait_for("speaking")
    assert reading.status()["error"] is None


def test_after_a_message_that_would_hold_the_engine_up_the_player_comes_back(desktop, reading, keyring):
    large = new_method_call(ABOUT, "GetAll", "ay", (bytes(1 << 20),))
    before = desktop.owner()
    with keyring.connected() as connection:
        connection.send(large)
        until(lambda: desktop.owner() not in (None, before), 10, "another connection")
    desktop.wait_for_title("The first")
    assert reading.status()["state"] == "speaking"


def test_a_name_that_another_program_has_is_told_once(desktop, start, keyring):
    engine = start()
    with keyring.connected() as connection:
        connection.send_and_get_reply(message_bus.RequestName(ABOUT.bus_name))
        for _ in range(2):
            engine.speak(TEXT)
            until(lambda: "has the player's name" in engine.log(), 10, "the line in the log")
            engine.post("/stop")
        engine.speak(TEXT)
    desktop.wait_for_title("The first")
    assert engine.log().count("has the player's name") == 1


def sockets(engine):
    """How many the engine has."""
    found = 0
    for link in Path(f"/proc/{engine.process.pid}/fd").iterdir():
        with contextlib.suppress(FileNotFoundError):
            found += os.readlink(link).startswith("socket")
    return found
