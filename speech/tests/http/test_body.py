"""Long bodies: decoded in steps, to the same as in one."""

import asyncio
import json
import random

import pytest
from tavin.http import guard

ODD = ["a", " ", "\n", '"', "\\", "é", "☃", "😀", "\ud83d", "\ude00", "\x00", "}", '"}', "\\u0041", "/"]


class Others:
    """Counts how often the event loop served somebody else meanwhile."""

    def __init__(self):
        self.served = 0

    async def run(self):
        while True:
            self.served += 1
            await asyncio.sleep(0)


async def decode(data, others=None):
    beside = asyncio.create_task((others or Others()).run())
    try:
        return await guard.decoded(data)
    finally:
        beside.cancel()


def test_a_long_text_holds_nobody_up():
    body = json.dumps({"text": "Grüße an alle. " * 300_000}).encode()
    others = Others()
    assert asyncio.run(decode(body, others)) == json.loads(body)
    assert others.served >= len(body) // guard.STEP


def test_in_steps_it_is_the_same(monkeypatch):
    monkeypatch.setattr(guard, "STEP", 16)
    chance = random.Random(5)
    for _ in range(400):
        text = "".join(chance.choices(ODD, k=chance.randrange(60)))
        content = {"text": text} if chance.random() < 0.8 else {"text": text, "more": [text]}
        body = json.dumps(content, ensure_ascii=chance.random() < 0.5).encode("utf-8", "surrogatepass")
        # What "surrogatepass" makes of halves in UTF-8 stays in halves.
        assert asyncio.run(decode(body)) == json.loads(body), body


@pytest.mark.parametrize(
    "body",
    [
        b'{"text": "a b c d e f g h i j k l m n o p \\"}',
        b'{"text": "a b c d e f g", "text": "h i j k l m n"}',
        b'{"text": "a b c d e f g h" i j k l m n o p"}',
        b'{"text": "a b c d e f g h \\ i j k l m n o p"}',
        b'{"text": "a b c d e f g h \n i j k l m n o p"}',
        b'{"text": "a b c d e f g h \xff i j k l m n o p"}',
        b'{"text": "a b c d e f g h i j k l m n o p", "x": NaN}',
        b'                {"text":"}',
        b'["text", "a b c d e f g h i j k l m n o p"}',
    ],
)
def test_what_is_no_text_ends_as_in_one_step(monkeypatch, body):
    monkeypatch.setattr(guard, "STEP", 16)
    assert outcome(lambda: asyncio.run(decode(body))) == outcome(
        lambda: json.loads(body, parse_constant=guard._no_constant)
    )


def outcome(way):
    try:
        return way()
    except ValueError:
        return "refused"
