"""Each message that has a name is one that the engine says, and the program knows it by that name."""

import ast
import re
import socket
import ssl
from pathlib import Path

import pytest
from engine_process import FOLDER
from tavin import messages
from tavin.messages import MESSAGES, identified, named
from tavin.synthesis.backends.cloud import REASONS, Service, in_words

PACKAGE = Path(messages.__file__).parent
PROGRAM = FOLDER.parent / "src/engine/EngineMessage.cpp"

# What a connection to a cloud fails with.
FAILURES = (
    TimeoutError(),
    socket.gaierror(),
    ConnectionResetError(),
    ssl.SSLCertVerificationError(),
    OSError(),
    OSError(111, "Connection refused"),
)

# Whose text, or a part of it, the user may see.
TELLING = {
    *("Failure", "Refused", "BackendError", "SynthesisError", "UnspeakableError", "KeyringError", "DownloadError"),
    *("OutputError", "Cut", "TooSlow", "fail", "_fail", "_refuse", "_refuse_requests", "absent"),
    "RuntimeError",  # of what a worker loads at its start
}
UNNAMED = {
    "put together of parts that have names, or of the words of a library or the system": {
        "{} {} (HTTP {}).",
        "{} {}.",
        "{}{} Choose {} again.",
        "The key for {} {}: {}",
        "eSpeak NG cannot be loaded: {}",
    },
    "the installation or the session is incomplete, which the package rules out": {
        "The sound server's library is not installed (package libpulse0).",
        "eSpeak NG's data cannot be loaded.",
        "eSpeak NG has no voices.",
    },
    "nobody waits for the answer any more": {"{} was interrupted."},
    "for who tests the engine": {"{} must be an https address."},
}


def template(node):
    """The text of a literal, {} where something is filled in."""
    if isinstance(node, ast.JoinedStr):
        return "".join("{}" if isinstance(part, ast.FormattedValue) else part.value for part in node.values)
    return node.value


def said():
    """All texts in the engine's source."""
    return {
        template(node)
        for path in PACKAGE.rglob("*.py") if path.name != "messages.py"
        for node in ast.walk(ast.parse(path.read_text("utf-8")))
        if isinstance(node, ast.JoinedStr) or (isinstance(node, ast.Constant) and isinstance(node.value, str))
    }


def of_a_cloud():
    """Those that are put together of parts."""
    for status, data in [(429, b"quota_exceeded"), *((status, b"") for status in (*REASONS, 418, 503))]:
        yield f"{{}} {Service._reason(status, data)} (HTTP {{}})."
    for failure in FAILURES:
        yield f"{{}} {in_words(failure)}."


def of_a_key():
    for what in ("is kept only until Tavin ends", "could not be removed"):
        yield f"The key for {{}} {what}: {{}}"


def told_to_the_user():
    """The texts that failures are made with, where they are written out."""
    for path in PACKAGE.rglob("*.py"):
        for node in ast.walk(ast.parse(path.read_text("utf-8"))):
            if isinstance(node, ast.Call) and called(node.func) in TELLING:
                yield from filter(is_text, map(template, filter(is_literal, node.args)))


def called(function):
    return getattr(function, "attr", getattr(function, "id", None))


def is_literal(node):
    return isinstance(node, (ast.JoinedStr, ast.Constant))


def is_text(value):
    return isinstance(value, str)


def test_each_is_said_somewhere():
    found = map(identified, said() | set(of_a_cloud()) | set(of_a_key()))
    assert {message["id"] for message in found if message} == set(MESSAGES)


def test_what_the_user_is_told_has_a_name_or_a_reason_for_having_none():
    unnamed = {text for text in told_to_the_user() if not identified(text)}
    assert unnamed == set().union(*UNNAMED.values())


@pytest.mark.parametrize("text", of_a_cloud())
def test_whatever_fails_with_a_cloud_has_a_name(text):
    assert identified(text)


def test_why_a_download_ended_has_a_name_in_the_message():
    text = "No download from example.org: answer 503. Check the network, then choose Kokoro again."
    reason = {"text": "answer 503", "id": "answer", "values": ["503"]}
    assert named("error", text)["error_values"] == ["example.org", reason, "Kokoro"]


def test_the_program_knows_each_by_its_name():
    row = r'\{"([a-z-]+)",\s*QT_TRANSLATE_NOOP\(\s*"Engine",\s*((?:"[^"]*"\s*)+)\)'
    rows = re.findall(row, PROGRAM.read_text("utf-8"))
    known = {name: re.sub(r"%\d", "{}", "".join(re.findall('"([^"]*)"', text))) for name, text in rows}
    assert known == MESSAGES


def test_a_message_is_named_with_what_was_filled_in():
    assert named("error", "ElevenLabs does not accept the key (HTTP 401).") == {
        "error_id": "key-refused",
        "error_values": ["ElevenLabs", "401"],
    }


def test_a_value_may_be_a_message_itself():
    text = "The key for OpenAI cannot be read: The keyring does not answer."
    inner = {"text": "The keyring does not answer.", "id": "keyring-silent", "values": []}
    assert named("error", text) == {"error_id": "key-unreadable", "error_values": ["OpenAI", inner]}


@pytest.mark.parametrize("text", [None, "", "something else", "The keyring does not answer. Really."])
def test_other_texts_have_no_name(text):
    assert named("setup_error", text) == {"setup_error_id": None, "setup_error_values": None}
