"""The user's choices over a restart, and files that are not as they should be."""

import asyncio
import http.client
import itertools
import json
import os
import random
import resource
import signal
import stat
import subprocess
import sys
import threading
import time

import pytest
from engine_process import FOLDER
from sound import until
from tavin.engine import Engine
from tavin.settings import LARGEST_FILE, Settings, default_path


def test_choices_are_kept_over_a_restart(engine, new_engine):
    engine.post("/config", voice="gmw/de")
    engine.post("/config", speed=2.5)
    engine.end(signal.SIGKILL)
    status = new_engine().start().status()
    assert (status["engine"], status["voice"], status["speed"]) == ("espeak", "gmw/de", 2.5)


def test_the_file_is_whole_and_new_when_the_engine_is_killed(new_engine):
    engine = new_engine().start()
    for step in range(5):
        engine.post("/config", speed=0.5 + step / 10)
    posted = []
    more = threading.Thread(target=post_on, args=(engine, posted))
    more.start()
    until(lambda: len(posted) > 3, 10, "some were answered")
    engine.end(signal.SIGKILL)
    more.join()
    stored = json.loads(engine.settings.read_text("utf-8"))
    # The last that was answered, or the one after that.
    assert stored["speed"] in (posted[-1], pytest.approx(posted[-1] + 0.001))
    assert stat.S_IMODE(engine.settings.parent.stat().st_mode) == 0o700


def test_who_changes_nothing_waits_for_what_another_request_is_storing(tmp_path, monkeypatch):
    """Else a stored key is answered before it is known after a restart."""
    may_write = threading.Event()
    write = Settings._write
    monkeypatch.setattr(Settings, "_write", lambda *what: may_write.wait(10) and write(*what))
    path = tmp_path / "engine.json"

    async def scenario():
        engine = Engine(Settings(path))
        engine._keys._stored.add("openai")
        notes = [asyncio.create_task(engine._note_keys()) for _ in range(2)]
        await asyncio.wait(notes, timeout=0.1)
        assert not any(note.done() for note in notes)
        may_write.set()
        await asyncio.gather(*notes)
        assert json.loads(path.read_text("utf-8"))["keys"] == ["openai"]

    asyncio.run(scenario())


def post_on(engine, posted):
    """Change the speed until nobody answers."""
    for step in itertools.count(1):
        try:
            assert engine.post("/config", speed=1 + step / 1000)[0] == 200
        except (OSError, http.client.HTTPException):
            return
        posted.append(1 + step / 1000)


SAVING = """
import asyncio, itertools, pathlib, sys
from tavin.settings import Settings

async def save():
    settings = Settings(pathlib.Path(sys.argv[1]))
    settings.voices = {"espeak": "x" * 200_000}  # long to write
    for step in itertools.count():
        settings.speed = 1 + step % 1000 / 1000
        if stored := settings.save():
            await stored
        if step == 0:
            print("saved", flush=True)

asyncio.run(save())
"""


def test_the_file_is_whole_whenever_its_writer_is_killed(tmp_path):
    moments = random.Random(7)
    path = tmp_path / "engine.json"
    for _ in range(25):
        saving = subprocess.Popen(
            [sys.executable, "-c", SAVING, str(path)], cwd=FOLDER, stdout=subprocess.PIPE
        )
        with saving:
            assert saving.stdout.readline() == b"saved\n"
            time.sleep(moments.uniform(0, 0.02))
            saving.kill()
        assert len(json.loads(path.read_text("utf-8"))["voices"]["espeak"]) == 200_000


@pytest.fixture
def limited_files():
    """A write fails in its midst, as on a full disk."""
    before = resource.getrlimit(resource.RLIMIT_FSIZE)
    resource.setrlimit(resource.RLIMIT_FSIZE, (50_000, before[1]))
    yield
    resource.setrlimit(resource.RLIMIT_FSIZE, before)


def save(settings):
    async def until_stored():
        if stored := settings.save():
            await stored

    asyncio.run(until_stored())


def test_a_write_that_fails_in_its_midst_leaves_the_old_file(tmp_path, limited_files):
    path = tmp_path / "engine.json"
    settings = Settings(path)
    settings.speed = 2.0
    save(settings)
    settings.speed, settings.voices = 3.0, {"espeak": "x" * 200_000}
    save(settings)
    settings = Settings(path)
    assert (settings.speed, settings.voices) == (2.0, {})
    settings.speed = 3.0
    save(settings)
    assert Settings(path).speed == 3.0


def test_the_folder_is_synced_after_the_file_has_its_name(tmp_path, monkeypatch):
    path = tmp_path / "engine.json"
    synced = []
    monkeypatch.setattr(
        os, "fsync", lambda file: synced.append((stat.S_ISDIR(os.fstat(file).st_mode), path.exists()))
    )
    save(Settings(path))
    assert synced == [(False, False), (True, True)]


