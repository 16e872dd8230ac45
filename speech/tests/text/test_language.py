"""The language of a text, and that nothing is claimed where it is uncertain."""

import ctypes
import json
import time
from pathlib import Path

import pytest
from tavin.text import cld2
from tavin.text.language import Written, of_text, primary, tell, words

# The first article of the Universal Declaration of Human Rights, which is in the public domain, in
# languages that eSpeak NG speaks.
DECLARATION = json.loads(Path(__file__).with_name("declaration.json").read_text("utf-8"))


def five_words(text):
    parts = text.split()
    return text[:20] if words(text) > 2 * len(parts) else " ".join(parts[:5])


def missed(texts, expected):
    return {language for language, text in texts.items() if primary(of_text(text, expected)) != language}


def test_a_paragraph_is_told_in_all_but_two_languages():
    assert len(DECLARATION) > 53
    for expected in ("en-us", "sw"):
        assert len(missed(DECLARATION, expected)) <= 2


def test_five_words_are_told_in_all_but_six_languages():
    texts = {language: five_words(text) for language, text in DECLARATION.items()}
    assert len(missed(texts, "en-us")) <= 6


@pytest.mark.parametrize("language", DECLARATION)
def test_a_text_in_the_expected_language_stays_in_it(language):
    text = DECLARATION[language]
    for expected in (language, f"{language}-xx"):
        assert of_text(text, expected) == expected
        assert of_text(five_words(text), expected) == expected
        assert Written(text).of(five_words(text), expected) == expected


@pytest.mark.parametrize(
    "text, expected",
    [
        ("Sva ljudska bića rađaju se slobodna i jednaka u dostojanstvu i pravima.", language)
        for language in ("bs", "hr", "sr")
    ]
    + [("人人生而自由，在尊严和权利上一律平等。", language) for language in ("cmn", "yue")]
    + [("Alle mennesker er født frie", language) for language in ("da", "nb")],
)
def test_the_expected_language_wins_a_tie(text, expected):
    assert of_text(text, expected) == expected


def test_a_language_that_is_not_known_is_left_for_another_script_only():
    assert of_text(DECLARATION["en"], "pap") == "pap"
    assert of_text(DECLARATION["el"], "pap") == "el"


@pytest.mark.parametrize(
    "text",
    ["", " ", "123", "😀😀😀", "Hamburg", "Computer", "no no no", "La La Land", "x" * 5000, "OK, Berlin!"],
)
@pytest.mark.parametrize("expected", ["en-us", "de", "ja"])
def test_unsure_ones_are_as_expected(text, expected):
    assert of_text(text, expected) == expected


@pytest.mark.parametrize(
    "text, expected",
    [("Привіт, світе", "uk"), ("سلام دنیا", "fa"), ("東京", "ja"), ("Здравей", "bg"), ("नमस्कार", "mr")],
)
def test_a_script_that_the_voice_reads_stays_its_own(text, expected):
    assert of_text(text, expected) == expected


ENGLISH = "The evening was long, and nobody in the house wanted to talk about what had happened. "


@pytest.mark.parametrize(
    "sentence, language",
    [
        ("Je ne veux pas y aller ce soir, il est trop tard.", "fr"),
        ("Ich weiß nicht, wo er heute ist.", "de"),
        ("Слово London не русское.", "ru"),
        ("这是中文。", "cmn"),
        ("The word Москва is Russian.", "en-us"),
        ("C'est la vie.", "en-us"),  # a phrase, not yet a sentence
        ("Rio de Janeiro!", "en-us"),
        ("He left.", "en-us"),
        ("1,000,000 = 10^6", "en-us"),
        ("", "en-us"),
    ],
)
def test_each_sentence_has_its_own(sentence, language):
    assert Written(ENGLISH * 3 + sentence).of(sentence, "en-us") == language


def test_a_short_sentence_may_be_in_a_language_that_was_met_before():
    written = Written(ENGLISH * 3)
    assert written.of("Pourquoi pas?", "en-us") == "en-us"
    assert written.of("Je ne veux pas y aller ce soir, il est trop tard.", "en-us") == "fr"
    assert written.of("Pourquoi pas?", "en-us") == "fr"
    assert written.of("Why not?", "en-us") == "en-us"


def test_what_a_sentence_is_too_short_for_the_text_decides():
    text, sentence = DECLARATION["mk"], "Секој има право на живот, слобода и сигурност."
    assert tell(sentence, "mk") == "sr"
    assert of_text(sentence, "mk") == "mk"
    assert Written(text + sentence).of(sentence, "mk") == "mk"
    assert Written(DECLARATION["nb"]).of("Alle mennesker er født frie", "en-us") == "nb"


def test_a_title_without_syllables_in_a_japanese_text_is_japanese():
    assert Written(DECLARATION["ja"]).of("世界人権宣言前文及第一条", "ja") == "ja"


@pytest.mark.parametrize("failure", [OSError("not there"), AttributeError("no such symbol")])
def test_without_the_library_scripts_are_told(monkeypatch, failure):
    def fail(*_, **__):
        raise failure

    monkeypatch.setattr(ctypes, "CDLL", fail)
    cld2.detector.cache_clear()
    try:
        assert of_text(DECLARATION["de"], "en-us") == "en-us"
        assert of_text(DECLARATION["ru"], "en-us") == "ru"
        assert of_text(DECLARATION["uk"], "uk") == "uk"
    finally:
        cld2.detector.cache_clear()


def test_a_library_that_tells_wrong_is_not_used(monkeypatch):
    monkeypatch.setattr(cld2.Detector, "tell", lambda *_: "de")
    cld2.detector.cache_clear()
    try:
        assert cld2.detector() is None
    finally:
        cld2.detector.cache_clear()


def test_no_text_breaks_it():
    for text in ("\ud800", "a\0b", "\0" * 5000, "\U0010ffff" * 3000, "é" * 1999, "<a b='" * 500, "&#x110000;" * 300):
        assert of_text(text, "en-us") == "en-us"


def test_a_huge_text_takes_no_longer():
    text = "Ein Text, der kein Ende hat, und das ist nicht die Regel. " * 200_000
    begin = time.process_time()
    assert of_text(text, "en-us") == "de"
    assert time.process_time() - begin < 0.1
