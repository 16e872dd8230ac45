"""The neural voice with its real libraries and a tiny model, from the download to the sound."""

import os
import signal
import time
from pathlib import Path

import file_server as does
import neural_models
import pytest
import tiny_model
from engine_process import exists
from measures import STATUS_LIMIT, memory_of_all, usual_status
from sound import RATE, until
from spoken import expected, first_difference, trimmed, without_silence
from test_idle import sleep_is_seen
from tree import Tree

LONG = "The quick brown fox jumps over the lazy dog, again and again and again, and then once more. "
WORK = 60  # products of matrices: seconds for each piece


@pytest.fixture
def tree(tmp_path, server):
    made = Tree(tmp_path / "tree", server)
    made.have_libraries(tmp_path / "data", neural_models.libraries("kokoro"))
    made.offer(model=tiny_model.model(), voices=tiny_model.voice_file())
    return made


@pytest.fixture
def engine(tree, new_engine):
    return new_engine(tree=tree.folder)


def choose(engine):
    assert engine.post("/config", engine="kokoro") == (200, {"ok": True})


def ready(engine):
    return until(lambda: (s := engine.status())["ready"] and s, 60, "the voice is ready")


def neural_worker(engine):
    """The process id of the worker that has the model."""
    return until(lambda: workers(engine), 10, "the neural worker")[0]


def workers(engine):
    return engine.helpers("tavin.synthesis.worker", "kokoro")


def speaks(engine, recorder, text="Hello there, world!"):
    begin = len(recorder.samples)
    engine.speak(text)
    assert engine.status()["state"] in ("loading", "speaking")
    engine.wait_for("speaking", 30)
    status = engine.wait_for("idle", 60)
    recorder.quiet_for(0.3)
    assert status["error"] is None
    return trimmed(recorder.samples[begin:])


def test_from_the_choice_to_the_sound(engine, recorder):
    engine.start()
    choose(engine)
    status = ready(engine)
    assert (status["engine"], status["voice"]) == ("kokoro", "af_heart")
    assert (status["download"], status["setup_error"]) == (None, None)
    code, voices = engine.request("GET", "/voices?engine=kokoro")
    assert code == 200
    assert [voice["name"] for voice in voices] == [
        "Heart – English (United States), female",
        "Adam – English (United States), male",
        "Emma – English (United Kingdom), female",
        "Siwis – Français (France), female",
    ]
    heard = speaks(engine, recorder)
    assert max(heard) > 0.2 * 32767
    # Each phoneme lasts so long; some make no sound at their ends.
    phonemes = len("həlˈoʊ ðˈɛɹ, wˈɜːld!")
    assert len(heard) / RATE == pytest.approx(phonemes * tiny_model.SAMPLES / 24000, abs=0.15)


def test_speed_and_voice(engine, recorder):
    engine.start()
    choose(engine)
    ready(engine)
    normal = len(speaks(engine, recorder))
    assert engine.post("/config", voice="bf_emma")[0] == 200
    assert engine.post("/config", speed=2)[0] == 200
    assert engine.post("/config", voice="nobody")[0] == 400
    assert engine.status()["voice"] == "bf_emma"
    assert len(speaks(engine, recorder)) == pytest.approx(normal / 2, rel=0.15)
    assert engine.post("/config", speed=3)[0] == 200
    assert len(speaks(engine, recorder)) == pytest.approx(normal / 3, rel=0.2)


def test_after_the_download_no_network_is_needed(engine, server, new_engine, tree, recorder):
    engine.start()
    choose(engine)
    ready(engine)
    engine.end()
    server.end()
    second = new_engine(tree=tree.folder).start()
    assert ready(second)["voice"] == "af_heart"
    assert speaks(second, recorder)
    assert [name for name, _ in server.requests] == ["model", "voices"]


def test_a_bad_way_to_a_good_voice(engine, server, recorder):
    server.plans = [
        does.cut_after(500),
        does.claim_length(200),
        does.garbage,
        does.refuse(503),
        does.serve,
        does.cut_after(1_000_000),
        does.ignore_range,
    ]
    engine.start()
    choose(engine)
    ready(engine)
    assert server.plans == []
    assert speaks(engine, recorder)


