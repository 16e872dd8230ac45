"""Kokoro with its real model: from the choice to what a recogniser understands of the sound."""

import time
from pathlib import Path

import ear
import file_server as does
import pytest
import real_voices
from real_voices import proportional
from sound import Recorder, until
from test_neural import choose, neural_worker

MEMORY = 350  # MB, proportional
WRONG = 0.03
TEXT = (Path(__file__).parent / "walk.txt").read_text("utf-8")


@pytest.fixture
def engine(tmp_path, new_engine):
    server = does.FileServer()
    yield new_engine(tree=real_voices.tree(tmp_path / "tree", tmp_path / "data", server).folder).start()
    server.end()


@pytest.fixture
def recorder(sound_server):
    recording = Recorder(sound_server, rate=ear.RATE)
    yield recording
    recording.end()


def read_out(engine, recorder, text):
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


def test_a_text_of_300_words_is_understood_and_costs_little_memory(engine, recorder):
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
