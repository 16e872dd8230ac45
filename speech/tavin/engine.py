"""The engine behind its HTTP interface: what is being read, and the user's choices.

Runs on the event loop; every method but `voices`, `configure`, `store_key` and
the start returns at once.
"""

import asyncio
from functools import partial

from tavin.keys.keys import KeyringError, Keys, is_key
from tavin.log import log
from tavin.messages import named
from tavin.mpris import Nowhere, presence_of
from tavin.mpris.player import Player
from tavin.reading import Reading
from tavin.settings import FASTEST, SLOWEST, valid_speed
from tavin.setup.setup import Setup
from tavin.sound.output import Output
from tavin.sound.stream import OutputError
from tavin.synthesis.backends import BACKENDS
from tavin.synthesis.voice_choice import Choice
from tavin.synthesis.synthesis import BackendError, Synthesis, SynthesisError
from tavin.text.cld2 import detector
from tavin.text.language import Written
from tavin.text.pieces import pieces
from tavin.text.quotations import divided
from tavin.text.spoken.pronunciation import Pronunciation
from tavin.text.spoken.say import say

PATIENCE_AT_START = 1.0
SPEEDS = (0.8, 0.9, 1.0, 1.1, 1.25, 1.5, 1.75, 2.0)  # the menu's
STEPS = ("sentence", "paragraph")


class Refusal(Exception):
    """A request that cannot be met; nothing was changed. The text says why."""


