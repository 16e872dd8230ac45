"""Another back-end in the middle of a text, and cloud services that stall."""

import os
import signal
import threading
import time

from cloud_service import KEY, SENTENCES, TEXT, use
from sound import RATE, until
from tavin.synthesis.backends.cloud import SILENCE_SECONDS


def test_a_stop_while_the_service_stalls_frees_the_next_text(cloud_engine, service):
    use(cloud_engine, "openai")
    service.trouble = "stall"
    cloud_engine.speak(TEXT)
    until(lambda: service.texts(), 5, "the request")
    assert cloud_engine.status()["state"] == "loading"
    cloud_engine.post("/stop")
    assert cloud_engine.status()["state"] == "idle"
    service.trouble = None
    begin = time.monotonic()
    cloud_engine.speak("Hello.")
    cloud_engine.wait_for("speaking")
    assert time.monotonic() - begin < SILENCE_SECONDS - 1
    assert cloud_engine.wait_for("idle")["error"] is None


def test_a_service_that_stalls_becomes_an_error(cloud_engine, service):
    use(cloud_engine, "openai")
    service.trouble = "stall"
    cloud_engine.speak(TEXT)
    assert "OpenAI is too slow" in cloud_engine.wait_for("idle", 30)["error"]


def test_another_back_end_takes_over_from_a_stalled_one(cloud_engine, service):
    use(cloud_engine, "openai")
    service.trouble = "stall"
    cloud_engine.speak(TEXT)
    until(lambda: service.texts(), 5, "the request")
    begin = time.monotonic()
    assert cloud_engine.post("/config", engine="espeak", speed=3)[0] == 200
    cloud_engine.wait_for("speaking")
    assert time.monotonic() - begin < SILENCE_SECONDS - 1
    assert cloud_engine.wait_for("idle", 60)["error"] is None


def test_a_change_to_the_cloud_acts_from_the_next_sentence_on(cloud_engine, service, recorder):
    cloud_engine.post("/key", engine="openai", key=KEY)
    cloud_engine.post("/config", speed=2)
    cloud_engine.speak(TEXT)
    recorder.loud_for(0.3)
    cloud_engine.post("/config", engine="openai")
    assert cloud_engine.wait_for("idle", 60)["error"] is None
    texts = service.texts()
    assert 4 <= len(texts) < len(SENTENCES)
    assert texts == SENTENCES[-len(texts) :]
    recorder.quiet_for(0.5)
    assert recorder.samples  # the last of them is the tone of the service
    loud = max(index for index, sample in enumerate(recorder.samples) if abs(sample) > 50)
    tail = recorder.samples[loud - int(0.3 * RATE) : loud]
    assert min(max(abs(sample) for sample in tail[start : start + 200]) for start in range(0, len(tail), 200)) > 5000


def test_a_change_from_the_cloud_acts_from_the_next_sentence_on(cloud_engine, service):
    service.seconds = 1
    use(cloud_engine, "openai")
    cloud_engine.speak(TEXT)
    cloud_engine.wait_for("speaking")
    cloud_engine.post("/config", engine="espeak", speed=3)
    count = len(service.texts())
    assert cloud_engine.wait_for("idle", 60)["error"] is None
    assert len(service.texts()) == count < len(SENTENCES)


def test_after_an_error_another_back_end_can_read_on(cloud_engine, service):
    service.seconds = 1.5
    use(cloud_engine, "openai")
    cloud_engine.speak(TEXT)
    cloud_engine.wait_for("speaking")
    service.trouble = 402
    until(lambda: "402" in (cloud_engine.status()["error"] or ""), 10, "the error")
    asked = len(service.texts())
    cloud_engine.post("/key", engine="elevenlabs", key=KEY)
    service.trouble = None
    cloud_engine.post("/config", engine="elevenlabs")
    cloud_engine.wait_for("idle", 60)
    assert service.texts()[asked - 1 :][-1] == SENTENCES[-1]
    assert set(SENTENCES) == set(service.texts())


def test_a_killed_worker_costs_a_sentence_at_most(cloud_engine, service):
    service.seconds = 1
    use(cloud_engine, "openai")
    cloud_engine.speak(TEXT)
    cloud_engine.wait_for("speaking")
    for worker in cloud_engine.helpers("openai"):
        os.kill(worker, signal.SIGKILL)
    cloud_engine.wait_for("idle", 60)
    assert service.texts()[-1] == SENTENCES[-1]


def test_a_change_that_waits_undoes_no_other(cloud_engine, service):
    use(cloud_engine, "elevenlabs")
    service.trouble = "stall"
    answers = []
    post = threading.Thread(target=lambda: answers.append(cloud_engine.post("/config", voice="zed/1")))
    post.start()
    until(lambda: service.requests, 5, "the voices are asked for")
    assert cloud_engine.post("/config", engine="espeak", speed=2)[0] == 200
    service.release.set()
    post.join(10)
    assert answers == [(200, {"ok": True})]
    status = cloud_engine.status()
    assert (status["engine"], status["speed"]) == ("espeak", 2.0)
    cloud_engine.post("/config", engine="elevenlabs")
    assert cloud_engine.status()["voice"] == "zed/1"
