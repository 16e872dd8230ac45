"""An engine that has nothing to say does nothing."""

import time
from pathlib import Path

from sound import until

WATCHED_SECONDS = 2


def switches(pid):
    """How often the process's threads were woken so far."""
    total = 0
    for status in Path(f"/proc/{pid}/task").glob("*/status"):
        for line in status.read_text().splitlines():
            if "ctxt_switches" in line:
                total += int(line.split()[1])
    return total


def processes(engine):
    return [engine.process.pid, engine.helper("tavin.synthesis.worker"), engine.helper("tavin.sound.player")]


def sleeps(pids, seconds):
    """Whether nothing runs for so long."""
    before = [switches(pid) for pid in pids]
    time.sleep(seconds)
    return before == [switches(pid) for pid in pids]


def sleep_is_seen(pids, seconds=WATCHED_SECONDS):
    """What the start or a text has set off may take its time on a busy machine, and is no wake-up."""
    until(lambda: sleeps(pids, 1) and sleeps(pids, seconds), 60 + seconds, "the engine asleep")


def assert_asleep(engine):
    sleep_is_seen(processes(engine))


def test_no_wake_up_after_the_start(engine):
    assert_asleep(engine)


def test_no_wake_up_and_no_stream_after_speaking(engine, sound_server):
    engine.speak("Some words.")
    engine.wait_for("speaking")
    assert len(sound_server.streams()) == 1
    engine.wait_for("idle")
    until(lambda: not sound_server.streams(), 1, "the stream's end")
    assert_asleep(engine)


def test_no_wake_up_while_paused(engine, sound_server):
    engine.speak("Some words that will be paused, for as long as it takes. " * 5)
    engine.wait_for("speaking")
    engine.post("/toggle-pause")
    assert_asleep(engine)
    engine.post("/stop")
    until(lambda: not sound_server.streams(), 1, "the stream's end")
