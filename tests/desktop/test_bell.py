"""The bell where nothing is selected, and a sound server that goes while it sounds."""

import time

import pytest
from driver import Desktop, Tavin
from session import Session, start_sound_server, wait_until


@pytest.fixture
def sound(tmp_path_factory):
    server = start_sound_server(str(tmp_path_factory.mktemp("s")), "tavin", 48000)
    yield server
    server.end()


@pytest.fixture
def tavin(tmp_path_factory, sound, engine, build):
    with Session(str(tmp_path_factory.mktemp("session"))) as private:
        private.env["PULSE_SERVER"] = sound.address
        desktop = Desktop(private)
        yield Tavin(desktop, engine, build)
        desktop.close()


def sounds(server):
    return "".join(map(bytes.decode, server.streams()))


@pytest.mark.parametrize("after", (0, 0.01, 0.02, 0.05, 0.1))
def test_a_sound_server_that_ends_while_the_bell_sounds_ends_nothing_else(tavin, sound, after):
    tavin.action("speak")
    wait_until(lambda: sounds(sound), 10, "the bell")
    time.sleep(after)
    sound.end()
    time.sleep(0.3)  # Meanwhile the bell's thread hears of it.
    assert tavin.process.poll() is None, tavin.log()
