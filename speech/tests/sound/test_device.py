"""Devices come, go and sleep while Tavin speaks. On a sound server of the tests' own."""

import array
import os
import shutil
import tempfile
import threading

import pytest
from sound import RATE, Recorder, start_server, until
from spoken import expected, first_difference, trimmed, without_silence

LONG = "The quick brown fox jumps over the lazy dog, again and again and again. " * 20


@pytest.fixture
def server():
    folder = tempfile.mkdtemp(prefix="tavin-")
    made = start_server(folder)
    yield made
    made.end()
    shutil.rmtree(folder)


@pytest.fixture
def listen(server):
    """Makes recorders of sinks."""
    made = []

    def record(sink):
        made.append(Recorder(server, sink))
        return made[-1]

    yield record
    for recorder in made:
        recorder.end()


def test_the_sound_follows_the_default_device_and_falls_back_where_that_goes(server, listen, new_engine):
    engine = new_engine(server.environment).start()
    second = server.add_sink("second")
    one, two = listen("test"), listen("second")
    engine.speak(LONG)
    one.loud_for(0.3)
    assert two.last_loud is None
    server.set_default("second")
    two.loud_for(0.3)
    one.quiet_for(0.3)
    server.unload(second)  # goes on where the sound still can go
    one.loud_for(0.3)
    assert engine.status()["error"] is None


def test_the_loss_of_all_devices_is_told_and_survived(server, listen, new_engine):
    engine = new_engine(server.environment).start()
    player = engine.helper("tavin.sound.player")
    recorder = listen("test")
    engine.speak(LONG)
    recorder.loud_for(0.3)
    server.unload("module-null-sink")
    if server.has_always_a_sink:
        until(lambda: any("auto_null" in line and "RUNNING" in line for line in server.sinks()), 10,
              "the sound going nowhere")
        assert (engine.status()["state"], engine.status()["error"]) == ("speaking", None)
        engine.post("/stop")
    else:
        status = engine.wait_for("idle")
        assert (status["error"], status["chars"]) == ("The sound output was disconnected.", 0)
        engine.speak("Nobody hears this.")
        assert engine.wait_for("idle")["error"] == "No sound output is connected."
    server.add_sink("test")
    recorder = listen("test")
    engine.speak("Back again.")
    assert engine.wait_for("idle")["error"] is None
    recorder.quiet_for(0.3)
    # All of it: how it sounds depends a little on what was said before.
    assert abs(len(trimmed(recorder.samples)) - len(trimmed(expected("Back again.")))) < 0.01 * RATE
    assert engine.helper("tavin.sound.player") == player  # nothing of that ended it


class PipeSink:
    """A device that, unlike a recorded one, may fall asleep."""

    def __init__(self, server, folder):
        self._fifo = os.path.join(folder, "fifo")
        server.load("module-pipe-sink", f"file={self._fifo}", "sink_name=pipe", "format=s16le",
                    f"rate={RATE}", "channels=1", "use_system_clock_for_timing=yes")
        server.suspend_idle_sinks()
        self.samples = array.array("h")
        threading.Thread(target=self._take, daemon=True).start()

    def _take(self):
        with open(self._fifo, "rb", buffering=0) as fifo:
            while data := fifo.read(65536):
                self.samples.frombytes(data)


def test_the_first_word_is_not_lost_where_the_device_slept(server, new_engine):
    engine = new_engine(server.environment).start()
    server.unload("module-null-sink")
    sink = PipeSink(server, server.environment["HOME"])
    until(lambda: "SUSPENDED" in server.sinks()[0], 10, "the device asleep")
    engine.speak("Awake.")
    assert engine.wait_for("idle")["error"] is None
    wanted = expected("Awake.")
    until(lambda: len(without_silence(sink.samples)) >= len(without_silence(wanted)), 5, "all samples")
    assert first_difference(sink.samples, wanted) is None
