"""The cloud back-ends in a whole engine, against a local server."""

import signal

import pytest
from cloud_service import KEY, TEXT, finish, info, use
from measures import memory_of
from sound import RATE, until
from spoken import trimmed, without_silence

CLOUDS = ["elevenlabs", "openai"]
LABELS = {"elevenlabs": "ElevenLabs", "openai": "OpenAI"}


@pytest.mark.parametrize("name", CLOUDS)
def test_without_a_key_it_may_be_chosen_but_does_not_speak(cloud_engine, service, name):
    assert cloud_engine.post("/config", engine=name)[0] == 200
    status = cloud_engine.status()
    assert (status["engine"], status["ready"], status["setup_error"]) == (name, True, None)
    assert info(cloud_engine, name) == {"name": name, "label": LABELS[name], "available": False}
    code, voices = cloud_engine.request("GET", f"/voices?engine={name}")
    assert code == 200
    assert bool(voices) == (name == "openai")
    error = finish(cloud_engine, TEXT)["error"]
    assert f"{LABELS[name]} needs a key" in error
    assert service.requests == []
    assert cloud_engine.post("/config", engine="espeak")[0] == 200
    assert finish(cloud_engine, "Hello.")["error"] is None


@pytest.mark.parametrize("name", CLOUDS)
def test_it_speaks_with_a_key(cloud_engine, service, recorder, name):
    service.seconds = 1  # time to get the next sentence
    use(cloud_engine, name)
    assert info(cloud_engine, name)["available"]
    cloud_engine.speak("One. Two, and more.")
    status = cloud_engine.wait_for("speaking")
    assert (status["error"], status["chars"]) == (None, 19)
    assert cloud_engine.wait_for("idle")["error"] is None
    assert service.texts() == ["One.", "Two, and more."]
    recorder.quiet_for(0.5)
    assert len(without_silence(recorder.samples)) / RATE == pytest.approx(2 * service.seconds, abs=0.03)
    pause = len(trimmed(recorder.samples)) / RATE - 2 * service.seconds
    assert pause < 0.5, "the second sentence was ready, and a loaded machine plays it a little late"


@pytest.mark.parametrize("name", CLOUDS)
def test_without_a_keyring_the_error_says_so(cloud_engine, name):
    use(cloud_engine, name)
    error = cloud_engine.status()["error"]
    assert LABELS[name] in error and "only until" in error
    assert cloud_engine.post("/key", engine=name, key="")[0] == 200
    assert not info(cloud_engine, name)["available"]
    assert "needs a key" in finish(cloud_engine, TEXT)["error"]


def test_voices_are_listed_and_remembered_for_each_back_end(cloud_engine, new_engine, service):
    use(cloud_engine, "elevenlabs")
    voices = cloud_engine.request("GET", "/voices?engine=elevenlabs")[1]
    assert [voice["name"] for voice in voices] == ["Ada – English", "Kim – Deutsch", "Zed (male, british)"]
    assert cloud_engine.status()["voice"] == "ada2"
    assert cloud_engine.post("/config", voice="nobody")[0] == 400
    assert cloud_engine.post("/config", voice="zed/1")[0] == 200
    use(cloud_engine, "openai")
    until(lambda: cloud_engine.status()["voice"] == "alloy", 10, "the voices are known")
    assert cloud_engine.post("/config", voice="nova")[0] == 200
    assert cloud_engine.post("/config", engine="elevenlabs")[0] == 200
    assert cloud_engine.status()["voice"] == "zed/1"
    cloud_engine.end(signal.SIGKILL)
    engine = new_engine(service.environment).start()
    assert engine.status()["voice"] == "zed/1"
    use(engine, "elevenlabs")
    assert finish(engine, "Hello.")["error"] is None
    assert service.requests[-1][0].startswith("/v1/text-to-speech/zed%2F1/stream")
    assert engine.post("/config", engine="openai")[0] == 200
    assert engine.status()["voice"] == "nova"


def test_the_first_of_the_accounts_voices_is_used_when_none_was_chosen(cloud_engine, service):
    use(cloud_engine, "elevenlabs")
    assert finish(cloud_engine, "Hello.")["error"] is None
    assert [path for path, _ in service.requests][-1].startswith("/v1/text-to-speech/ada2/")


