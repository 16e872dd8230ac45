"""A helper process seen from the engine."""

import asyncio
import logging

from tavin.process.child import Child


def test_a_frame_that_cannot_be_taken_ends_the_helper_and_is_told(caplog):
    async def scenario():
        dead = asyncio.get_running_loop().create_future()

        def on_frame(kind, number, payload):
            raise ValueError("what somebody reads")

        child = await Child.start("tavin.synthesis.worker", "espeak", on_frame=on_frame, on_death=dead.set_result)
        async with asyncio.timeout(10):
            return await dead, child.alive

    with caplog.at_level(logging.INFO):
        assert asyncio.run(scenario()) == ("SIGKILL", False)
    assert "the frames of a helper could not be taken" in caplog.text
