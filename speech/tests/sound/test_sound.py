"""What is really heard: the sink's monitor is recorded."""

import os
import signal
import time

from measures import (
    MOVE_LIMIT,
    ROUNDS,
    SILENCE_LIMIT,
    STATUS_LIMIT,
    begin_after,
    best_of,
    memory_of_all,
    silence_after,
    time_of_move,
    usual_status,
)
from sound import RATE, until
from spoken import difference_in_speech, expected, trimmed, without_silence

LONG = "The quick brown fox jumps over the lazy dog, again and again and again. " * 20


def test_speech_is_heard_whole_and_in_order(engine, recorder):
    text = "Hello there. This is the second sentence, a longer one! And a third?"
    engine.speak(text)
    assert engine.wait_for("speaking")["chars"] == len(text)
    engine.wait_for("idle")
    recorder.quiet_for(0.5)
    assert difference_in_speech(recorder.samples, expected(text)) is None
    assert engine.status()["chars"] == 0
    assert engine.status()["error"] is None


def test_stop_silences_at_once(engine, recorder, sound_server):
    def stopped():
        engine.speak(LONG)
        return silence_after(engine, recorder, "/stop", "idle")

    with sound_server.prompt():
        assert best_of(ROUNDS, SILENCE_LIMIT, stopped) < SILENCE_LIMIT


def test_pause_silences_at_once(engine, recorder, sound_server):
    engine.speak(LONG)

    def paused():
        silence = silence_after(engine, recorder, "/toggle-pause", "paused")
        engine.post("/toggle-pause")
        return silence

    with sound_server.prompt():
        assert best_of(ROUNDS, SILENCE_LIMIT, paused) < SILENCE_LIMIT


def test_paused_speech_goes_on_at_the_same_sample(engine, recorder):
    text = "One sentence that is long enough to be paused in the very middle of it, and then resumed."
    engine.speak(text)
    for _ in range(2):
        silence_after(engine, recorder, "/toggle-pause", "paused")
        engine.post("/toggle-pause")
    engine.wait_for("idle")
    recorder.quiet_for(0.5)
    # The pauses add silence and nothing else.
    assert difference_in_speech(recorder.samples, expected(text)) is None


def test_a_new_text_replaces_the_old_one(engine, recorder):
    engine.speak(LONG)
    recorder.loud_for(0.3)
    engine.speak("Something else.")
    assert engine.status()["chars"] == len("Something else.")
    begin = time.monotonic()
    engine.wait_for("idle")
    assert time.monotonic() - begin < 4
    assert engine.status()["error"] is None


def test_presses_in_quick_succession_leave_the_last_text(engine, recorder):
    for _ in range(20):
        engine.speak(LONG)
        engine.post("/toggle-pause")
        engine.post("/stop")
        engine.speak(LONG)
    engine.speak("The last one.")
    status = engine.wait_for("idle")
    assert status["error"] is None
    recorder.quiet_for(0.3)
    assert recorder.last_loud


def test_a_pause_before_the_first_sound_holds_it_back(engine, recorder):
    worker = engine.helper("tavin.synthesis.worker")
    os.kill(worker, signal.SIGSTOP)
    engine.speak("This is said after the pause.")
    assert engine.status()["state"] == "loading"
    engine.post("/toggle-pause")
    assert engine.status()["state"] == "paused"
    os.kill(worker, signal.SIGCONT)
    time.sleep(0.7)
    assert recorder.last_loud is None
    engine.post("/toggle-pause")
    engine.wait_for("idle")
    recorder.quiet_for(0.3)
    wanted = expected("This is said after the pause.")
    assert difference_in_speech(recorder.samples, wanted) is None


def test_speed_and_voice_act_from_the_next_sentence_on(engine, recorder):
    sentence = "This sentence is spoken again and again."
    engine.speak(" ".join([sentence] * 4))
    recorder.loud_for(0.3)
    engine.post("/config", speed=3)
    engine.wait_for("idle", 30)
    recorder.quiet_for(0.3)
    heard = len(trimmed(recorder.samples)) / RATE
    normal = len(expected(sentence)) / RATE
    fast = len(expected(sentence, speed=3.0)) / RATE
    # The first one at the old speed, all others at the new one.
    assert abs(heard - (normal + 3 * fast)) < 0.5 * (normal - fast)


def test_what_was_heard_is_heard_again_sample_by_sample(engine, recorder):
    engine.speak("The first sentence is this one, and it is not short. The second one is the last.")
    recorder.loud_for(0.3)
    engine.post("/next")
    recorder.loud_for(0.3)
    begin = len(recorder.samples)
    engine.post("/previous")
    engine.wait_for("idle")
    recorder.quiet_for(0.5)
    heard = without_silence(recorder.samples[begin:]).tobytes()
    wanted = expected("The first sentence is this one, and it is not short. The second one is the last.")
    assert heard.endswith(without_silence(wanted).tobytes())
    assert engine.status()["error"] is None


