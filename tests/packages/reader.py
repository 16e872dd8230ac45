"""The installed Tavin with its own engine, as a user meets it: a text is selected, a key pressed."""

import json
import os
import urllib.request

from driver import SPEAK, Tavin
from isolation import ENGINE_PORT
from session import SessionError, stop, wait_until
from sound import speech_seconds, start_recorder

TEXT = "Hello! This text stands in an editor.\nTavin reads aloud what you have selected in it."


def status():
    try:
        with urllib.request.urlopen(f"http://127.0.0.1:{ENGINE_PORT}/status", timeout=2) as answer:
            return json.load(answer)
    except (OSError, ValueError):
        return None


def wait_for_engine(state, seconds=30):
    def reached():
        told = status()
        if told and told["error"]:
            raise SessionError(f"the engine says: {told['error']}")
        return told and told["ready"] and told["state"] == state
    wait_until(reached, seconds, f"an engine that is {state}", interval=0.05)


def engine_log(desktop):
    return desktop.session.log("home/Library/Logs/Tavin/engine.log")


def start(desktop, prefix):
    """The program, launched, with its engine ready."""
    tavin = Tavin(desktop, None, prefix)
    wait_for_engine("idle")
    return tavin


def select(desktop, text=TEXT):
    """An editor with the text, all of it selected."""
    path = os.path.join(desktop.session.env["HOME"], "letter.txt")
    with open(path, "w", encoding="utf-8") as f:
        f.write(text)
    desktop.open(["mousepad", "--disable-server", path], "letter.txt")
    desktop.select_until(text, lambda: desktop.key("ctrl+a"))


def seconds_spoken(desktop, press):
    """What is heard from `press` on until the engine is idle again."""
    path = os.path.join(desktop.session.folder, "speech.wav")
    recorder = start_recorder(desktop, path)
    press()
    wait_for_engine("speaking")
    wait_for_engine("idle", 60)
    stop(recorder)
    return speech_seconds(path)


def press(desktop):
    desktop.key(SPEAK)
