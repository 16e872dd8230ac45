"""What a recogniser hears of a text with mark-up, signs and numbers, read by Kokoro's real model."""

import re

import ear
from real_voices import engine, recorder  # noqa: F401
from sound import until
from test_neural import choose

TEXT = """# The **long** way home

Dr. Jones lives on Garden St. and walked to the river, e.g. on Monday, as he wrote in World War II.[12]

- The map is at https://www.example.org/river/map?walk=long#top
- Use `max_count` where the house is

| Tree | Colour |
|------|--------|
| Oak | green |

----------

It cost $500 😀😀😀
"""
HEARD = [
    *("way home", "garden street", "for example", "world war", "link to", "example org"),
    *("max count", "tree oak", "green", "grinning face"),
]
MISHEARD = 1  # The recogniser takes a word for another one now and then.
# What the signs were before they were silent, or words.
NOT_HEARD = r"asterisk|roman|slash|underscore|back ?tick|pipe|https?|grave|hash|twelve|e\.g\.|vertical|dash"


def test_signs_are_heard_as_what_they_mean(engine, recorder):  # noqa: F811
    choose(engine)
    until(lambda: engine.status()["ready"], 120, "the voice is ready")
    begin = len(recorder.samples)
    engine.speak(TEXT)
    engine.wait_for("speaking", 60)
    engine.wait_for("idle", 300)
    recorder.quiet_for(0.5)
    heard = ear.understood(recorder.samples[begin:]).lower()
    print(heard)
    words = " ".join(re.findall(r"[a-z]+", heard))
    assert sum(part not in words for part in HEARD) <= MISHEARD, heard
    assert "500" in heard, heard
    assert not re.search(NOT_HEARD, heard), heard
