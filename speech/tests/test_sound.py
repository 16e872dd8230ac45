"""What is really heard: the sink's monitor is recorded."""

import time

from sound import LOUD, RATE
from spoken import expected, first_difference, without_silence

LONG = "The quick brown fox jumps over the lazy dog, again and again and again. " * 20
LIMIT = 0.1


def test_speech_is_heard_whole_and_in_order(engine, recorder):
    text = "Hello there. This is the second sentence, a longer one! And a third?"
    engine.speak(text)
    assert engine.wait_for("speaking")["chars"] == len(text)
    engine.wait_for("idle")
    recorder.quiet_for(0.5)
    assert first_difference(recorder.samples, expected(text)) is None
    assert engine.status()["chars"] == 0
    assert engine.status()["error"] is None


def test_stop_silences_at_once(engine, recorder):
    engine.speak(LONG)
    recorder.loud_for(0.5)
    asked = time.monotonic()
    engine.post("/stop")
    assert engine.status()["state"] == "idle"
    recorder.quiet_for(0.6)
    print("silence after", recorder.last_loud - asked)
    assert recorder.last_loud - asked < LIMIT


def test_pause_silences_at_once_and_resumes_at_the_same_sample(engine, recorder):
    text = "One sentence that is long enough to be paused in the very middle of it, and then resumed. " * 2
    engine.speak(text)
    for _ in range(3):
        recorder.loud_for(0.5)
        asked = time.monotonic()
        engine.post("/toggle-pause")
        assert engine.status()["state"] == "paused"
        recorder.quiet_for(0.6)
        print("silence after", recorder.last_loud - asked)
        assert recorder.last_loud - asked < LIMIT
        engine.post("/toggle-pause")
    engine.wait_for("idle")
    recorder.quiet_for(0.5)
    # The pauses add silence and nothing else.
    assert first_difference(without_silence(recorder.samples), without_silence(expected(text))) is None
