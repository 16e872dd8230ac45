"""Each message that has a name is one that the engine says, and the program knows it by that name."""

import ast
import re
import socket
from pathlib import Path

import pytest
from engine_process import FOLDER
from tavin import messages
from tavin.messages import MESSAGES, named
from tavin.synthesis.backends.cloud import Service, in_words

PACKAGE = Path(messages.__file__).parent
PROGRAM = FOLDER.parent / "src/engine/EngineMessage.cpp"


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
    for status, data in ((401, b""), (402, b""), (429, b"quota_exceeded")):
        yield f"{{}} {Service._reason(status, data)} (HTTP {{}})."
    for failure in (TimeoutError(), socket.gaierror()):
        yield f"{{}} {in_words(failure)}."


def of_a_key():
    for what in ("is kept only until Tavin ends", "could not be removed"):
        yield f"The key for {{}} {what}: {{}}"


@pytest.mark.parametrize("name", MESSAGES)
def test_each_is_said_somewhere(name):
    assert MESSAGES[name] in said() | set(of_a_cloud()) | set(of_a_key())


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