@pytest.mark.parametrize("name", CLOUDS)
def test_an_error_ends_the_text_and_blocks_nobody(cloud_engine, service, name):
    use(cloud_engine, name)
    assert cloud_engine.request("GET", f"/voices?engine={name}")[0] == 200
    for trouble in (401, 402, 429, 500, "cut", "page"):
        service.trouble = trouble
        asked = len(service.texts())
        error = finish(cloud_engine, TEXT)["error"]
        assert error.startswith(LABELS[name])
        assert not isinstance(trouble, int) or str(trouble) in error
        assert KEY not in error
        assert len(service.texts()) == asked + 1
        cloud_engine.post("/config", engine="espeak")
        assert finish(cloud_engine, "Hello.")["error"] is None
        service.trouble = None
        cloud_engine.post("/config", engine=name)
        assert finish(cloud_engine, "Hello.")["error"] is None


def test_a_service_that_never_stops_sending_fills_no_memory(cloud_engine, service):
    use(cloud_engine, "openai")
    assert finish(cloud_engine, "Hello.")["error"] is None
    before = memory_of(cloud_engine.process.pid, "VmHWM")
    service.trouble = "endless"
    cloud_engine.speak(TEXT)
    error = until(lambda: cloud_engine.status()["error"], 10, "the error")
    assert "more sound than the text can have" in error
    assert memory_of(cloud_engine.process.pid, "VmHWM") - before < 32 * 1024 * 1024


def test_what_is_ready_is_heard_before_an_error_ends_the_text(cloud_engine, service, recorder):
    service.seconds = 2
    use(cloud_engine, "openai")
    cloud_engine.speak(TEXT)
    cloud_engine.wait_for("speaking")
    until(lambda: len(service.texts()) >= 2, 5, "the second sentence")
    service.trouble = 500
    until(lambda: cloud_engine.status()["error"], 10, "the error")
    assert cloud_engine.status()["state"] == "speaking"
    spoken = len(service.texts()) - 1
    cloud_engine.wait_for("idle", 20)
    recorder.quiet_for(0.5)
    assert len(without_silence(recorder.samples)) / RATE == pytest.approx(2 * spoken, abs=0.1)


def test_voices_that_cannot_be_had(cloud_engine, service):
    use(cloud_engine, "elevenlabs")
    service.trouble = 500
    code, answer = cloud_engine.request("GET", "/voices?engine=elevenlabs")
    assert code == 400
    assert "ElevenLabs" in answer["error"]
    assert "ElevenLabs" in finish(cloud_engine, "Hello.")["error"]


@pytest.mark.parametrize("key", ["k" * 5000, "line\nbreak", "tab\tbed", "schlüssel", "\ud800", None, 7, ["k"]])
def test_what_is_no_key_is_refused(shared, key):
    code, answer = shared.post("/key", engine="openai", key=key)
    assert code == 400
    assert "k" * 20 not in answer["error"]
    assert not info(shared, "openai")["available"]


def test_a_key_is_taken_without_blanks_around_it(cloud_engine):
    cloud_engine.post("/key", engine="openai", key=f"  {KEY}\n")
    cloud_engine.post("/config", engine="openai")
    assert finish(cloud_engine, "Hello.")["error"] is None


def test_the_key_is_nowhere_to_be_seen(cloud_engine, service):
    answers = [cloud_engine.post("/key", engine=name, key=KEY) for name in CLOUDS]
    cloud_engine.post("/config", engine="elevenlabs")
    answers.append(cloud_engine.request("GET", "/voices?engine=elevenlabs"))
    service.trouble = 401
    answers.append(finish(cloud_engine, "Hello."))
    service.trouble = "stall"
    cloud_engine.speak("Hello.")
    until(lambda: len(service.texts()) == 2, 5, "the request")
    for pid in [cloud_engine.process.pid, *cloud_engine.helpers("tavin.synthesis.worker")]:
        for name in ("cmdline", "environ"):
            with open(f"/proc/{pid}/{name}", "rb") as file:
                assert KEY.encode() not in file.read()
    cloud_engine.request("POST", "/key", '{"engine": "openai", "key": "' + KEY)
    assert KEY not in repr(answers) + repr(cloud_engine.status())
    for path in cloud_engine.folder.rglob("*"):
        assert path.is_dir() or KEY.encode() not in path.read_bytes(), path
