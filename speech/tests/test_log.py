"""What goes wrong in unexpected places shows its kind, and never a text or a key."""

import subprocess
import sys

from cloud_service import KEY
from engine_process import FOLDER
from sound import WITH_US

UNCAUGHT = """
import asyncio, threading
from tavin import log

async def main():
    asyncio.get_running_loop().set_exception_handler(log.loop_failure)

    async def task():
        raise LookupError({key!r})

    def callback(key):
        raise ArithmeticError(key)

    asyncio.create_task(task())
    asyncio.get_running_loop().call_soon(callback, {key!r})
    asyncio.get_running_loop().call_exception_handler({{"message": {key!r}}})
    await asyncio.sleep(0.01)

def thread():
    raise OSError({key!r})

class Unraisable:
    def __del__(self):
        raise BufferError({key!r})

log.set_up()
asyncio.run(main())
running = threading.Thread(target=thread)
running.start()
running.join()
Unraisable()
try:
    raise KeyError({key!r})
except KeyError:
    log.log.exception("caught")
raise ValueError({key!r})
"""

BROKEN_KEYRING = """
from tavin import server
from tavin.keys import keys

async def ask(*what, do, **more):
    if do == "search":
        return {"running": True, "names": ["elevenlabs"]}
    raise ValueError(repr((what, more)))

keys.ask = ask
server.main()
"""


def test_what_nobody_caught_tells_its_kind_and_place_only():
    command = [*WITH_US, sys.executable, "-c", UNCAUGHT.format(key=KEY)]
    run = subprocess.run(command, cwd=FOLDER, capture_output=True, text=True, timeout=20, check=False)
    assert run.returncode == 1
    assert KEY not in run.stdout + run.stderr
    for kind in ("LookupError", "ArithmeticError", "OSError", "BufferError", "KeyError", "ValueError"):
        assert run.stderr.count(f"{kind} at <string>:") == 1, run.stderr
    assert len(run.stderr.splitlines()) == 7


def test_a_key_is_in_no_answer_and_no_log_when_the_engine_fails(new_engine):
    engine = new_engine(command=("-c", BROKEN_KEYRING)).start()
    code, answer = engine.post("/key", engine="openai", key=KEY)
    assert code == 500
    assert KEY not in repr(answer)
    engine.post("/config", engine="elevenlabs")
    engine.speak("Some secret words.")
    assert "could not read" in engine.wait_for("idle")["error"]
    engine.end()
    assert "ValueError at " in engine.log()
    assert KEY not in engine.log() and "secret" not in engine.log()
