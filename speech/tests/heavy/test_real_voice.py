"""Kokoro with its real model: from the choice to what a recogniser understands of the sound."""

import time
from pathlib import Path

import ear
from real_voices import engine, proportional, recorder  # noqa: F401
from sound import until
from test_neural import choose, neural_worker

MEMORY = 350  # MB, proportional
WRONG = 0.03
TEXT = (Path(__file__).parent / "walk.txt").read_text("utf-8")


def read_out(engine, recorder, text):  # noqa: F811
    """The samples that were heard, and the most memory that the worker had meanwhile."""
    begin = len(recorder.samples)
    worker = neural_worker(engine)
    most = []
    asked = time.monotonic()
    engine.speak(text)
    until(lambda: most.append(proportional(worker)) or engine.status()["state"] == "speaking", 60, "speech")
    print("first sound after", round(time.monotonic() - asked, 2))
    until(lambda: most.append(proportional(worker)) or engine.status()["state"] == "idle", 600, "the end")
    assert engine.status()["error"] is None
    recorder.quiet_for(0.5)
    return recorder.samples[begin:], max(most)


def test_a_text_of_300_words_is_understood_and_costs_little_memory(engine, recorder):  # noqa: F811
    choose(engine)
    until(lambda: engine.status()["ready"], 120, "the voice is ready")
    count = len(ear.words(TEXT))
    assert count >= 300
    for speed in (1.0, 1.5):
        assert engine.post("/config", speed=speed)[0] == 200
        samples, memory = read_out(engine, recorder, TEXT)
        heard = ear.understood(samples)
        wrong = ear.wrong_words(TEXT, heard)
        print(f"speed {speed}: {wrong} of {count} words wrong, {memory:.0f} MB, {len(samples) / ear.RATE:.0f} s")
        assert wrong <= WRONG * count, heard
        assert memory < MEMORY
