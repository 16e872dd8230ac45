"""Which voice a user is offered first."""

import pytest
from tavin.synthesis import voices

VOICES = [
    {"id": name, "name": name, "language": language, "detail": name.partition("(")[2].rstrip(")")}
    for name, language in [
        ("Afrikaans", "af"),
        ("German", "de"),
        ("English (America)", "en-us"),
        ("English (Great Britain)", "en-gb"),
        ("French (Belgium)", "fr-be"),
        ("French (France)", "fr-fr"),
        ("Mandarin", "cmn"),
        ("Portuguese (Brazil)", "pt-br"),
        ("Portuguese (Portugal)", "pt"),
    ]
]


@pytest.mark.parametrize(
    "locale, voice",
    [
        ("en_US.UTF-8", "English (America)"),
        ("en_GB", "English (Great Britain)"),
        ("en_AU.UTF-8", "English (America)"),
        ("de_DE.UTF-8@euro", "German"),
        ("de", "German"),
        ("fr_FR.UTF-8", "French (France)"),
        ("fr_BE.UTF-8", "French (Belgium)"),
        ("pt_BR.UTF-8", "Portuguese (Brazil)"),
        ("pt_PT.UTF-8", "Portuguese (Portugal)"),
        ("zh_CN.UTF-8", "Mandarin"),
        ("C.UTF-8", "English (America)"),
        ("POSIX", "English (America)"),
        ("", "English (America)"),
        ("xx_XX", "English (America)"),
    ],
)
def test_default(monkeypatch, locale, voice):
    for name in ("LC_ALL", "LC_MESSAGES"):
        monkeypatch.delenv(name, raising=False)
    monkeypatch.setenv("LANG", locale)
    assert voices.default(VOICES, voices.user_languages()[0]) == voice


def test_lc_all_wins(monkeypatch):
    monkeypatch.setenv("LC_ALL", "fr_FR.UTF-8")
    monkeypatch.setenv("LANG", "de_DE.UTF-8")
    monkeypatch.delenv("LANGUAGE", raising=False)
    assert voices.user_languages() == ["fr-fr"]


def test_further_languages_of_the_user(monkeypatch):
    monkeypatch.setenv("LC_ALL", "de_AT.UTF-8")
    monkeypatch.setenv("LANGUAGE", "de_AT:de:nn_NO:C:fr")
    assert voices.user_languages() == ["de-at", "de", "nb-no", "fr"]
    monkeypatch.setenv("LC_ALL", "C.UTF-8")  # in which programs speak English, whatever LANGUAGE says
    assert voices.user_languages() == ["en-us"]


def names(known, *first):
    return [voice["name"] for voice in voices.listed(known, first)]


def test_the_users_languages_come_first_and_the_rest_by_the_languages_own_names():
    assert names(VOICES, "pt-br", "de") == [
        "Português (Brasil)",
        "Português",
        "Deutsch",
        "Afrikaans",
        "English (United Kingdom)",
        "English (United States)",
        "Français (Belgique)",
        "Français (France)",
        "中文",
    ]


def test_voices_for_one_language_are_told_apart():
    known = [
        {"id": name, "name": f"Chinese ({name})", "language": language, "detail": name}
        for name, language in (("Cantonese", "yue"), ("Jyutping", "yue"), ("Pinyin", "cmn-latn-pinyin"))
    ]
    assert names(known) == ["中文 (Pinyin)", "粵語 (Cantonese)", "粵語 (Jyutping)"]


def test_a_voice_with_a_name_has_its_language_behind():
    known = [
        {"id": "a", "name": "Emma", "language": "en-gb", "traits": "female"},
        {"id": "b", "name": "Kim (young)", "language": "de"},
        {"id": "c", "name": "Alloy", "language": ""},
        {"id": "d", "name": "Nobody", "language": "xx"},
    ]
    assert names(known, "de") == [
        "Kim (young) – Deutsch",
        "Alloy",
        "Emma – English (United Kingdom), female",
        "Nobody",
    ]


def test_no_voices_at_all():
    assert voices.default([], "en-us") is None


@pytest.mark.parametrize(
    "wanted, users, voice",
    [
        ("de", "en-us", "German"),
        ("en", "de", "English (America)"),
        ("en", "en-gb", "English (Great Britain)"),
        ("fr", "de", "French (France)"),
        ("pt", "de", "Portuguese (Portugal)"),
        ("ko", "de", None),
    ],
)
def test_a_voice_for_a_texts_language(wanted, users, voice):
    assert voices.of_language(VOICES, wanted, users) == voice


def test_the_best_voice_of_the_users_language_comes_first():
    graded = [
        {"id": name, "name": name, "language": "en-us", "best": name == "Heart"}
        for name in ("Adam", "Heart", "Sky")
    ]
    assert [voice["id"] for voice in voices.listed(graded, ["en-us"])] == ["Heart", "Adam", "Sky"]
    assert [voice["id"] for voice in voices.listed(graded, ["de"])] == ["Heart", "Adam", "Sky"]
    assert voices.default(graded, "de") == "Heart"
