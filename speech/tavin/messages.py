"""The engine's messages for the user, each with a stable name.

The status gives the name and what was filled in beside the text, so that a program that knows the message can
say it in the user's language. Whoever makes a text writes it in English, as it is here: {} stands for what
changes. A text that is not here goes without a name.
"""

import functools
import re

MESSAGES = {
    "needs-key": "{} needs a key: choose “Set API Key” in Tavin's menu.",
    "key-refused": "{} does not accept the key (HTTP {}).",
    "no-credit": "{} wants to be paid: the account has no credit left (HTTP {}).",
    "quota-used-up": "{} says that the account's quota is used up (HTTP {}).",
    "cloud-silent": "{} is too slow or does not answer.",
    "cloud-not-found": "{} cannot be found; this computer may be offline.",
    "unreadable": "{} cannot read this text.",
    "no-voice-for-language": "No voice on this computer speaks {}.",
    "downloading": "{} is still downloading its voices ({}%).",
    "loading": "{} is still loading its voices.",
    "key-unreadable": "The key for {} cannot be read: {}",
    "key-not-kept": "The key for {} is kept only until Tavin ends: {}",
    "key-not-removed": "The key for {} could not be removed: {}",
    "keyring-locked": "The keyring was not unlocked.",
    "keyring-silent": "The keyring does not answer.",
    "keyring-absent": "This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.",
    "sound-server-silent": "The sound server does not answer.",
    "sound-not-started": "The sound output could not be started.",
    "no-pip": "Python's pip is missing: install the package python3-venv, then choose {} again.",
    "disk-full": "The disk is full: make room in {}, then choose {} again.",
    "no-room": "{} needs {} MB in {}, and {} MB are free. Make room, then choose {} again.",
    "unwritable": "{} cannot be written: {}. See to it, then choose {} again.",
    "no-libraries-by-network": "{}'s libraries could not be downloaded. Check the network, then choose {} again.",
    "no-files-by-network": "No download from {}: {}. Check the network, then choose {} again.",
    "setup-too-slow": "Getting the voices takes too long. Choose {} again.",
    "setup-failed": "{} could not be set up. Choose it again.",
    "key-not-allowed": "{} does not allow this with the key (HTTP {}).",
    "voice-unknown": "{} does not know this voice or model (HTTP {}).",
    "asked-too-often": "{} is asked too often or the account's quota is used up; try again later (HTTP {}).",
    "cloud-in-trouble": "{} has trouble of its own; try again later (HTTP {}).",
    "text-not-accepted": "{} did not accept the text (HTTP {}).",
    "cloud-refuses": "{} did not do as asked (HTTP {}).",
    "cloud-broke-off": "{} broke off the connection.",
    "cloud-not-reached": "{} cannot be reached: {}.",
    "proxy-refuses": "the proxy does not allow it",
    "cloud-not-trusted": "{} cannot be trusted: its certificate is not valid.",
    "choice-not-kept": "This choice is kept only until Tavin ends: {}.",
    "reading-failed": "The engine could not read this text.",
    "keyring-closed": "The keyring is locked.",
    "libraries-not-loaded": "{}'s libraries cannot be loaded ({}). Choose {} again.",
    "espeak-missing": "eSpeak NG is not installed (package libespeak-ng1).",
    "download-refused": "{} refuses the download (answer {}). Choose {} again later, or update Tavin.",
    "setup-stopped": "Getting the voices stopped unexpectedly ({}). Choose {} again.",
    "ended-too-early": "it ended too early",
    "went-on-elsewhere": "it went on at another place",
    "something-else-sent": "something else was sent",
    "transfer-too-slow": "it is too slow",
    "no-answer": "no answer",
    "answer": "answer {}",
    "no-sound-output": "No sound output is connected.",
    "sound-output-gone": "The sound output was disconnected.",
    "sound-not-started-because": "The sound output could not be started ({}).",
    "sound-stopped": "The sound output stopped unexpectedly ({}).",
    "not-started": "{} could not be started.",
    "not-started-because": "{} could not be started ({}).",
    "stopped": "{} stopped unexpectedly ({}) and was started again.",
    "answer-senseless": "{} sent an answer that makes no sense.",
    "no-sound-sent": "{} sent something other than sound.",
    "too-much-sound": "{} sent more sound than the text can have.",
    "no-voice-offered": "{} offers no voice to this account.",
    "other-files": "{} sent other files than expected. Choose {} again, or update Tavin.",
    "other-file": "{} offers another file than expected. Choose {} again, or update Tavin.",
    "voice-not-loaded": "Choose this voice of Piper again: it cannot be loaded ({}).",
    "files-not-loaded": "Choose Kokoro again: its files cannot be loaded ({}).",
    "no-secretstorage": "Package python3-secretstorage is not installed.",
    "no-session-bus": "Without a session bus, the keyring cannot be reached.",
    "keyring-not-asked": "The keyring could not be asked.",
    "no-key-stored": "What is stored there is not a key.",
    "espeak-data-missing": "eSpeak NG's data is missing (package espeak-ng-data).",
}


def pattern(message):
    return re.compile("(.+)".join(map(re.escape, message.split("{}"))), re.DOTALL)


PATTERNS = {name: pattern(message) for name, message in MESSAGES.items()}


def named(field, text):
    """What the status says of a text beside it: its name and what was filled in, null without a name."""
    found = identified(text)
    return {f"{field}_id": found and found["id"], f"{field}_values": found and found["values"]}


@functools.lru_cache(maxsize=16)  # the status tells of the same text again and again
def identified(text):
    for name, known in PATTERNS.items() if text else ():
        if match := known.fullmatch(text):
            return {"id": name, "values": [told(value) for value in match.groups()]}
    return None


def told(value):
    """A value that is such a message itself is one with its text."""
    inner = identified(value)
    return {"text": value, **inner} if inner else value
