"""What is heard of the neural voice, sample by sample: its real libraries and a tiny model."""

from itertools import groupby

import neural_models
import pytest
from measures import ROUNDS, SILENCE_LIMIT, best_of, silence_after
from sound import Recorder
from spoken import difference_in_speech, expected, longest_gap, trimmed
from test_neural import LONG, choose, engine, ready, tree  # noqa: F401

RATE = 24000  # the model's own, so that the samples come through as they are
GAP_LIMIT = 0.02  # seconds
WORDS = "one two three four five six seven eight nine ten eleven twelve".split()
# Sentences that are not cut however fast the voice is made, so that they sound the same each time.
IN_ORDER = " ".join(f"This is {word}, the next comes." for word in WORDS)
SHORT = "The quick fox jumps over a dog. "


@pytest.fixture
def recorder(sound_server):
    sink = sound_server.add_sink("wide", RATE)
    sound_server.set_default("wide")
    recording = Recorder(sound_server, "wide", RATE)
    yield recording
    recording.end()
    sound_server.unload(sink)


@pytest.fixture
def voice(engine, recorder):  # noqa: F811
    engine.start()
    choose(engine)
    ready(engine)
    return engine


@pytest.fixture
def wanted(tree, tmp_path):  # noqa: F811
    def sound_of(text, speed=1.0):
        environment = {"XDG_DATA_HOME": str(tmp_path / "data")}
        python = neural_models.libraries("kokoro") / "bin" / "python3"
        return expected(text, "af_heart", speed, "kokoro", tree.folder, environment, python)

    return sound_of


def test_sentences_are_heard_once_in_order_and_without_gaps(voice, recorder, wanted):
    voice.post("/config", speed=2)
    text = IN_ORDER + " " + SHORT * 12

    def gap():
        begin = len(recorder.samples)
        voice.speak(text)
        voice.wait_for("speaking")
        assert voice.wait_for("idle", 90)["error"] is None
        recorder.quiet_for(0.3)
        seconds = longest_gap(recorder.samples[begin:], wanted(text, 2.0)) / RATE
        print("longest gap", seconds)
        return seconds

    assert best_of(3, GAP_LIMIT, gap) < GAP_LIMIT


def test_stop_silences_at_once(voice, recorder):
    def stopped():
        voice.speak(LONG * 5)
        return silence_after(voice, recorder, "/stop", "idle")

    assert best_of(ROUNDS, SILENCE_LIMIT, stopped) < SILENCE_LIMIT


def test_pause_silences_at_once_and_resumes_at_the_same_sample(voice, recorder, wanted):
    voice.speak(SHORT * 3)

    def paused():
        silence = silence_after(voice, recorder, "/toggle-pause", "paused")
        voice.post("/toggle-pause")
        return silence

    assert min(paused(), best_of(ROUNDS, SILENCE_LIMIT, paused)) < SILENCE_LIMIT
    voice.wait_for("idle", 30)
    recorder.quiet_for(0.3)
    assert difference_in_speech(recorder.samples, wanted(SHORT * 3)) is None


def test_words_that_were_too_many_for_one_breath_are_not_parted_by_a_pause(voice, wanted):
    sound = trimmed(wanted("some more words and " * 40))
    silences = [len(list(run)) / RATE for loud, run in groupby(sound, bool) if not loud]
    print("longest silence", max(silences))
    assert max(silences) < 0.15
    # The end of a heading is.
    sound = trimmed(wanted("A heading\n\nThe text."))
    assert max(len(list(run)) / RATE for loud, run in groupby(sound, bool) if not loud) > 0.2
