"""Helpers that die, hang or are missing: an error that names them, and never the engine's end."""

import os
import signal
import time

from engine_process import exists
from sound import until
from spoken import difference_in_speech, expected, trimmed

DEADLY = "s'" * 220  # overruns a buffer of eSpeak NG 1.51, which then aborts
LONG = "The quick brown fox jumps over the lazy dog, again and again and again. " * 20


def test_a_text_that_aborts_the_synthesiser_costs_one_sentence(engine, recorder):
    worker = engine.helper("tavin.synthesis.worker")
    engine.speak(DEADLY + ". Hello there.")
    status = engine.wait_for("idle")
    assert "eSpeak NG" in status["error"]
    assert "SIGABRT" in status["error"]
    assert not exists(worker)
    recorder.quiet_for(0.5)
    # What was made of the bad sentence before the end comes first.
    wanted = trimmed(expected("Hello there."))
    assert trimmed(recorder.samples)[-len(wanted) :] == wanted
    engine.speak("Once more.")
    assert engine.status()["error"] is None
    assert engine.wait_for("idle")["error"] is None


def test_a_text_of_nothing_but_deadly_sentences_ends(engine):
    engine.speak((DEADLY + ". ") * 50)
    status = engine.wait_for("idle", 30)
    assert "eSpeak NG" in status["error"]


def test_a_killed_worker_is_replaced_while_speaking(engine, recorder):
    engine.speak(LONG)
    recorder.loud_for(0.3)
    first = engine.helper("tavin.synthesis.worker")
    os.kill(first, signal.SIGKILL)
    until(lambda: engine.helpers("tavin.synthesis.worker") not in ([], [first]), 10, "a new worker")
    recorder.loud_for(6)  # past all that was ready before
    assert engine.status()["state"] == "speaking"


def test_a_killed_worker_is_replaced_while_idle(engine):
    os.kill(engine.helper("tavin.synthesis.worker"), signal.SIGKILL)
    engine.speak("Still there.")
    engine.wait_for("speaking")
    assert engine.wait_for("idle")["error"] is None


def test_a_killed_player_is_an_error_and_replaced(engine, recorder):
    engine.speak(LONG)
    recorder.loud_for(0.3)
    os.kill(engine.helper("tavin.sound.player"), signal.SIGKILL)
    status = engine.wait_for("idle")
    assert "SIGKILL" in status["error"]
    engine.speak("Still there.")
    engine.wait_for("speaking")
    assert engine.wait_for("idle")["error"] is None


def test_a_worker_that_stalls_loses_no_sound(engine, recorder):
    text = "First sentence, which is heard. " + "Second one, with rather more words in it."
    worker = engine.helper("tavin.synthesis.worker")
    engine.speak(text)
    os.kill(worker, signal.SIGSTOP)
    time.sleep(1)
    os.kill(worker, signal.SIGCONT)
    engine.wait_for("idle", 30)
    recorder.quiet_for(0.5)
    assert difference_in_speech(recorder.samples, expected(text)) is None


def test_without_a_sound_server_the_error_says_so(new_engine, tmp_path):
    engine = new_engine({"PULSE_SERVER": f"unix:{tmp_path}/nothing"}).start()
    engine.speak(LONG)
    status = engine.wait_for("idle", 5)
    assert "sound server" in status["error"]
    assert status["chars"] == 0


def test_a_sound_server_that_hangs_is_an_error_and_stop_works_before(new_engine, sound_server):
    engine = new_engine().start()
    engine.helper("tavin.sound.player")
    sound_server.freeze(True)
    try:
        engine.speak(LONG)
        begin = time.monotonic()
        assert engine.status()["state"] == "loading"
        engine.post("/stop")
        assert engine.status()["state"] == "idle"
        engine.speak(LONG)
        assert time.monotonic() - begin < 1
        status = engine.wait_for("idle", 15)
        assert "sound server" in status["error"]
    finally:
        sound_server.freeze(False)
    engine.speak("Back again.")
    engine.wait_for("speaking")
    assert engine.wait_for("idle")["error"] is None


def test_a_sound_server_that_goes_away_is_an_error(engine, recorder, sound_server):
    engine.speak(LONG)
    recorder.loud_for(0.3)
    sound_server.end()
    try:
        assert "sound server" in engine.wait_for("idle")["error"]
    finally:
        sound_server.start()
    engine.speak("Back again.")
    engine.wait_for("speaking")
    assert engine.wait_for("idle")["error"] is None


def test_the_text_is_in_no_process_list_and_no_log(engine, recorder):
    secret = "xylophone quarrel"
    engine.speak(f"{secret.capitalize()}. " * 8 + DEADLY)  # which is reached after all was looked at
    recorder.loud_for(0.3)
    for pid in [engine.process.pid, *engine.helpers("tavin.synthesis.worker"), *engine.helpers("tavin.sound.player")]:
        for name in ("cmdline", "environ"):
            with open(f"/proc/{pid}/{name}", "rb") as file:
                assert b"xylophone" not in file.read().lower()
    until(lambda: engine.status()["error"], 20, "the abort")
    engine.request("POST", "/speak", '{"text": "' + secret)
    assert "xylophone" not in engine.log().lower()
    assert "s's'" not in engine.log()
