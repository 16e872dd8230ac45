"""A worker that gives no sign of life any more."""

import asyncio
import dataclasses
import os
import signal

import pytest
from tavin.synthesis.backends import BACKENDS
from tavin.synthesis.synthesis import Synthesis, SynthesisError


def test_a_worker_that_hangs_is_ended_and_replaced():
    backend = dataclasses.replace(BACKENDS["espeak"], patience=0.5)

    async def scenario():
        synthesis = Synthesis(backend)
        await synthesis.start()
        hung = synthesis._child.pid
        os.kill(hung, signal.SIGSTOP)
        with pytest.raises(SynthesisError, match="eSpeak NG"):
            await synthesis.say("Hello.", "gmw/en-US", 1.0, bytearray().extend)
        sound = bytearray()
        await synthesis.say("Hello.", "gmw/en-US", 1.0, sound.extend)
        assert synthesis._child.pid != hung
        synthesis.kill()
        await synthesis._child._reader
        return sound

    assert len(asyncio.run(scenario())) > 10_000


def test_a_request_that_is_given_up_leaves_the_worker_warm():
    async def scenario():
        synthesis = Synthesis(BACKENDS["espeak"])
        await synthesis.start()
        worker = synthesis._child.pid
        lost = bytearray()
        given_up = asyncio.create_task(
            synthesis.say("A sentence that nobody wants. " * 20, "gmw/en-US", 1.0, lost.extend)
        )
        await asyncio.sleep(0.01)
        given_up.cancel()
        await asyncio.wait([given_up])
        before = len(lost)
        sound = bytearray()
        await synthesis.say("Hello.", "gmw/en-US", 1.0, sound.extend)
        assert synthesis._child.pid == worker
        assert len(lost) == before
        synthesis.kill()
        await synthesis._child._reader
        return sound

    assert 10_000 < len(asyncio.run(scenario())) < 100_000


def test_a_worker_without_use_is_ended_and_the_next_text_gets_a_new_one():
    backend = dataclasses.replace(BACKENDS["espeak"], idle_seconds=0.3)

    async def scenario():
        synthesis = Synthesis(backend)
        await synthesis.start()
        first = synthesis._child
        for _ in range(4):  # use keeps it
            await asyncio.sleep(0.15)
            await synthesis.say("Hello.", "gmw/en-US", 1.0, bytearray().extend)
            assert synthesis._child is first
        async with asyncio.timeout(5):
            await first._reader
        assert not first.alive
        assert synthesis.voices and synthesis.missing is None
        sound = bytearray()
        await synthesis.say("Hello.", "gmw/en-US", 1.0, sound.extend)
        assert synthesis._child is not first
        synthesis.kill()
        await synthesis._child._reader
        return sound

    assert len(asyncio.run(scenario())) > 10_000
