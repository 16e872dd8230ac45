"""Phonemes with the text's punctuation, by Debian's eSpeak NG.

In a process of its own for each test: the library has one state for a process, and a text that it
cannot bear ends that.
"""

import json
import subprocess
import sys

import pytest
from engine_process import FOLDER

SCRIPT = """
import json, sys
from tavin.synthesis.backends.kokoro.phonemes import Phonemizer
phonemizer = Phonemizer("libespeak-ng.so.1")
print(json.dumps([phonemizer.phonemes(text, language) for text, language in json.load(sys.stdin)]))
"""


def phonemes(*wanted):
    command = [sys.executable, "-c", SCRIPT]
    done = subprocess.run(
        command, cwd=FOLDER, input=json.dumps(wanted).encode(), capture_output=True, check=True
    )
    return json.loads(done.stdout)


def marks(text, language="en-us"):
    return "".join(letter for letter in phonemes((text, language))[0] if letter in ",;:.!?…—()\"“”«»¿¡")


@pytest.mark.parametrize(
    "text, kept",
    [
        ("Hello, world!", ",!"),
        ("It costs $3.50, or 1,000 (so they say).", ",()."),
        ("Dr. Smith met Mr. Jones at 10:30.", "."),
        ("“Why not?” he asked…", "“?”…"),
        ("wait — no; yes: go", "—;:"),
        ("你好，世界。", ",."),
        ("...", "..."),
        ("", ""),
    ],
)
def test_marks_between_words_are_kept_and_others_are_not(text, kept):
    assert marks(text) == kept


def test_words_stay_apart():
    one, all_three = phonemes(("cat", "en-us"), ("cat, cat cat", "en-us"))
    assert one and " " not in one
    assert all_three == f"{one}, {one} {one}"


@pytest.mark.parametrize("language", ["en-us", "en-gb", "es", "fr-fr", "hi", "it", "pt-br", "xx"])
def test_every_language_of_the_voices_can_be_the_first(language):
    assert phonemes(("Taxi", language))[0]


def test_languages_differ_and_their_switches_are_not_spoken():
    french, english, mixed = phonemes(("ma", "fr-fr"), ("ma", "en-us"), ("Le weekend.", "fr-fr"))
    assert french != english
    assert "(" not in mixed


def test_a_text_is_no_command():
    assert phonemes(("[[h@l'oU]] <speak>x</speak>", "en-us"))[0]
    assert phonemes(("before\0after", "en-us"))[0] == phonemes(("before", "en-us"))[0]
