"""A server of the user's own that speaks OpenAI's interface, as the settings describe it."""

import json
import urllib.parse

from tavin.synthesis.backend import Backend

NAME = "server"
# The environment variable by which the worker is told of it: others must not read its address in a process list.
VARIABLE = "SPEECH_SERVER"
THIS_MACHINE = ("127.0.0.1", "localhost", "::1")
LONGEST_TEXT = 200
MOST_VOICES = 2000
LARGEST_VARIABLE = 128 * 1024  # with its name, Linux's limit
RATES = (8000, 96000)


def backend(described):
    """The back-end that an entry of `engine.json` describes; ValueError, for the user, where it is none."""
    if not isinstance(described, dict):
        raise ValueError("it must be an object")
    private = described.get("private_network", False)
    if not isinstance(private, bool):
        raise ValueError("“private_network” must be true or false")
    url = address(described.get("address"), private)
    label = text(described, "name", url.netloc)
    voices = described.get("voices", [])
    if not isinstance(voices, list) or not all(is_text(voice) for voice in voices):
        raise ValueError("“voices” must be a list of names")
    if len(voices) > MOST_VOICES:
        raise ValueError(f"“voices” may have {MOST_VOICES} names")
    rate = described.get("rate", 24000)
    if type(rate) is not int or not RATES[0] <= rate <= RATES[1]:
        raise ValueError("“rate” must be a number of samples a second")
    told = {
        "label": label,
        "address": url.geturl(),
        "private_network": private,
        "model": text(described, "model", "tts-1"),
        "voices": voices,
        "rate": rate,
    }
    content = json.dumps(told)
    if len(f"{VARIABLE}={content}") >= LARGEST_VARIABLE:
        raise ValueError("“voices” has too much text")
    return Backend(
        NAME,
        label,
        takes_key=False,
        local=False,
        longest_piece=600,
        patience=40.0,
        fetches_voices=not voices,
        speaks_as_told=True,
        environment={VARIABLE: content},
    )


def address(value, private):
    """Its parts; with the path that OpenAI's own has, where it has none."""
    if not is_text(value):
        raise ValueError("“address” is missing")
    try:
        url = urllib.parse.urlsplit(value)
        known = url.scheme in ("http", "https") and url.hostname and (url.port is None or url.port > 0)
        known = known and value.isascii() and " " not in value
    except ValueError:
        known = False
    if not known or url.username is not None or url.query or url.fragment:
        raise ValueError("“address” must be like https://host:port/v1")
    if url.scheme == "http" and not private and url.hostname not in THIS_MACHINE:
        raise ValueError("“address” must begin with https, or “private_network” be true")
    return url._replace(path=url.path.rstrip("/") or "/v1")


def text(described, field, otherwise):
    value = described.get(field, otherwise)
    if not is_text(value):
        raise ValueError(f"“{field}” must be a text of one line")
    return value


def is_text(value):
    return isinstance(value, str) and value.isprintable() and 0 < len(value.strip()) <= LONGEST_TEXT