def test_wrong_bytes_are_told_and_choosing_again_mends_it(engine, server, recorder):
    server.plans = [does.serve, does.wrong_bytes]
    engine.start()
    choose(engine)
    error = until(lambda: engine.status()["setup_error"], 20, "a failure")
    assert "Kokoro again" in error
    assert not workers(engine)
    choose(engine)
    ready(engine)
    assert server.requests == [("model", 0), ("voices", 0), ("voices", 0)]
    assert speaks(engine, recorder)


@pytest.mark.parametrize(
    "files",
    [
        {"model": b"no model at all", "voices": tiny_model.voice_file()},
        {"model": tiny_model.model(), "voices": b"no voices at all"},
        {"model": tiny_model.model().replace(b"tokens", b"tokenz"), "voices": tiny_model.voice_file()},
    ],
)
def test_files_that_do_not_fit_are_told(engine, tree, files):
    tree.offer(**files)
    engine.start()
    choose(engine)
    assert "cannot be loaded" in until(lambda: engine.status()["setup_error"], 30, "a failure")
    assert engine.status()["ready"] is False


def test_a_killed_worker_is_an_error_that_names_it_and_the_text_goes_on(engine, recorder):
    engine.start()
    choose(engine)
    ready(engine)
    first = neural_worker(engine)
    os.kill(first, signal.SIGSTOP)  # dies before it has spoken the sentence
    engine.speak("First sentence. Second sentence. Third sentence.")
    time.sleep(0.3)
    os.kill(first, signal.SIGKILL)
    engine.wait_for("speaking", 30)
    status = engine.wait_for("idle", 30)
    assert "Kokoro" in status["error"]
    assert "SIGKILL" in status["error"]
    assert status["ready"] is True
    assert neural_worker(engine) != first
    assert speaks(engine, recorder)


def test_the_memory_is_given_back_and_the_next_speech_loads_again(engine, tree, recorder):
    tree.change("synthesis/backends/kokoro/__init__.py", "idle_seconds=15 * 60.0", "idle_seconds=1.0")
    engine.start()
    choose(engine)
    ready(engine)
    worker = neural_worker(engine)
    until(lambda: not exists(worker), 10, "the worker's end")
    assert engine.status()["ready"] is True
    engine.speak("Hello there.")
    assert engine.status()["state"] == "loading"
    engine.wait_for("speaking", 30)
    assert engine.wait_for("idle", 30)["error"] is None
    recorder.quiet_for(0.3)
    assert recorder.last_loud


@pytest.mark.parametrize("state", ["loads", "computes"])
def test_a_signal_ends_the_voice_at_once(tree, engine, state):
    tree.offer(model=tiny_model.model(WORK), voices=tiny_model.voice_file())
    engine.start()
    choose(engine)
    worker = neural_worker(engine)
    if state == "computes":
        ready(engine)
        engine.speak(LONG * 10)
        until(lambda: computed(worker, 0.1) > 0.05, 10, "it computes")
    code, seconds = engine.end()
    assert code == 0
    assert seconds < 0.5
    until(lambda: not exists(worker), 1, "the worker's end")


@pytest.fixture
def slow(tree, engine):
    """An engine whose voice computes long for each piece."""
    tree.offer(model=tiny_model.model(WORK), voices=tiny_model.voice_file())
    engine.start()
    choose(engine)
    ready(engine)
    return engine


def test_status_answers_at_once_while_the_voice_computes(slow):
    slow.speak(LONG * 40)
    slow.wait_for("speaking", 60)
    worker = neural_worker(slow)
    before = processor_seconds(worker)
    assert usual_status(slow) < STATUS_LIMIT
    assert processor_seconds(worker) > before + 0.2


