"""The user's choices over a restart, and files that are not as they should be."""

import json
import signal
import stat

import pytest
from tavin.settings import Settings, default_path


def test_choices_are_kept_over_a_restart(engine, new_engine):
    engine.post("/config", voice="gmw/de")
    engine.post("/config", speed=2.5)
    engine.end(signal.SIGKILL)
    status = new_engine().start().status()
    assert (status["engine"], status["voice"], status["speed"]) == ("espeak", "gmw/de", 2.5)


def test_the_file_is_whole_whenever_the_engine_is_killed(new_engine):
    for round_number in range(3):
        engine = new_engine().start()
        for step in range(5 + round_number):
            engine.post("/config", speed=0.5 + step / 10)
        engine.end(signal.SIGKILL)
        stored = json.loads(engine.settings.read_text("utf-8"))
        assert stored["speed"] == pytest.approx(0.5 + (4 + round_number) / 10)
    assert [path.name for path in engine.settings.parent.iterdir()] == ["engine.json"]
    assert stat.S_IMODE(engine.settings.parent.stat().st_mode) == 0o700


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
    ],
)
def test_a_bad_file_reads_as_the_defaults(tmp_path, content):
    path = tmp_path / "engine.json"
    path.write_bytes(content)
    settings = Settings(path)
    assert (settings.engine, settings.speed) == ("espeak", 1.0)
    assert settings.keyed == []
    assert settings.voices in ({}, {"espeak": "nobody"})  # which voices there are is not known here


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
