"""Chooses who speaks: the back-end and its voice, by what the user chose and by the text's language.

Runs on the event loop. A cloud's voice is used only where its back-end is the
chosen one: no text leaves the machine because of the language it is in.
"""

import icu

from tavin.log import log
from tavin.synthesis import voices
from tavin.synthesis.backends import LAST_RESORT
from tavin.synthesis.synthesis import BackendError, SynthesisError
from tavin.text.language import is_of_script, primary


class UnspeakableError(SynthesisError):
    """The text is in a language that no voice here speaks."""


class Choice:
    def __init__(self, settings, synths, setups):
        self._settings = settings
        self._synths = synths
        self._setups = setups
        self.users = voices.user_languages()
        self._recent = []  # primary languages of what was read, the latest first

    def synth(self):
        return self._synths[self._settings.engine]

    def setup(self):
        return self._setups.get(self._settings.engine)

    def voice(self, synth=None):
        """The user's voice of a back-end; "" where none is known."""
        synth = synth or self.synth()
        chosen = self._settings.voices.get(synth.backend.name)
        known = [voice["id"] for voice in synth.voices]
        if chosen and (not known or chosen in known):
            return chosen
        return voices.default(synth.voices, self.users[0]) or ""

    def language(self):
        """What the user's voice speaks."""
        synth = self.synth()
        own = record(synth, self.voice())
        return own and own["language"] or self.users[0]

    def keep(self, synth, voice):
        """The user chose this voice."""
        name = synth.backend.name
        self._settings.voices[name] = voice
        if language := primary(record(synth, voice)["language"]):
            chosen = self._settings.languages.setdefault(language, {})
            chosen.pop(name, None)
            chosen[name] = voice  # the latest is the last

    def listed(self, synth):
        """The voices of a back-end in the order of a menu."""
        first = [*self.users, *self._recent, *self._settings.languages]
        return voices.listed(synth.voices, first)

    async def speaker(self, sentence, tell):
        """The synthesis and the voice that speak a sentence; BackendError when that cannot be.

        `tell(own)` says in which language it is, as expected by a voice that speaks `own`.
        """
        synth = self.synth()
        if self.setup() and self.setup().refusal():
            raise BackendError(self.setup().refusal())
        if not synth.voices and (synth.backend.local or not self._settings.voices.get(synth.backend.name)):
            await synth.start()
            if synth.backend.fetches_voices and not synth.voices:
                await synth.fetch_voices()
        language = tell(self.language())
        self._note(language)
        return await self._best(synth, sentence, language)

    async def _best(self, synth, sentence, language):
        wanted = primary(language)
        if wanted == primary(self.language()) or self._speaks_too(synth, wanted):
            return synth, self.voice()
        async for other, voice in self._remembered(synth, wanted):
            return other, voice
        for other in [synth, *self._stand_ins(synth)]:
            if found := voices.of_language(await self._known(other), wanted, self.users[0]):
                return other, found
        if is_of_script(sentence, self.language()):
            return synth, self.voice()  # letters that it can read, at least
        name = icu.Locale(wanted).getDisplayLanguage(icu.Locale.getEnglish())
        raise UnspeakableError(f"No voice on this computer speaks {name}.")

    def _speaks_too(self, synth, language):
        own = record(synth, self.voice())
        unsaid = own is None or not own["language"]
        return language in synth.backend.speaks or (synth.backend.speaks_as_told and unsaid)

    async def _remembered(self, synth, language):
        """Voices that the user chose for a language, the latest first."""
        chosen = self._settings.languages.get(language, {})
        for name in reversed(chosen):
            other = self._synths.get(name)
            if other is synth or other in self._stand_ins(synth):
                if chosen[name] in [voice["id"] for voice in await self._known(other)]:
                    yield other, chosen[name]

    def _stand_ins(self, synth):
        """The local back-ends that are ready to take a language over, in the order of asking."""
        locals_ = [other for other in self._synths.values() if other.backend.local and other is not synth]
        locals_.sort(key=lambda other: other.backend.name == LAST_RESORT)
        return [other for other in locals_ if self._is_ready(other)]

    def _is_ready(self, synth):
        setup = self._setups.get(synth.backend.name)
        return setup.ready if setup else synth.missing is None

    async def _known(self, synth):
        """The voices that can speak now: not those that a choice in the menu would download first."""
        if not synth.voices and synth.backend.local:
            try:
                await synth.start()
            except SynthesisError as failure:
                log.info("%s", failure)
        return [voice for voice in synth.voices if voice.get("here", True)]

    def _note(self, language):
        language = primary(language)
        if self._recent[:1] != [language]:
            self._recent = [language, *(known for known in self._recent if known != language)][:5]


def record(synth, voice):
    return next((known for known in synth.voices if known["id"] == voice), None)