def test_a_pipe_in_the_files_place_holds_nobody_up(new_engine):
    engine = new_engine()
    engine.settings.parent.mkdir(parents=True)
    os.mkfifo(engine.settings)
    assert engine.start().status()["speed"] == 1.0


@pytest.mark.parametrize(
    "content",
    [
        b"",
        b"{",
        b"[]",
        b"\xff\xfe",
        b"[" * 100000,
        b'{"engine": "nobody", "voices": {"espeak": "nobody"}, "speed": 99}',
        b'{"engine": ["espeak"], "voices": {"espeak": 7, "x": "y"}, "speed": NaN}',
        b'{"engine": {}, "voices": [], "speed": true, "keys": {}}',
        b'{"keys": ["nobody", 7, {}]}',
        b'{"languages": {"fr": 7, "de": {"espeak": 1, "nobody": "x"}, "": []}}',
        b'{"languages": ["fr"]}',
    ],
)
def test_a_bad_file_reads_as_the_defaults(tmp_path, content):
    path = tmp_path / "engine.json"
    path.write_bytes(content)
    settings = Settings(path)
    assert (settings.engine, settings.speed) == ("espeak", 1.0)
    assert settings.keyed == []
    assert not any(settings.languages.values())
    assert settings.voices in ({}, {"espeak": "nobody"})  # which voices there are is not known here


SLIP = '{"server": {"address": "https://gpu.local"},\n "mpris": false,\n}'  # a comma too many


@pytest.mark.parametrize(
    "content",
    [SLIP, '{"mpris": true', "[]", '{"mpris": true}' + " " * LARGEST_FILE],
    ids=["comma", "end", "list", "large"],
)
def test_a_file_that_cannot_be_read_is_kept_beside_the_new_one(tmp_path, content):
    path = tmp_path / "engine.json"
    path.write_text(content)
    settings = Settings(path)
    assert "engine.json cannot be read" in settings.fault
    settings.speed = 1.5
    save(settings)
    assert (tmp_path / "engine.json.unreadable").read_text() == content
    assert json.loads(path.read_text())["speed"] == 1.5


def test_a_slip_while_the_engine_runs_is_told_too(tmp_path):
    path = tmp_path / "engine.json"
    settings = Settings(path)
    assert settings.fault is None
    path.write_text(SLIP)
    save(settings)
    assert "engine.json cannot be read" in settings.untold()
    assert settings.untold() is None
    assert (tmp_path / "engine.json.unreadable").read_text() == SLIP


def test_what_may_have_turned_the_player_off_does_until_the_user_says_otherwise(tmp_path):
    path = tmp_path / "engine.json"
    path.write_text(SLIP)
    settings = Settings(path)
    assert not settings.mpris
    save(settings)
    assert not Settings(path).mpris
    path.write_text("{}")
    assert Settings(path).mpris
    path.unlink()
    assert Settings(path).mpris


def test_a_stored_voice_that_is_gone_gives_way_to_the_default(new_engine):
    engine = new_engine()
    engine.settings.parent.mkdir(parents=True)
    engine.settings.write_text('{"engine": "nobody", "voices": {"espeak": "nobody"}, "speed": 2}')
    status = engine.start().status()
    assert (status["engine"], status["voice"], status["speed"]) == ("espeak", "gmw/en-US", 2.0)


def test_a_file_that_is_a_link_stays_one(new_engine, tmp_path):
    engine = new_engine()
    place = tmp_path / "kept elsewhere.json"
    place.write_text('{"speed": 2}')
    engine.settings.parent.mkdir(parents=True)
    engine.settings.symlink_to(place)
    engine.start()
    assert engine.post("/config", speed=1.5)[0] == 200
    assert engine.settings.is_symlink()
    assert json.loads(place.read_text())["speed"] == 1.5


def test_one_bad_value_does_not_cost_the_others(tmp_path):
    path = tmp_path / "engine.json"
    path.write_text('{"engine": "nobody", "voices": {"espeak": "gmw/de", "nobody": "x"}, "speed": 2}')
    settings = Settings(path)
    assert (settings.engine, settings.voices, settings.speed) == ("espeak", {"espeak": "gmw/de"}, 2.0)


@pytest.mark.parametrize("base, wanted", [("/x", "/x"), ("", "/h/.config"), ("not/absolute", "/h/.config")])
def test_the_place_follows_the_desktop_standard(monkeypatch, base, wanted):
    monkeypatch.setenv("HOME", "/h")
    monkeypatch.setenv("XDG_CONFIG_HOME", base)
    assert str(default_path()) == f"{wanted}/tavin/engine.json"


def test_a_place_that_cannot_be_written_costs_only_the_memory(new_engine):
    engine = new_engine()
    engine.settings.parent.parent.mkdir()
    engine.settings.parent.write_text("a file where a folder should be")
    engine.start()
    assert engine.post("/config", speed=2)[0] == 200
    assert engine.status()["speed"] == 2.0
    assert "settings could not be stored" in engine.log()
    assert engine.status()["error"] == "This choice is kept only until Tavin ends: File exists."
