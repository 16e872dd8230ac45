"""No timer of many seconds wakes an engine that has nothing to say."""

from sound import until
from test_idle import processes, sleep_is_seen

WATCHED_SECONDS = 30


def test_no_wake_up_in_half_a_minute_after_speaking(engine, sound_server):
    engine.speak("Some words.")
    engine.wait_for("speaking")
    engine.wait_for("idle")
    until(lambda: not sound_server.streams(), 1, "the stream's end")
    asleep(engine)


def test_no_wake_up_in_half_a_minute_of_a_pause(engine):
    engine.speak("Some words that will be paused, for as long as it takes. " * 5)
    engine.wait_for("speaking")
    engine.post("/toggle-pause")
    asleep(engine)


def asleep(engine):
    sleep_is_seen(processes(engine), WATCHED_SECONDS)
