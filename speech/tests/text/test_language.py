"""The language of a text, and that nothing is claimed where it is uncertain."""

import time

import pytest
from tavin.text.language import of_script, of_text


@pytest.mark.parametrize(
    "text, language",
    [
        ("The quick brown fox jumps over the lazy dog, and it is not the only one of them.", "en"),
        ("Der schnelle Fuchs springt über den Hund, und das ist nicht der einzige.", "de"),
        ("Le renard est dans la forêt avec les chiens, et il ne veut pas en sortir.", "fr"),
        ("El zorro está en el bosque con los perros, y no quiere salir de la casa.", "es"),
        ("La volpe è nel bosco con i cani, e non vuole che il cacciatore la veda per un giorno.", "it"),
        ("A raposa está na floresta com os cães e não quer sair da toca para o campo.", "pt"),
        ("De vos is in het bos met de honden, en hij wil er niet uit, maar dat is niet erg.", "nl"),
        ("Räven är i skogen med hundarna, och det är inte den enda som har kommit till oss.", "sv"),
        ("Lis jest w lesie z psami i nie chce się z nim spotkać, ale to nie jest jego dom.", "pl"),
        ("Kettu on metsässä ja se ei ole yksin, mutta hän on kotona kun sataa.", "fi"),
        ("Лиса живёт в лесу и не хочет выходить.", "ru"),
        ("Η αλεπού ζει στο δάσος.", "el"),
        ("השועל גר ביער.", "he"),
        ("الثعلب يعيش في الغابة.", "ar"),
        ("狐狸住在森林里。", "cmn"),
        ("狐は森に住んでいます。", "ja"),
        ("여우는 숲에 산다.", "ko"),
        ("लोमड़ी जंगल में रहती है।", "hi"),
    ],
)
def test_sure_ones(text, language):
    for expected in ("xx", "tlh"):
        assert of_text(text, expected) == language
    assert of_text(text, language) == language
    assert of_text(text, f"{language}-us") == f"{language}-us"


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
    assert of_text(text, expected) == of_script(text, expected) == expected


def test_names_do_not_change_a_sentence():
    assert of_script("The word Москва is Russian.", "en-us") == "en-us"
    assert of_script("Слово London не русское.", "en-us") == "ru"


def test_a_huge_text_takes_no_longer():
    text = "Ein Text, der kein Ende hat, und das ist nicht die Regel. " * 200_000
    begin = time.process_time()
    assert of_text(text, "en-us") == "de"
    assert time.process_time() - begin < 0.1