def test_a_stop_abandons_the_synthesis_and_keeps_the_model(slow):
    worker = neural_worker(slow)
    slow.speak(LONG * 10)
    slow.wait_for("speaking", 60)
    for _ in range(3):
        slow.speak(LONG * 10)
        slow.post("/stop")
    assert slow.status()["state"] == "idle"
    until(lambda: computed(worker, 0.5) < 0.1, 2, "the worker rests")
    assert neural_worker(slow) == worker


def computed(pid, seconds):
    """The processor's seconds that a process uses in so much time."""
    before = processor_seconds(pid)
    time.sleep(seconds)
    return processor_seconds(pid) - before


def processor_seconds(task):
    ticks = Path(f"/proc/{task}/stat").read_text().rpartition(")")[2].split()[11:13]
    return sum(map(int, ticks)) / os.sysconf("SC_CLK_TCK")


def test_it_computes_on_two_cores_and_leaves_one_of_more(slow):
    cores = len(os.sched_getaffinity(0))
    slow.speak(LONG * 10)
    slow.wait_for("speaking", 60)
    threads = [f"{neural_worker(slow)}/task/{name}" for name in os.listdir(f"/proc/{neural_worker(slow)}/task")]
    before = {thread: processor_seconds(thread) for thread in threads}
    time.sleep(1)
    running = [thread for thread in threads if processor_seconds(thread) - before[thread] > 0.03]
    assert len(running) == min(cores, max(2, cores - 1))


@pytest.mark.parametrize("text", ["", "   ", "...", "😀", "\u200b", "؟ مرحبا", "你好。再见。", "\x00"])
def test_texts_with_little_to_say_end(engine, text):
    engine.start()
    choose(engine)
    ready(engine)
    engine.speak(text)
    assert engine.wait_for("idle", 30)["error"] is None


def test_ten_megabytes_start_soon_with_constant_memory(engine, recorder):
    engine.start()
    choose(engine)
    ready(engine)
    speaks(engine, recorder)
    before = memory_of_all(engine)
    engine.speak(LONG * (10_000_000 // len(LONG)))
    begin = time.monotonic()
    engine.wait_for("speaking", 10)
    assert time.monotonic() - begin < 2
    recorder.loud_for(2)
    assert memory_of_all(engine) - before < 96 * 1024 * 1024
    engine.post("/stop")
    assert engine.status()["state"] == "idle"


def test_no_wake_up_after_speaking(engine, recorder):
    engine.start()
    choose(engine)
    ready(engine)
    speaks(engine, recorder)
    pids = [engine.process.pid, neural_worker(engine), engine.helper("tavin.sound.player")]
    sleep_is_seen(pids)


ENGLISH = "Nobody thought about it there."  # in one piece, however fast the machine is


def test_a_text_is_read_by_a_voice_of_its_language(engine, recorder, tree):
    engine.start()
    choose(engine)
    ready(engine)
    assert engine.post("/config", voice="ff_siwis")[0] == 200
    wanted = {voice: len(made(tree, ENGLISH, voice)) for voice in ("af_heart", "ff_siwis")}
    assert wanted["af_heart"] != wanted["ff_siwis"]
    heard = speaks(engine, recorder, ENGLISH)
    assert engine.status()["voice"] == "ff_siwis"  # the choice stays
    assert len(heard) / RATE == pytest.approx(wanted["af_heart"] / 24000, abs=0.1)


def made(tree, text, voice):
    environment = {"XDG_DATA_HOME": str(tree.folder.parent / "data")}
    python = neural_models.libraries("kokoro") / "bin" / "python3"
    return trimmed(expected(text, voice, 1.0, "kokoro", tree.folder, environment, python))


def test_a_language_that_it_does_not_speak_is_read_by_another_back_end(engine, recorder):
    engine.start()
    choose(engine)
    ready(engine)
    text = "Niemand wollte darüber reden."  # short enough to be spoken in one piece
    heard = without_silence(speaks(engine, recorder, text))
    wanted = without_silence(expected(text, voice="gmw/de"))
    assert first_difference(heard, wanted) is None
    assert engine.status()["engine"] == "kokoro"
    speaks(engine, recorder)