class Engine:
    def __init__(self, settings):
        self._settings = settings
        offered = [*BACKENDS.values(), *([settings.server] if settings.server else [])]
        names = [backend.name for backend in offered if backend.takes_key]
        self._keys = Keys(names, settings.keyed)
        self._noted = None  # the last time that `keyed` was stored
        self._synths = {
            backend.name: Synthesis(backend, lambda backend=backend: self._key(backend))
            for backend in offered
        }
        self._setups = {
            name: Setup(synth) for name, synth in self._synths.items() if synth.backend.needs_setup
        }
        self._choice = Choice(settings, self._synths, self._setups)
        self._pronunciation = Pronunciation()
        self._output = Output()
        self._presence = Nowhere()
        self._reading = None
        self._task = None
        self._chars = 0
        self._error = settings.fault

    async def know_voices(self):
        """Wait for the voices a little, so that the first status names the right one."""
        if setup := self._choice.setup():
            setup.know_voices()
            setup.begin(self._choice.voice())
            return
        try:
            async with asyncio.timeout(PATIENCE_AT_START):
                await self._choice.synth().start()
        except (SynthesisError, TimeoutError):
            pass  # told when it matters

    async def warm_up(self):
        """Have the helpers running, so that the first speech starts at once."""
        await asyncio.to_thread(detector)  # loading it may take 50 ms
        helpers = [self._output] if self._choice.setup() else [self._choice.synth(), self._output]
        for helper in helpers:
            try:
                await helper.start()
            except (SynthesisError, OutputError) as failure:
                log.info("%s", failure)
        if self._settings.mpris:
            self._presence = await asyncio.to_thread(presence_of, Player(self))
            self._show_or_hide()
        await asyncio.to_thread(self._know_rules)
        await self._look_for_keys(self._choice.synth().backend.takes_key or bool(self._settings.keyed))

    def _know_rules(self):
        """Have them loaded that make words of signs and numbers."""
        language = self._choice.language()
        any(pieces("5 km for $1", language, 100, say=lambda sentence: say(sentence, language)))

    def end(self):
        """Silence, and no helper left."""
        self._output.kill()
        for synth in self._synths.values():
            synth.kill()

    def is_idle(self):
        """Nothing is lost when it ends now: nothing is being read, no voice is being got."""
        return self._state() == "idle" and not any(setup.under_way for setup in self._setups.values())

    def status(self):
        setup = self._choice.setup()
        setup_error = setup.error if setup else self._choice.synth().missing
        return {
            "state": self._state(),
            "chars": self._chars,
            "error": self._error,
            "engine": self._settings.engine,
            "voice": self._choice.voice(),
            "speed": self._settings.speed,
            "ready": setup.ready if setup else self._choice.synth().missing is None,
            "download": setup.download if setup else None,
            "setup_error": setup_error,
            "engines": [
                {
                    "name": synth.backend.name,
                    "label": synth.backend.label,
                    "available": self._available(synth.backend),
                }
                for synth in self._synths.values()
            ],
            **named("error", self._error),
            **named("setup_error", setup_error),
        }

    async def voices(self, name):
        synth = self._synth_named(name)
        await self._find_key(synth)  # the keyring may have come after the engine
        await self._load_voices(synth, listing=True)
        return self._choice.listed(synth)

    @property
    def speed(self):
        return self._settings.speed

    def playback(self):
        """Of the reading, in the desktop's words."""
        return {"idle": "Stopped", "paused": "Paused"}.get(self._state(), "Playing")

    def place(self):
        """The sentence that is heard; None before the first."""
        return self._reading.place() if self._reading else None

    def speak(self, text):
        self._leave()
        self._error = self._pronunciation.look() or self._settings.untold()
        self._chars = len(text)
        self._reading = self._reading_of(text)
        self._task = asyncio.get_running_loop().create_task(self._read(self._reading))
        self._show_or_hide()

    def _reading_of(self, text):
        written = Written(text)
        synth = self._choice.synth()
        backend = synth.backend
        own = self._choice.language

        async def choose(sentence):
            synth, voice = await self._choice.speaker(sentence, lambda spoken: written.of(sentence, spoken))
            return synth, voice, self._settings.speed

        def divide(sentence):
            return divided(sentence, lambda part: written.of(part, own()))

        def spoken(part):
            return say(part, written.of(part, own()), self._pronunciation.say)

        whole = written.whole(own())
        find = partial(pieces, text, whole, backend.longest_piece, backend.first_piece, divide, spoken)
        reading = Reading(find, choose, synth, self._output, self._fail)
        reading.on_place = lambda: self._presence.tell()
        return reading

    def stop(self):
        self._leave()
        self._show_or_hide()

    def _show_or_hide(self):
        if self._reading:
            self._presence.show()
        else:
            self._presence.hide()

    def _leave(self):
        if self._reading:
            self._reading.silence()
            self._task.cancel()
            self._reading = self._task = None
        self._chars = 0

    def toggle_pause(self):
        if self._reading:
            self.pause(not self._reading.paused)

    def pause(self, paused):
        if self._reading:
            self._reading.pause(paused)
            self._presence.tell()

    def next(self, by):
        check_step(by)
        if self._reading:
            self._reading.next(by)

    def previous(self, by):
        check_step(by)
        if self._reading:
            self._reading.previous(by)

    def repeat(self):
        if self._reading:
            self._reading.repeat()

    async def faster(self):
        await self._change_speed([speed for speed in SPEEDS if speed > self._settings.speed][:1])

    async def slower(self):
        await self._change_speed([speed for speed in SPEEDS if speed < self._settings.speed][-1:])

    async def _change_speed(self, found):
        if self._reading and found:
            await self.configure({"speed": found[0]})

    async def configure(self, changes):
        """Check all of the changes, then make all of them."""
        name = changes.get("engine", self._settings.engine)
        synth = self._synth_named(name)
        if "speed" in changes and not valid_speed(changes["speed"]):
            raise Refusal(f"The speed must be a number from {SLOWEST} to {FASTEST}.")
        if "voice" in changes:
            await self._load_voices(synth)
            if changes["voice"] not in [voice["id"] for voice in synth.voices]:
                raise Refusal(f"{synth.backend.label} has no such voice.")
            self._choice.keep(synth, changes["voice"])
        # Nothing but what was asked for: other changes may have been made during the wait.
        if "engine" in changes:
            self._settings.engine = name
            synth.forget_voices()
        if "speed" in changes:
            self._settings.speed = float(changes["speed"])
        stored = self._settings.save()
        if self._reading:
            self._reading.voice_changed()
        self._presence.tell()
        if "engine" in changes or ("voice" in changes and self._choice.synth().backend.voice_is_download):
            await self.know_voices()
        if "engine" in changes:
            await self._find_key(synth)
        # The answer says that it will be the same after a restart, or the status why not.
        if failure := await stored:
            self._error = f"This choice is kept only until Tavin ends: {failure}."

    async def store_key(self, name, key):
        """An empty key removes the stored one. A new one can be used at once."""
        synth = self._synth_named(name)
        label = synth.backend.label
        if not isinstance(key, str):
            raise Refusal("The key must be a text.")
        if not synth.backend.takes_key:
            raise Refusal(f"{label} takes no key.")
        key = key.strip()  # what a copy from a web page brings along
        if not is_key(key):
            raise Refusal("This is no key.")
        if synth.backend.fetches_voices:
            synth.voices = []
        synth.forget_voices()
        try:
            await self._keys.keep(name, label, key)
        except KeyringError as failure:
            kept = "is kept only until Tavin ends" if key else "could not be removed"
            self._fail(f"The key for {label} {kept}: {failure}")
        await self._note_keys()

    async def _read(self, reading):
        try:
            await reading.run()
        except (SynthesisError, OutputError) as failure:
            self._fail(str(failure))
        except Exception:
            log.exception("reading a text failed")
            self._fail("The engine could not read this text.")
        if self._reading is reading:
            self._reading = self._task = None
            self._chars = 0
            self._presence.hide()

    def _fail(self, text):
        log.info("%s", text)
        self._error = text

    def _state(self):
        if not self._reading:
            return "idle"
        if self._reading.paused:
            return "paused"
        return "speaking" if self._reading.sounding else "loading"

    def _synth_named(self, name):
        if not isinstance(name, str) or name not in self._synths:
            raise Refusal("There is no such engine.")
        return self._synths[name]

    def _available(self, backend):
        if backend.takes_key:
            return self._keys.known(backend.name)
        return backend.needs_setup or self._synths[backend.name].missing is None

    async def _find_key(self, synth):
        """Look again for a key that was not there before."""
        if synth.backend.takes_key and not self._keys.known(synth.backend.name):
            await self._look_for_keys(activate=True)

    async def _look_for_keys(self, activate):
        """`activate`: who uses no cloud voice needs no keyring started."""
        try:
            await self._keys.look(activate)
        except KeyringError as failure:
            log.info("no stored keys: %s", failure)
        await self._note_keys()

    async def _note_keys(self):
        """Remember who has a key: at the next start the keyring may come later than the engine."""
        if self._settings.keyed != self._keys.stored:
            self._settings.keyed = self._keys.stored
            self._noted = self._settings.save()
        if self._noted:
            await self._noted  # another request may have seen it first: this one waits as well

    async def _key(self, backend, prompt=True):
        try:
            key = await self._keys.key(backend.name, prompt)
        except KeyringError as failure:
            raise BackendError(f"The key for {backend.label} cannot be read: {failure}") from None
        await self._note_keys()
        if not key:
            raise BackendError(f"{backend.label} needs a key: choose “Set API Key” in Tavin's menu.")
        return key

    async def _load_voices(self, synth, listing=False):
        """Know the back-end's voices; none of a back-end whose key is missing."""
        if synth.backend.needs_setup:
            self._setups[synth.backend.name].know_voices()
            return
        try:
            if not synth.voices:
                await synth.start()
            if synth.backend.fetches_voices and (listing or not synth.voices):
                await self._fetch_voices(synth, listing)
        except SynthesisError as failure:
            raise Refusal(str(failure)) from None

    async def _fetch_voices(self, synth, listing):
        """A list that somebody only looks at is no reason to ask for the keyring's password."""
        if synth.backend.takes_key:
            if not self._keys.known(synth.backend.name):
                return
            await self._key(synth.backend, prompt=not listing)
        await synth.fetch_voices()


def check_step(by):
    if by not in STEPS:
        raise Refusal(f"The step must be one of: {', '.join(STEPS)}.")
