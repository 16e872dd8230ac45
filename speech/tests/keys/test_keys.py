"""Keys in the real GNOME Keyring, on a session bus of the test's own."""

import asyncio
import http.client
import sys
import threading
import time
from pathlib import Path

import pytest
import secretstorage
from cloud_service import KEY, CloudService
from engine_process import exists
from sound import until
from tavin.keys import keys, secret_service
from tavin.keys.keys import KeyringError, Keys

OTHER = "another-key"


@pytest.fixture(scope="module")
def service():
    server = CloudService()
    yield server
    server.end()


@pytest.fixture
def on_the_bus(keyring, monkeypatch):
    for name, value in keyring.environment.items():
        monkeypatch.setenv(name, value)


def available(engine, name):
    return next(entry["available"] for entry in engine.status()["engines"] if entry["name"] == name)


def forget(engine):
    """End the engine; the next one knows of a key only when it found it in the keyring."""
    engine.end()
    engine.settings.unlink()


def test_a_key_is_stored_replaced_and_removed(start, keyring):
    engine = start()
    assert not available(engine, "openai")
    assert engine.post("/key", engine="openai", key=OTHER)[0] == 200
    assert engine.post("/key", engine="elevenlabs", key=OTHER)[0] == 200
    assert engine.post("/key", engine="openai", key=KEY)[0] == 200
    assert keyring.stored("openai") == [KEY]
    assert keyring.stored("elevenlabs") == [OTHER]
    assert available(engine, "openai")
    assert engine.status()["error"] is None
    assert engine.post("/key", engine="openai", key="")[0] == 200
    assert keyring.stored("openai") == []
    assert keyring.stored("elevenlabs") == [OTHER]
    assert not available(engine, "openai")
    assert engine.post("/key", engine="openai", key="")[0] == 200
    assert engine.status()["error"] is None


def test_a_stored_key_is_used_after_a_restart(start):
    engine = start()
    engine.post("/key", engine="openai", key=KEY)
    forget(engine)
    engine = start()
    until(lambda: available(engine, "openai"), 10, "the search for keys")
    engine.post("/config", engine="openai")
    engine.speak("Hello.")
    assert engine.wait_for("idle")["error"] is None


@pytest.mark.parametrize(
    "stored, error",
    [
        (KEY + "\n", None),
        (
            KEY + "\r\nX-Other: 1",
            "The key for OpenAI cannot be read: What is stored there is not a key.",
        ),
    ],
)
def test_a_line_break_in_a_stored_key_reaches_no_worker(start, keyring, stored, error):
    engine = start()
    engine.post("/key", engine="openai", key=KEY)
    forget(engine)
    with keyring.connected() as connection:
        for item in secretstorage.search_items(connection, {"engine": "openai"}):
            item.set_secret(stored.encode())
    engine = start()
    until(lambda: available(engine, "openai"), 10, "the search for keys")
    engine.post("/config", engine="openai")
    worker = engine.helper("openai")
    engine.speak("Hello.")
    assert engine.wait_for("idle")["error"] == error
    assert engine.helpers("openai") == [worker]


def test_looking_for_keys_unlocks_nothing(start, keyring):
    engine = start()
    engine.post("/key", engine="openai", key=KEY)
    forget(engine)
    keyring.lock()
    engine = start()
    until(lambda: available(engine, "openai"), 10, "the search for keys")
    assert not available(engine, "elevenlabs")
    engine.post("/config", engine="openai")
    assert keyring.locked()


def test_a_keyring_that_stays_locked(start, keyring):
    """Nobody is there to ask for its password, which counts as a dialog that was dismissed."""
    engine = start()
    engine.post("/key", engine="openai", key=KEY)
    forget(engine)
    keyring.lock()
    engine = start()
    until(lambda: available(engine, "openai"), 10, "the search for keys")
    engine.post("/config", engine="openai")
    engine.speak("Hello.")
    assert "not unlocked" in engine.wait_for("idle")["error"]
    engine.post("/key", engine="openai", key=KEY)
    error = engine.status()["error"]
    assert "only until" in error and "not unlocked" in error
    engine.speak("Hello.")
    assert engine.wait_for("idle")["error"] is None
    engine.post("/key", engine="openai", key="")
    assert "could not be removed" in engine.status()["error"]
    assert available(engine, "openai")


