"""A sound server that hangs, is missing or comes later: told within three seconds, and nothing ends for it."""

import os
import shutil
import socket
import tempfile
import time

import pytest
from sound import RATE, Recorder, start_server
from spoken import expected, trimmed

TOLD_SECONDS = 3.0
TEXT = "Is anybody there?"


@pytest.fixture
def folder():
    made = tempfile.mkdtemp(prefix="tavin-")  # short: the path of a socket has little room
    yield made
    shutil.rmtree(made)


class Silent:
    """A sound server that lets programs connect and never answers."""

    def __init__(self, folder):
        self.environment = {"PULSE_SERVER": f"unix:{folder}/sound"}
        self._listener = socket.socket(socket.AF_UNIX)
        self._listener.bind(os.path.join(folder, "sound"))
        self._listener.listen()
        self._listener.settimeout(0)

    def connections(self):
        """How many there were since this was last asked."""
        count = 0
        while True:
            try:
                self._listener.accept()
            except BlockingIOError:
                return count
            count += 1

    def end(self, folder):
        self._listener.close()
        os.unlink(os.path.join(folder, "sound"))


@pytest.fixture
def silent(folder):
    return Silent(folder)


def assert_told(engine):
    """The sound server is blamed, soon."""
    asked = time.monotonic()
    engine.speak(TEXT)
    status = engine.wait_for("idle", TOLD_SECONDS)
    assert time.monotonic() - asked < TOLD_SECONDS
    assert "sound server" in status["error"] and "eSpeak" not in status["error"]


def assert_speaks(engine, server):
    recorder = Recorder(server)
    engine.speak(TEXT)
    assert engine.wait_for("idle")["error"] is None
    recorder.quiet_for(0.3)
    recorder.end()
    assert abs(len(trimmed(recorder.samples)) - len(trimmed(expected(TEXT)))) < 0.01 * RATE


def helpers(engine):
    return [engine.helper("tavin.synthesis.worker"), engine.helper("tavin.sound.player")]


def test_one_that_hangs_is_told_and_no_helper_ends_for_it(silent, new_engine):
    engine = new_engine(silent.environment).start()
    before = helpers(engine)
    for _ in range(2):
        assert_told(engine)
    assert helpers(engine) == before
    assert "worker ended" not in engine.log() and "player ended" not in engine.log()


def test_one_that_hangs_hides_no_voices(silent, new_engine):
    engine = new_engine(silent.environment).start()
    asked = time.monotonic()
    code, voices = engine.request("GET", "/voices?engine=espeak")
    assert time.monotonic() - asked < TOLD_SECONDS
    assert code == 200 and len(voices) > 50
    status = engine.status()
    assert (status["ready"], status["setup_error"]) == (True, None)


def test_only_the_player_connects_and_only_to_speak(silent, new_engine):
    engine = new_engine(silent.environment).start()
    helpers(engine)
    engine.request("GET", "/voices?engine=espeak")
    assert silent.connections() == 0
    assert_told(engine)
    assert silent.connections() == 1


def test_where_none_was_speech_begins_when_one_comes(folder, new_engine):
    engine = new_engine({"PULSE_SERVER": f"unix:{folder}/sound"}).start()
    before = helpers(engine)
    assert_told(engine)
    server = start_server(folder)
    assert_speaks(engine, server)
    assert helpers(engine) == before
    server.end()


def test_where_one_hung_speech_begins_when_another_comes(folder, silent, new_engine):
    engine = new_engine(silent.environment).start()
    before = helpers(engine)
    assert_told(engine)
    silent.end(folder)
    server = start_server(folder)
    assert_speaks(engine, server)
    assert helpers(engine) == before
    server.end()


def test_one_that_stops_in_the_midst_of_a_text_is_told_and_nothing_is_heard_of_the_rest(folder, new_engine):
    server = start_server(folder)
    engine = new_engine(server.environment).start()
    before = helpers(engine)
    recorder = Recorder(server)
    engine.speak("The quick brown fox jumps over the lazy dog, again and again. " * 20)
    recorder.loud_for(0.3)
    server.freeze(True)
    asked = time.monotonic()
    status = engine.wait_for("idle", TOLD_SECONDS + 1)
    assert time.monotonic() - asked < TOLD_SECONDS
    assert "sound server" in status["error"]
    server.freeze(False)
    recorder.quiet_for(0.5)
    recorder.end()
    assert_speaks(engine, server)
    assert helpers(engine) == before
    server.end()