def test_a_move_is_heard_within_60_ms(engine, recorder, sound_server):
    text = "The first sentence is this one, which is long enough. " + "Another one that is as long as that follows it. " * 40
    engine.speak(text)
    recorder.loud_for(0.3)
    first, second = (begin_after(engine, recorder, move) for move in ("repeat", "next"))

    def slowest():
        """Of a move to what was just heard, one back and one on to what was made ahead."""
        moves = (("repeat", second), ("previous", first), ("next", second))
        return max(time_of_move(engine, recorder, move, begin) for move, begin in moves)

    with sound_server.prompt():
        assert best_of(ROUNDS, MOVE_LIMIT, slowest) < MOVE_LIMIT


def test_a_move_while_paused_is_heard_after_the_pause(engine, recorder):
    engine.speak("The first sentence is this one. The second one is the last.")
    recorder.loud_for(0.3)
    engine.post("/toggle-pause")
    recorder.quiet_for(0.2)
    begin = len(recorder.samples)
    engine.post("/previous")
    assert engine.status()["state"] == "paused"
    recorder.quiet_for(0.5)
    assert not any(recorder.samples[begin:])
    engine.post("/toggle-pause")
    engine.wait_for("idle")
    recorder.quiet_for(0.3)
    wanted = expected("The first sentence is this one. The second one is the last.")
    assert difference_in_speech(recorder.samples[begin:], wanted) is None


def test_a_long_text_starts_at_once_with_constant_memory(engine, recorder):
    text = "The quick brown fox jumps over the lazy dog again. " * 200_000  # 10 MB
    engine.speak("Warm.")
    engine.wait_for("idle")
    before = memory_of_all(engine)
    engine.speak(text)
    asked = time.monotonic()
    engine.wait_for("speaking")
    assert time.monotonic() - asked < 1
    assert engine.status()["chars"] == len(text)
    recorder.loud_for(2)
    # The text itself, its JSON and room for a few sentences of sound.
    assert memory_of_all(engine) - before < 64 * 1024 * 1024
    engine.post("/stop")
    until(lambda: memory_of_all(engine) - before < 8 * 1024 * 1024, 2, "the text is let go of")
    begin = len(recorder.samples)
    engine.speak("\u200b" * 3_000_000 + "The end.")
    assert engine.wait_for("idle", 60)["error"] is None
    recorder.quiet_for(0.3)
    assert len(trimmed(recorder.samples[begin:])) > 0.3 * RATE
    assert memory_of_all(engine) - before < 8 * 1024 * 1024


def test_status_answers_at_once_while_speaking(engine, recorder):
    engine.post("/config", speed=3)
    engine.speak(LONG * 2)
    engine.wait_for("speaking")
    assert usual_status(engine) < STATUS_LIMIT


GERMAN = "Das ist ein Satz in deutscher Sprache, und er ist nicht der einzige."


def test_a_text_in_another_language_is_read_by_a_voice_of_that(engine, recorder):
    engine.speak(GERMAN)
    engine.wait_for("speaking")
    assert engine.status()["voice"] == "gmw/en-US"  # the choice stays
    engine.wait_for("idle")
    recorder.quiet_for(0.5)
    assert difference_in_speech(recorder.samples, expected(GERMAN, voice="gmw/de")) is None


def test_a_sentence_in_another_script_is_read_by_a_voice_that_knows_it(engine, recorder):
    engine.speak("This is English. Это русский язык.")
    engine.wait_for("idle", 30)
    recorder.quiet_for(0.5)
    english = len(expected("This is English."))
    russian = len(expected("Это русский язык.", voice="zle/ru"))
    spelled = len(expected("Это русский язык."))
    assert spelled > russian + RATE
    assert abs(len(trimmed(recorder.samples)) - english - russian) < RATE / 2


def test_scripts_of_both_directions_and_without_blanks_in_one_text(engine, recorder):
    parts = [
        ("This is English.", "gmw/en-US"),
        ("هذه جملة عربية.", "sem/ar"),
        ("这是中文。", "sit/cmn"),
        ("זה משפט.", "sem/he"),
        ("日本語です。", "jpx/ja"),
        ("The end.", "gmw/en-US"),
    ]
    engine.speak(" ".join(text for text, _ in parts))
    assert engine.wait_for("idle", 60)["error"] is None
    recorder.quiet_for(0.5)
    wanted = sum(len(without_silence(expected(text, voice=voice))) for text, voice in parts)
    assert abs(len(without_silence(recorder.samples)) - wanted) < RATE / 2
