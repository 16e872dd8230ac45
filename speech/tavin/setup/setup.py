"""A back-end's set-up as the engine sees it: have what it needs got, then load it.

Runs on the event loop. A failure stays until the user chooses the back-end again.
"""

import asyncio

from tavin.log import log
from tavin.process import frames
from tavin.process.child import Child
from tavin.setup import needs
from tavin.synthesis.synthesis import SynthesisError

TRIAL = "Hello."  # spoken to nobody
PATIENCE = 900.0  # seconds without a sign of life from the preparation: its own deadlines are shorter


class Setup:
    def __init__(self, synthesis):
        self._synthesis = synthesis
        self._backend = synthesis.backend
        self._voice = None  # whose files are wanted; "" where they serve all voices
        self._loaded = None  # the last voice that was ready
        self._error = None
        self._task = None
        self.download = None  # the fraction that is there, while it is being downloaded

    @property
    def ready(self):
        """Loaded once: giving the memory back does not change that, a model that is gone does."""
        return self._loaded is not None and self._loaded == self._voice and self._synthesis.missing is None

    @property
    def error(self):
        return self._error or self._synthesis.missing

    @property
    def under_way(self):
        return self._task is not None and not self._task.done()

    def begin(self, voice):
        """Set up for a voice, or try again; nothing when it is ready or under way."""
        if not self._backend.voice_is_download:
            voice = ""
        if voice != self._voice and self._task:
            self._task.cancel()  # what came is kept
            self._task = self.download = None
        self._voice = voice
        if not self.ready and not self.under_way:
            self._error = self._synthesis.missing = None
            self.know_voices()
            self._task = asyncio.get_running_loop().create_task(self._run(voice))

    def refusal(self):
        """Why nothing can be spoken now; None when it can."""
        if self.ready:
            return None
        label = self._backend.label
        if self.download is not None:
            return f"{label} is still downloading its voices ({int(self.download * 100)}%)."
        return self.error or f"{label} is still loading its voices."

    def know_voices(self):
        """List the voices without loading the model, as soon as they can be known."""
        if not self._synthesis.voices or self._backend.voice_is_download:
            self._synthesis.voices = needs.of(self._backend).voices()

    async def _run(self, voice):
        self.download = None
        try:
            await self._prepare(voice)
            self.download = None
            self.know_voices()
            await self._load()
            if voice:
                await self._load_voice(voice)
            self._loaded = voice
            licence = needs.of(self._backend).licence(voice)
            log.info("%s is ready (%s)", self._backend.name, f"{voice or 'all voices'}: {licence or 'licence unknown'}")
        except (SynthesisError, OSError) as failure:
            self._fail(str(failure))
        except Exception:
            log.exception("setting up %s failed", self._backend.name)
            self._fail(self._unusable())

    def _unusable(self):
        return f"{self._backend.label} could not be set up. Choose it again."

    def _fail(self, text):
        self._error, self.download = text, None
        log.info("%s cannot be set up: %s", self._backend.name, text)

    async def _load(self):
        try:
            await self._synthesis.start()
        except SynthesisError as failure:
            if self._synthesis.missing:
                raise  # which says what to do
            guess = " This computer may have too little memory." if "SIGKILL" in str(failure) else ""
            raise SynthesisError(f"{failure}{guess} Choose {self._backend.label} again.") from None

    async def _load_voice(self, voice):
        """Which the worker else does when it is first to speak with it: that takes a second or more."""
        try:
            await self._synthesis.say(TRIAL, voice, 1.0, lambda samples: None)
        except SynthesisError as failure:
            log.info("the voice %s of %s cannot be loaded: %s", voice, self._backend.name, failure)
            raise SynthesisError(self._unusable()) from None

    async def _prepare(self, voice):
        loop = asyncio.get_running_loop()
        ended = loop.create_future()
        child = None

        def fail(text):
            if not ended.done():
                ended.set_exception(SynthesisError(text))

        def on_frame(kind, _number, payload):
            if ended.done():
                return
            patience.reschedule(loop.time() + PATIENCE)
            if kind == frames.PROGRESS:
                self.download = float(payload)
            elif kind == frames.MISSING:
                fail(payload.decode(errors="replace"))
            elif kind == frames.DONE:
                ended.set_result(None)

        def on_death(how):
            fail(f"Getting the voices stopped unexpectedly ({how}). Choose {self._backend.label} again.")

        try:
            async with asyncio.timeout(PATIENCE) as patience:
                child = await Child.start(
                    "tavin.setup.preparation",
                    self._backend.name,
                    voice,
                    on_frame=on_frame,
                    on_death=on_death,
                    quiet=True,
                )
                await ended  # is done, by cancelling, when the time is up
        except TimeoutError:
            raise SynthesisError(
                f"Getting the voices takes too long. Choose {self._backend.label} again."
            ) from None
        finally:
            if child and ended.cancelled():
                child.kill()
