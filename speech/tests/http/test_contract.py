"""The wire contract, over real HTTP: every path, good and bad."""

import json

import pytest
from engine_process import MOVES, POSTS

FIELDS = {
    "state": str,
    "chars": int,
    "error": (str, type(None)),
    "engine": str,
    "voice": str,
    "speed": float,
    "ready": bool,
    "download": (float, type(None)),
    "setup_error": (str, type(None)),
    "engines": list,
    "error_id": (str, type(None)),
    "error_values": (list, type(None)),
    "setup_error_id": (str, type(None)),
    "setup_error_values": (list, type(None)),
}


def test_status_has_exactly_the_agreed_fields(shared):
    status = shared.status()
    assert set(status) == set(FIELDS)
    for name, kind in FIELDS.items():
        assert isinstance(status[name], kind), name
    assert status["state"] == "idle"
    assert status["chars"] == 0
    assert status["engine"] == "espeak"
    assert status["ready"] is True
    assert [info["name"] for info in status["engines"]] == ["kokoro", "piper", "espeak", "elevenlabs", "openai"]
    assert [info["available"] for info in status["engines"]] == [True, True, True, False, False]
    assert [info["label"] for info in status["engines"]] == ["Kokoro", "Piper", "eSpeak NG", "ElevenLabs", "OpenAI"]


def test_voices_are_named_for_people_and_start_with_the_users_language(new_engine):
    engine = new_engine(language="de_DE.UTF-8").start()
    code, voices = engine.request("GET", "/voices?engine=espeak")
    assert code == 200
    assert voices[0]["name"] == "Deutsch"
    assert {"English (United States)", "Français (France)"} <= {voice["name"] for voice in voices}
    assert all(set(voice) == {"id", "name"} for voice in voices)
    assert len({voice["id"] for voice in voices}) == len(voices) > 50
    assert engine.status()["voice"] == voices[0]["id"]


@pytest.mark.parametrize("query", ["", "?engine=", "?engine=nobody", "?other=espeak"])
def test_voices_of_an_unknown_engine_are_refused(shared, query):
    code, answer = shared.request("GET", "/voices" + query)
    assert code == 400
    assert answer["error"]


def test_chars_counts_code_points_while_speaking(shared):
    text = "Zwölf Boxkämpfer 😀 jagen Viktor quer über den großen Sylter Deich."
    shared.speak(text)
    status = shared.status()
    assert status["state"] in ("loading", "speaking")
    assert status["chars"] == len(text)
    shared.post("/stop")
    assert shared.status()["chars"] == 0


@pytest.mark.parametrize("text", ["", "   ", "\n\n", "\u200b\ufffc", "...", "\x00\x01", "\ud800", "😀"])
def test_texts_with_nothing_or_little_to_say_end(shared, text):
    code, answer = shared.post("/speak", text=text)
    assert (code, answer) == (200, {"ok": True})
    assert shared.wait_for("idle")["error"] is None


@pytest.mark.parametrize("path", POSTS)
@pytest.mark.parametrize(
    "body",
    [b"", b"[]", b'"text"', b"null", b"{", b'{"text":', b"\xff\xfe", b"[" * 100000, b'{"speed": NaN}'],
)
def test_a_body_that_is_no_json_object_is_refused(shared, path, body):
    code, answer = shared.request("POST", path, body)
    assert code == 400
    assert isinstance(answer["error"], str)


@pytest.mark.parametrize("body", [{}, {"text": None}, {"text": 5}, {"text": ["a"]}])
def test_speak_without_a_text_is_refused(shared, body):
    assert shared.post("/speak", **body)[0] == 400
    assert shared.status()["state"] == "idle"


@pytest.mark.parametrize("path", ["/stop", "/toggle-pause", *MOVES])
def test_what_is_for_a_text_that_is_read_changes_nothing_while_idle(shared, path):
    before = shared.status()
    assert shared.post(path) == (200, {"ok": True})
    assert shared.status() == before


@pytest.mark.parametrize("path", ["/next", "/previous"])
def test_moves_are_by_sentence_or_paragraph(shared, path):
    for by in ("sentence", "paragraph"):
        assert shared.post(path, by=by) == (200, {"ok": True})
    for by in ("word", "", None, 1, ["sentence"], {}):
        code, answer = shared.post(path, by=by)
        assert code == 400
        assert isinstance(answer["error"], str)


def test_faster_and_slower_go_by_the_steps_of_the_menu_while_a_text_is_read(engine, new_engine):
    engine.speak("This is read for a while. " * 100)
    assert [speed_after(engine, "/slower") for _ in range(3)] == [0.9, 0.8, 0.8]
    assert [speed_after(engine, "/faster") for _ in range(8)] == [0.9, 1.0, 1.1, 1.25, 1.5, 1.75, 2.0, 2.0]
    engine.post("/config", speed=3.0)
    assert speed_after(engine, "/faster") == 3.0
    assert speed_after(engine, "/slower") == 2.0
    engine.end()
    assert new_engine().start().status()["speed"] == 2.0, "kept like a choice from the menu"


def speed_after(engine, path):
    assert engine.post(path) == (200, {"ok": True})
    return engine.status()["speed"]


def test_config_sets_voice_and_speed_and_engine(engine):
    assert engine.post("/config", voice="gmw/de") == (200, {"ok": True})
    assert engine.post("/config", speed=1.5)[0] == 200
    assert engine.post("/config", engine="espeak")[0] == 200
    status = engine.status()
    assert (status["voice"], status["speed"], status["engine"]) == ("gmw/de", 1.5, "espeak")
    assert engine.post("/config", speed=2)[0] == 200
    assert engine.status()["speed"] == 2.0


@pytest.mark.parametrize(
    "change",
    [
        {"engine": "nobody"},
        {"engine": None},
        {"engine": ["espeak"]},
        {"voice": "nobody"},
        {"voice": 7},
        {"voice": "../../etc/passwd"},
        {"speed": 0.49},
        {"speed": 3.01},
        {"speed": "1"},
        {"speed": True},
        {"speed": None},
        {"speed": 10**400},
        {"voice": "gmw/de", "speed": 99},
    ],
)
def test_a_bad_config_is_refused_and_changes_nothing(shared, change):
    before = shared.status()
    code, answer = shared.post("/config", **change)
    assert code == 400
    assert isinstance(answer["error"], str)
    assert shared.status() == before


@pytest.mark.parametrize(
    "body", [{"engine": "nobody", "key": "k"}, {"engine": "espeak", "key": "k"}, {"key": "k"}, {"engine": "espeak"}]
)
def test_a_key_that_no_engine_takes_is_refused(shared, body):
    code, answer = shared.post("/key", **body)
    assert code == 400
    assert "k" != answer["error"]


@pytest.mark.parametrize(
    "method, path, code",
    [("GET", "/", 404), ("GET", "/status/x", 404), ("POST", "/status", 405), ("GET", "/speak", 405), ("PUT", "/speak", 405)],
)
def test_other_paths_and_methods_are_answered_in_json(shared, method, path, code):
    answer = shared.request(method, path)
    assert answer[0] == code
    assert isinstance(answer[1]["error"], str)


def test_a_huge_body_is_refused_and_the_engine_goes_on(shared):
    body = json.dumps({"text": "a" * (65 * 1024 * 1024)})
    try:
        assert shared.request("POST", "/speak", body)[0] == 413
    except ConnectionError:
        pass  # refused before all of it was sent
    assert shared.status()["state"] == "idle"