def test_a_keyring_that_hangs_holds_nobody_up(start, keyring):
    engine = start()
    keyring.freeze(True)
    try:
        post = threading.Thread(target=lambda: engine.post("/key", engine="openai", key=KEY), daemon=True)
        post.start()
        helper = engine.helper("tavin.keys.secret_service")
        begin = time.monotonic()
        assert available(engine, "openai")
        engine.post("/config", engine="openai")
        engine.speak("Hello.")
        assert engine.wait_for("idle")["error"] is None
        assert time.monotonic() - begin < 8
        assert exists(helper)
        for name in ("cmdline", "environ"):
            assert KEY.encode() not in Path(f"/proc/{helper}/{name}").read_bytes()
    finally:
        keyring.freeze(False)
    post.join(10)
    assert keyring.stored("openai") == [KEY]


@pytest.mark.parametrize("question", ["get", "store"])
def test_a_signal_ends_the_wait_for_the_keyring(start, keyring, question):
    """As long as a dialog for its password is open, the keyring does not answer."""
    engine = start()
    engine.post("/key", engine="openai", key=KEY)
    forget(engine)
    engine = start()
    until(lambda: available(engine, "openai"), 10, "the search for keys")
    engine.post("/config", engine="openai")
    keyring.freeze(True)
    try:
        if question == "get":
            engine.speak("Hello.")
        else:
            post = threading.Thread(target=lambda: outcome(engine.post, "/key", engine="openai", key=OTHER))
            post.start()
        helper = engine.helper("tavin.keys.secret_service")
        code, seconds = engine.end()
        assert code == 0
        assert seconds < 0.5
        until(lambda: not exists(helper), 1, "the end of the question")
    finally:
        keyring.freeze(False)
        if question == "store":
            post.join(10)


def outcome(request, *what, **more):
    try:
        return request(*what, **more)
    except (ConnectionError, http.client.HTTPException):
        return None  # the engine ended


def test_a_stop_ends_the_wait_for_the_keyring(start, keyring):
    engine = start()
    engine.post("/key", engine="openai", key=KEY)
    forget(engine)
    engine = start()
    until(lambda: available(engine, "openai"), 10, "the search for keys")
    keyring.freeze(True)
    try:
        engine.post("/config", engine="openai")
        engine.speak("Hello.")
        helper = engine.helper("tavin.keys.secret_service")
        engine.post("/stop")
        assert engine.status()["state"] == "idle"
        until(lambda: not exists(helper), 5, "the end of the question")
    finally:
        keyring.freeze(False)
    engine.speak("Hello.")
    assert engine.wait_for("idle")["error"] is None


def test_a_keyring_that_does_not_answer_in_time(on_the_bus, keyring):
    async def scenario():
        mine = Keys(["openai"], patience=0.5)
        keyring.freeze(True)
        with pytest.raises(KeyringError, match="does not answer"):
            await mine.keep("openai", "OpenAI", KEY)
        assert mine.known("openai")
        assert await mine.key("openai") == KEY
        keyring.freeze(False)

    asyncio.run(scenario())


def test_a_key_that_was_deleted_elsewhere_is_no_longer_available(on_the_bus):
    async def scenario():
        first, second = Keys(["openai"]), Keys(["openai"])
        await first.keep("openai", "OpenAI", KEY)
        await second.look(activate=False)
        assert second.known("openai")
        assert await Keys(["openai"]).key("openai") == KEY  # found without having looked
        await first.keep("openai", "OpenAI", "")
        assert await second.key("openai") is None
        assert not second.known("openai")

    asyncio.run(scenario())


