"""The installed Tavin with its own engine, as a user meets it: a text is selected, a key pressed."""

import os

import own_engine
from driver import SPEAK, Tavin
from session import stop
from sound import speech_seconds, start_recorder

TEXT = "Hello! This text stands in an editor.\nTavin reads aloud what you have selected in it."


def engine_log(desktop):
    return desktop.session.log("home/Library/Logs/Tavin/engine.log")


def start(desktop, prefix):
    """The program, launched, with its engine ready."""
    tavin = Tavin(desktop, None, prefix)
    own_engine.wait_for("idle")
    return tavin


def select(desktop, text=TEXT):
    """An editor with the text, all of it selected."""
    path = os.path.join(desktop.session.env["HOME"], "letter.txt")
    with open(path, "w", encoding="utf-8") as f:
        f.write(text)
    desktop.open(["mousepad", "--disable-server", path], "letter.txt")
    desktop.select_until(text, lambda: desktop.key("ctrl+a"))


def seconds_spoken(desktop, meanwhile=lambda: None):
    """What is heard from a press of the shortcut on until the engine is idle again. `meanwhile` is
    called while it speaks."""
    path = os.path.join(desktop.session.folder, "speech.wav")
    recorder = start_recorder(desktop, path)
    desktop.key(SPEAK)
    own_engine.wait_for("speaking")
    meanwhile()
    own_engine.wait_for("idle", seconds=90)
    stop(recorder)
    return speech_seconds(path)
