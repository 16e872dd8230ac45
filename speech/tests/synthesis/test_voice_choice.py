"""Who speaks a text: the back-end and the voice, by what the user chose and by the text's language."""

import asyncio
from types import SimpleNamespace

import pytest
from sound import until
from spoken import difference_in_speech, expected
from tavin.synthesis.backends import BACKENDS
from tavin.synthesis.voice_choice import Choice, UnspeakableError
from tavin.synthesis.synthesis import BackendError, SynthesisError

VOICES = {
    "kokoro": {"heart": "en-us", "emma": "en-gb", "siwis": "fr-fr"},
    "piper": {"amy": "en-us", "thorsten": "de"},
    "espeak": {"en": "en-us", "de": "de", "fr": "fr-fr", "fr-ch": "fr-ch", "th": "th"},
    "elevenlabs": {"ada": "en", "kim": "de", "zed": ""},
    "openai": {"alloy": ""},
}


class Synth:
    """A back-end whose voices are known once it was started."""

    def __init__(self, name):
        self.backend = BACKENDS[name]
        self.missing = None
        self.voices = []
        self.known = [{"id": voice, "name": voice, "language": language} for voice, language in VOICES[name].items()]

    async def start(self):
        if self.missing:
            raise SynthesisError(self.missing)
        self.voices = self.known

    async def fetch_voices(self):
        self.voices = self.known


class Chooser:
    def __init__(self, engine, ready=True, **voices):
        self.settings = SimpleNamespace(engine=engine, voices=voices, languages={})
        self.synths = {name: Synth(name) for name in BACKENDS}
        setup = SimpleNamespace(ready=ready, refusal=lambda: None if ready else "not yet")
        piper = SimpleNamespace(ready=engine == "piper", refusal=lambda: None)
        self.choice = Choice(self.settings, self.synths, {"kokoro": setup, "piper": piper})
        self.choice.users = ["en-us"]
        self.synths[engine].voices = self.synths[engine].known

    def keep(self, name, voice):
        self.synths[name].voices = self.synths[name].known
        self.choice.keep(self.synths[name], voice)

    def speaker(self, language, sentence="abc"):
        synth, voice = asyncio.run(self.choice.speaker(sentence, lambda own: language))
        return synth.backend.name, voice


@pytest.mark.parametrize(
    "engine, voice, language, speaker",
    [
        ("kokoro", "emma", "en-us", ("kokoro", "emma")),  # the chosen voice where it speaks it
        ("kokoro", "emma", "fr", ("kokoro", "siwis")),  # the back-end's own
        ("kokoro", "emma", "de", ("espeak", "de")),  # another one's
        ("piper", "amy", "de", ("piper", "thorsten")),
        ("espeak", "de", "en", ("espeak", "en")),
        ("espeak", "en", "th", ("espeak", "th")),
        ("elevenlabs", "ada", "de", ("elevenlabs", "ada")),  # whose voices speak it all
        ("elevenlabs", "ada", "th", ("espeak", "th")),
        ("openai", "alloy", "th", ("openai", "alloy")),
    ],
)
def test_the_chosen_voice_then_its_back_ends_then_anothers(engine, voice, language, speaker):
    assert Chooser(engine, **{engine: voice}).speaker(language) == speaker


def test_a_voice_that_is_still_to_be_downloaded_does_not_stand_in():
    chooser = Chooser("piper", piper="amy")
    for voice in chooser.synths["piper"].known:
        voice["here"] = voice["id"] == "amy"
    assert chooser.speaker("de") == ("espeak", "de")


def test_the_voice_last_chosen_for_a_language_comes_before_the_best_one():
    chooser = Chooser("espeak")
    chooser.keep("espeak", "fr-ch")
    chooser.keep("espeak", "en")
    assert chooser.settings.voices == {"espeak": "en"}
    assert chooser.speaker("fr") == ("espeak", "fr-ch")
    assert chooser.speaker("de") == ("espeak", "de")
    chooser.keep("kokoro", "siwis")  # later, by another back-end
    assert chooser.speaker("fr") == ("kokoro", "siwis")
    chooser.keep("espeak", "fr")
    chooser.keep("espeak", "en")
    assert chooser.speaker("fr") == ("espeak", "fr")
    assert list(chooser.settings.languages["fr"].values()) == ["siwis", "fr"]


def test_what_was_chosen_counts_before_the_workers_are_up():
    chooser = Chooser("espeak", espeak="fr-ch")
    chooser.synths["espeak"].voices = []
    expected_by = []
    synth, voice = asyncio.run(chooser.choice.speaker("abc", lambda own: expected_by.append(own) or own))
    assert (voice, expected_by) == ("fr-ch", ["fr-ch"])
    chooser = Chooser("kokoro", kokoro="emma")
    chooser.settings.languages = {"de": {"espeak": "de"}, "fr": {"espeak": "fr-ch"}}
    assert chooser.speaker("fr") == ("espeak", "fr-ch")