def test_a_keyring_that_comes_after_the_engine(start, keyring):
    engine = start()
    engine.post("/key", engine="elevenlabs", key=KEY)
    engine.post("/config", engine="elevenlabs")
    engine.end()
    keyring.end_keyring()
    engine = start()
    assert available(engine, "elevenlabs")
    assert not available(engine, "openai")
    code, answer = engine.request("GET", "/voices?engine=elevenlabs")
    assert code == 400
    assert "no Secret Service" in answer["error"]
    assert available(engine, "elevenlabs")
    keyring.start_keyring()
    assert len(engine.request("GET", "/voices?engine=elevenlabs")[1]) == 3
    engine.end()
    # Nor is the engine's own note needed.
    keyring.end_keyring()
    engine.settings.write_text('{"engine": "elevenlabs"}')
    engine = start()
    assert engine.request("GET", "/voices?engine=elevenlabs") == (200, [])
    assert not available(engine, "elevenlabs")
    keyring.start_keyring()
    assert len(engine.request("GET", "/voices?engine=elevenlabs")[1]) == 3
    assert available(engine, "elevenlabs")


def test_a_key_that_was_deleted_while_no_engine_ran(start, keyring):
    engine = start()
    engine.post("/key", engine="openai", key=KEY)
    engine.end()
    with keyring.connected() as connection:
        for item in secretstorage.search_items(connection, {"engine": "openai"}):
            item.delete()
    engine = start()
    until(lambda: not available(engine, "openai"), 10, "the search for keys")
    until(lambda: '"keys": []' in engine.settings.read_text(), 5, "the note of it")


def test_a_keyring_that_went_away(start, keyring):
    engine = start()
    keyring.end_keyring()
    engine.post("/key", engine="openai", key=KEY)
    error = engine.status()["error"]
    assert "only until" in error and "no Secret Service" in error
    keyring.start_keyring()
    engine.post("/key", engine="openai", key=KEY)
    assert keyring.stored("openai") == [KEY]


def test_only_who_uses_a_cloud_voice_has_a_keyring_started(on_the_bus, keyring, monkeypatch):
    keyring.end_keyring()
    marker = keyring.install_service()

    async def scenario():
        await Keys(["openai"]).look(activate=False)
        assert not marker.exists()
        monkeypatch.setattr(keys, "LOOK_SECONDS", 5)  # what is started never answers
        with pytest.raises(KeyringError):
            await Keys(["openai"]).look(activate=True)
        assert marker.exists()

    asyncio.run(scenario())


def test_no_file_holds_the_key(start, keyring):
    engine = start()
    engine.post("/key", engine="openai", key=KEY)
    engine.end()
    for folder in (keyring.folder, engine.folder):
        files = [path for path in folder.rglob("*") if path.is_file()]
        assert files
        for path in files:
            assert KEY.encode() not in path.read_bytes(), path


def test_without_its_package(monkeypatch):
    monkeypatch.setitem(sys.modules, "secretstorage", None)
    answer = secret_service.answer("store", name="openai", label="OpenAI", key=KEY)
    assert "python3-secretstorage" in answer["failure"]


@pytest.mark.parametrize("output", ["", "{", "no"])
def test_a_helper_that_answers_nonsense(monkeypatch, output):
    class Process:
        returncode = 0

        async def communicate(self, _request):
            return output.encode(), None

    async def start():
        return Process()

    monkeypatch.setattr(keys, "start", start)
    with pytest.raises(KeyringError, match="could not be asked"):
        asyncio.run(keys.ask(1, do="search", names=[]))


def test_an_unexpected_failure_tells_its_kind_only(on_the_bus):
    answer = secret_service.answer("store", name="openai", label="OpenAI", key=KEY + "\ud800")
    assert answer["failure"].startswith("The keyring failed (")
    assert KEY not in answer["failure"]
