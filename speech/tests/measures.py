"""How long the engine takes, measured where the sound comes out and at its answers, and what it holds."""

import time
from pathlib import Path

from sound import RATE, until

FINGERPRINT = 1000  # samples that tell a sentence's begin from all others
MOVE_LIMIT = 0.06  # seconds
SILENCE_LIMIT = 0.05  # seconds
STATUS_LIMIT = 0.01
ROUNDS = 10  # a loaded machine may spoil many


def silence_after(engine, recorder, request, state):
    """From the request to the last sound at the sink."""
    recorder.loud_for(0.3)
    asked = time.monotonic()
    engine.post(request)
    assert engine.status()["state"] == state
    recorder.quiet_for(0.5)
    print("silence after", recorder.last_loud - asked)
    return recorder.last_loud - asked


def begin_after(engine, recorder, move):
    """What a sentence begins with: moved to in a pause, in which nothing else is heard."""
    engine.post("/toggle-pause")
    recorder.quiet_for(0.3)
    engine.post("/" + move)
    begin = len(recorder.samples)
    engine.post("/toggle-pause")
    recorder.loud_for(0.3)
    heard = recorder.samples[begin:]
    loud = next(index for index, sample in enumerate(heard) if sample)
    return heard[loud : loud + FINGERPRINT].tobytes()


def time_of_move(engine, recorder, move, begin):
    """From the request to the first sample of the sentence that was asked for, which begins so."""
    at = len(recorder.samples)
    engine.post("/" + move)
    found = until(lambda: recorder.samples[at:].tobytes().find(begin) + 1, 10, "the sentence's begin")
    recorder.loud_for(0.3)
    return found / 2 / RATE


def best_of(rounds, limit, measure):
    """The least of some measurements, as soon as one is good enough."""
    least = measure()
    for _ in range(rounds - 1):
        if least < limit:
            break
        least = min(least, measure())
    return least


def usual_status(engine, count=100):
    """The median of the status's times while it speaks. The slowest are the benchmark's to measure:
    on a loaded machine they are the machine's."""
    times = []
    for _ in range(count):
        begin = time.monotonic()
        state = engine.status()["state"]
        times.append(time.monotonic() - begin)
        assert state == "speaking"
        time.sleep(0.005)
    times.sort()
    print(f"status: median {times[count // 2]:.4f} s, 99th percentile {times[count * 99 // 100 - 1]:.4f} s")
    return times[count // 2]


def memory_of(pid, kind="VmRSS"):
    """Bytes of one process, as the kernel's status file names them; VmHWM is the most that it has had."""
    status = Path(f"/proc/{pid}/status").read_text(encoding="utf-8")
    return int(status.partition(f"{kind}:")[2].split()[0]) * 1024


def memory_of_all(engine):
    """Bytes of the engine with its workers and players."""
    helpers = engine.helpers("tavin.synthesis.worker") + engine.helpers("tavin.sound.player")
    return sum(map(memory_of, [engine.process.pid, *helpers]))
