"""Piper with a real voice: from the choice to what a recogniser understands of the sound."""

import ear
import file_server as does
from engine_process import exists
from real_voices import PIPER as VOICE
from real_voices import PIPER_PLACE as PLACE
from real_voices import engine, proportional, recorder  # noqa: F401
from sound import until
from test_real_voice import TEXT

MEMORY = 300  # MB, proportional
# The voice is a small one and draws its intonation anew each time: 2 to 4 words in 100 were seen.
WRONG = 0.07


def choose(engine, **changes):  # noqa: F811
    assert engine.post("/config", engine="piper", **changes) == (200, {"ok": True})


def ready(engine):  # noqa: F811
    return until(lambda: (s := engine.status())["ready"] and s, 120, "the voice is ready")


def test_a_chosen_voice_is_fetched_and_understood(engine, server, recorder):  # noqa: F811
    choose(engine, voice=VOICE)
    status = ready(engine)
    assert (status["engine"], status["voice"], status["download"]) == ("piper", VOICE, None)
    assert [name for name, _ in server.requests] == [name for name in server.files if name.startswith(PLACE)]
    assert "CC0" in engine.log()
    (worker,) = engine.helpers("tavin.synthesis.worker", "piper")
    begin = len(recorder.samples)
    engine.speak(TEXT)
    most = [proportional(worker)]
    until(lambda: most.append(proportional(worker)) or engine.status()["state"] == "idle", 600, "the end")
    assert engine.status()["error"] is None
    recorder.quiet_for(0.5)
    heard = ear.understood(recorder.samples[begin:])
    wrong = ear.wrong_words(TEXT, heard)
    print(f"{wrong} of {len(ear.words(TEXT))} words wrong, {max(most):.0f} MB")
    assert wrong <= WRONG * len(ear.words(TEXT)), heard
    assert max(most) < MEMORY


def test_a_voice_that_is_ready_is_loaded_before_its_first_text(engine, recorder, tmp_path):  # noqa: F811
    choose(engine, voice=VOICE)
    ready(engine)
    (tmp_path / "data" / "tavin" / "piper" / f"{VOICE}.onnx").unlink()
    engine.speak("Hello there.")
    recorder.loud_for(0.1)
    assert engine.wait_for("idle", 30)["error"] is None


def test_voices_are_the_catalogues_with_the_users_language_first(engine):  # noqa: F811
    code, voices = engine.request("GET", "/voices?engine=piper")
    assert code == 200
    assert len(voices) > 90
    english = [voice["id"].startswith("en") for voice in voices]
    assert english == sorted(english, reverse=True) and voices[0]["id"].startswith("en_US")
    assert {"id": "de_DE-thorsten-high", "name": "Thorsten – Deutsch (Deutschland), high quality"} in voices


def test_another_choice_ends_the_download_and_what_came_is_kept(engine, server, tmp_path):  # noqa: F811
    server.plans = [does.stall_after(1_000_000)]
    choose(engine, voice=VOICE)
    part = tmp_path / "data" / "tavin" / "piper" / f"{VOICE}.onnx.part"
    until(lambda: part.exists() and part.stat().st_size >= 1_000_000, 60, "what comes before the stall")
    helper = engine.helper("tavin.setup.preparation")
    server.files["de/de_DE/thorsten/high/de_DE-thorsten-high.onnx"] = b"too little"
    assert engine.post("/config", voice="de_DE-thorsten-high")[0] == 200
    until(lambda: not exists(helper), 5, "the end of the first download")
    kept = part.stat().st_size
    assert kept >= 1_000_000
    assert engine.post("/config", voice=VOICE)[0] == 200
    ready(engine)
    assert (f"{PLACE}{VOICE}.onnx", kept) in server.requests
