"""Which voice a user is offered first."""

import pytest
from tavin.synthesis import voices

VOICES = [
    {"id": name, "name": name, "language": language}
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
    assert voices.default(VOICES, voices.user_language()) == voice


def test_lc_all_wins(monkeypatch):
    monkeypatch.setenv("LC_ALL", "fr_FR.UTF-8")
    monkeypatch.setenv("LANG", "de_DE.UTF-8")
    assert voices.user_language() == "fr-fr"


def test_the_users_language_comes_first_and_the_rest_by_name():
    names = [voice["name"] for voice in voices.ordered(VOICES, "pt-br")]
    assert names[:2] == ["Portuguese (Brazil)", "Portuguese (Portugal)"]
    assert names[2:] == sorted(names[2:])


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
    assert [voice["name"] for voice in voices.ordered(graded, "en-us")] == ["Heart", "Adam", "Sky"]
    assert [voice["name"] for voice in voices.ordered(graded, "de")] == ["Adam", "Heart", "Sky"]
    assert voices.default(graded, "de") == "Heart"