def test_a_cloud_voice_never_stands_in_for_a_local_one():
    chooser = Chooser("kokoro", kokoro="emma")
    chooser.keep("elevenlabs", "kim")
    assert chooser.speaker("de") == ("espeak", "de")
    chooser.synths["espeak"].missing = "not installed"
    for language in ("de", "th"):
        assert chooser.speaker(language) == ("kokoro", "emma")  # Latin letters, in this test
    with pytest.raises(UnspeakableError, match="speaks Thai"):
        chooser.speaker("th", "ไทย")


def test_no_cloud_stands_in_for_another():
    chooser = Chooser("openai", openai="alloy")
    chooser.keep("elevenlabs", "kim")
    assert chooser.speaker("de") == ("openai", "alloy")


def test_what_is_not_ready_does_not_stand_in():
    chooser = Chooser("espeak", ready=False, espeak="en")
    chooser.settings.languages = {"fr": {"kokoro": "siwis"}}
    chooser.synths["kokoro"].voices = chooser.synths["kokoro"].known
    assert chooser.speaker("fr") == ("espeak", "fr")


def test_a_chosen_voice_that_is_gone_is_passed_over():
    chooser = Chooser("espeak", espeak="en")
    chooser.settings.languages = {"fr": {"kokoro": "gone", "espeak": "gone"}}
    assert chooser.speaker("fr") == ("espeak", "fr")


def test_while_the_chosen_back_end_is_not_ready_it_says_so():
    with pytest.raises(BackendError, match="not yet"):
        Chooser("kokoro", ready=False).speaker("en")


def test_what_nobody_speaks_is_read_only_where_the_letters_are_known():
    chooser = Chooser("espeak", espeak="en")
    assert chooser.speaker("tn", "Batho botlhe") == ("espeak", "en")
    with pytest.raises(UnspeakableError, match="No voice on this computer speaks Khmer"):
        chooser.speaker("km", "ភាសាខ្មែរ")


def test_the_menu_begins_with_the_languages_of_the_user_and_of_recent_texts():
    chooser = Chooser("espeak", espeak="en")
    chooser.choice.users = ["de-de"]
    listed = [voice["id"] for voice in chooser.choice.listed(chooser.synths["espeak"])]
    assert listed[0] == "de" and listed[-1] == "th"
    chooser.speaker("th", "ไทย")
    listed = [voice["id"] for voice in chooser.choice.listed(chooser.synths["espeak"])]
    assert listed[:2] == ["de", "th"]


FRENCH = "Le soir était long, et personne dans la maison ne voulait en parler."
KHMER = "មនុស្សទាំងអស់កើតមកមានសេរីភាព។"


def test_choosing_a_voice_keeps_it_for_its_language(engine, new_engine, recorder):
    for voice in ("roa/fr-CH", "gmw/en-GB-scotland"):
        assert engine.post("/config", voice=voice)[0] == 200
    engine.end()
    engine = new_engine().start()  # also after a restart
    engine.speak(FRENCH)
    engine.wait_for("speaking")
    assert engine.status()["voice"] == "gmw/en-GB-scotland"
    assert engine.wait_for("idle")["error"] is None
    recorder.quiet_for(0.5)
    assert difference_in_speech(recorder.samples, expected(FRENCH, voice="roa/fr-CH")) is None


def test_a_quotation_is_heard_in_its_own_language(engine, recorder):
    parts = [
        ("The evening was long, and he said:", "gmw/en-US"),
        ("“" + FRENCH.rstrip(".") + ",”", "roa/fr"),
        ("and then he left.", "gmw/en-US"),
    ]
    engine.speak(" ".join(text for text, _ in parts))
    assert engine.wait_for("idle", 30)["error"] is None
    recorder.quiet_for(0.5)
    heard = sum(abs(sample) > 0 for sample in recorder.samples)
    wanted = sum(sum(abs(sample) > 0 for sample in expected(text, voice=voice)) for text, voice in parts)
    read_in_english = sum(abs(sample) > 0 for sample in expected(" ".join(text for text, _ in parts)))
    assert abs(heard - wanted) < 0.02 * wanted < abs(read_in_english - wanted)


def test_a_text_that_nobody_can_speak_says_so_and_the_rest_is_read(engine, recorder):
    engine.speak(KHMER + " " + KHMER)
    assert engine.wait_for("idle")["error"] == "No voice on this computer speaks Khmer."
    assert recorder.last_loud is None
    engine.speak(f"This is English.\n\n{KHMER}\n\nAnd so is this.")
    status = engine.wait_for("idle")
    assert status["error"] == "No voice on this computer speaks Khmer."
    until(lambda: recorder.last_loud, 5, "sound")
    recorder.quiet_for(0.5)
    wanted = expected("This is English. And so is this.")
    assert difference_in_speech(recorder.samples, wanted) is None
