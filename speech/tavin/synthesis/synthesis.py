"""One back-end's worker as the engine sees it: start it, have it speak, survive its death.

Runs on the event loop. Requests are answered in order; a cancelled one is
finished by the worker, which stays warm, and its sound is thrown away. Only a
cloud's worker is ended with it: nobody pays or waits for what nobody hears.
"""

import asyncio
import json
from dataclasses import dataclass
from typing import Callable

from tavin.log import log
from tavin.messages import identified
from tavin.pace import Pace
from tavin.process import frames
from tavin.process.child import Child
from tavin.process.shared import Shared
from tavin.setup import needs

# libespeak-ng connects to the sound server when it is initialised, though it never plays anything, and
# waits for one that does not answer. This address refuses at once.
NO_SOUND_SERVER = {"PULSE_SERVER": "unix:/dev/null/none"}

LIST_SECONDS = 600.0  # that a service's list of voices is kept


class SynthesisError(Exception):
    """Text for the user: why a sentence could not be turned into sound."""


class BackendError(SynthesisError):
    """The same will happen to every sentence."""


@dataclass
class Request:
    done: asyncio.Future
    on_audio: Callable


class Synthesis:
    def __init__(self, backend, key=None):
        """`key()` waits for the user's key, where the back-end takes one; BackendError without."""
        self.backend = backend
        self.rate = None
        self.voices = []  # dictionaries with id, name, language
        self.missing = None  # why the back-end cannot work, for the user
        self.pace = Pace()
        self._key = key
        self._list = Shared(self._ask_for_voices, kept=LIST_SECONDS, lasts=is_refusal)
        self._child = None
        self._starting = asyncio.Lock()
        self._hello = None
        self._number = 0
        self._requests = {}  # by number
        self._heard_at = 0.0
        self._idle = None  # timer that gives the worker's memory back

    async def start(self):
        """Have a worker running; SynthesisError when that cannot be."""
        async with self._starting:
            try:
                if not (self._child and self._child.alive):
                    await self._launch()
                async with asyncio.timeout(self.backend.start_seconds):
                    # Shielded: one caller that gives up must not end it for the next.
                    await asyncio.shield(self._hello)
                self._rest()
            except (OSError, TimeoutError):
                self.kill()
                raise SynthesisError(f"{self.backend.label} could not be started.") from None

    async def _launch(self):
        self._hello = hello = asyncio.get_running_loop().create_future()

        def while_current(react):
            return lambda *what: react(*what) if self._hello is hello else None

        self._child = await Child.start(
            "tavin.synthesis.worker",
            self.backend.name,
            on_frame=while_current(self._frame),
            on_death=while_current(self._death),
            quiet=True,  # libraries may print what they were given to say
            python=needs.of(self.backend).libraries.python if self.backend.needs_setup else None,
            environment={**NO_SOUND_SERVER, **self.backend.environment},
        )

    async def say(self, text, voice, speed, on_audio):
        """Turn one piece of text into sound, handed to `on_audio` as it comes."""
        await self._request(frames.SAY, {"text": text, "voice": voice, "speed": speed}, on_audio)

    async def fetch_voices(self):
        """Know the voices of a service: asked at most every ten minutes, and once for a key that it refuses."""
        await self._list.answer()

    def forget_voices(self):
        """Ask anew the next time: what was refused may be granted then."""
        self._list.forget()

    async def _ask_for_voices(self):
        self.voices = json.loads(await self._request(frames.VOICES, {}, lambda samples: None))

    def kill(self):
        if self._child:
            self._child.kill()

    async def _request(self, kind, content, on_audio):
        if self.backend.takes_key:
            content["key"] = await self._key()
        await self.start()
        self._number = self._number % (2**32 - 1) + 1
        number = self._number
        loop = asyncio.get_running_loop()
        request = self._requests[number] = Request(loop.create_future(), on_audio)
        self._child.send(kind, number, json.dumps(content).encode())
        self._heard_at = loop.time()
        try:
            return await self._await_with_patience(request.done)
        finally:
            self._requests.pop(number, None)
            if not request.done.done():
                self._abandon(number)
            self._rest()

    def _abandon(self, number):
        """Have the next request begin soon, with a cloud in a new worker."""
        if not self.backend.local:
            self._leave()
            self._refuse_requests(f"{self.backend.label} was interrupted.")
        elif self._child:
            self._child.send(frames.ABANDON, number)

    def _leave(self):
        """End the worker; the next request gets a new one."""
        self.kill()
        self._child = self._hello = None

    def _rest(self):
        """Give the worker's memory back when nothing is asked of it for long."""
        if self._idle:
            self._idle.cancel()
        if self.backend.idle_seconds:
            loop = asyncio.get_running_loop()
            self._idle = loop.call_later(self.backend.idle_seconds, self._give_back)

    def _give_back(self):
        self._idle = None
        if not self._requests and not self._starting.locked() and self._child:
            log.info("%s was not used for long: its memory is given back", self.backend.name)
            self._leave()

    async def _await_with_patience(self, done):
        loop = asyncio.get_running_loop()
        while not done.done():
            left = self._heard_at + self.backend.patience - loop.time()
            if left <= 0:
                self.kill()
                left = None  # its death ends the wait
            await asyncio.wait([done], timeout=left)
        return done.result()

    def _frame(self, kind, number, payload):
        self._heard_at = asyncio.get_running_loop().time()
        if number == 0:
            self._greet(kind, payload)
            return
        request = self._requests.get(number)
        if request is None or request.done.done():
            return  # it was given up
        if kind == frames.AUDIO:
            request.on_audio(payload)
        elif kind in (frames.DONE, frames.VOICES):
            request.done.set_result(payload)
        elif kind == frames.FAILED:
            self._refuse(request.done, payload.decode(errors="replace"), BackendError)

    def _greet(self, kind, payload):
        if kind == frames.MISSING:
            self.missing = payload.decode(errors="replace")
            log.info("%s cannot work: %s", self.backend.name, self.missing)
            self._refuse(self._hello, self.missing)
            return
        hello = json.loads(payload)
        self.missing, self.rate = None, hello["rate"]
        self.voices = hello["voices"] or self.voices  # a cloud's are known only to who has a key
        if not self._hello.done():
            self._hello.set_result(None)

    def _death(self, how):
        log.info("the %s worker ended (%s)", self.backend.name, how)
        self._refuse(self._hello, f"{self.backend.label} could not be started ({how}).")
        self._refuse_requests(f"{self.backend.label} stopped unexpectedly ({how}) and was started again.")

    def _refuse_requests(self, text):
        for request in self._requests.values():
            self._refuse(request.done, text)

    @staticmethod
    def _refuse(future, text, error=SynthesisError):
        if future and not future.done():
            future.set_exception(error(text))
            future.exception()  # looked at, so that an unawaited one is not logged


def is_refusal(failure):
    """Of the key: it will be the same until the user acts."""
    known = identified(str(failure))
    return known is not None and known["id"] == "key-refused"
