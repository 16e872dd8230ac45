"""One question for all who want its answer."""

import asyncio
import math


class Shared:
    """Who asks while the question is under way, or `kept` seconds after its answer, gets that one.

    A failure is shared too, and kept, until it is forgotten, where `lasts(failure)` says so. The last question
    is given up when nobody waits for it any more.
    """

    def __init__(self, ask, kept=0.0, lasts=lambda failure: False):
        self._ask = ask
        self._kept = kept
        self._lasts = lasts
        self._task = None
        self._waiting = 0
        self._until = 0.0

    async def answer(self):
        loop = asyncio.get_running_loop()
        if self._task is None or (self._task.done() and loop.time() >= self._until):
            self._begin(loop)
        task = self._task
        self._waiting += 1
        try:
            return await asyncio.shield(task)
        finally:
            self._waiting -= task is self._task
            if task is self._task and not self._waiting and not task.done():
                task.cancel()
                self._task = None

    def forget(self):
        """Ask anew the next time. Who waits for the last question still gets its answer."""
        self._task = None

    def _begin(self, loop):
        def keep(task):
            failure = None if task.cancelled() else task.exception()  # looked at: nobody may be waiting for it
            if task is not self._task:
                return
            if failure:
                self._until = math.inf if self._lasts(failure) else loop.time()
            else:
                self._until = loop.time() + self._kept

        self._task = loop.create_task(self._ask())
        self._task.add_done_callback(keep)
        self._waiting = 0
