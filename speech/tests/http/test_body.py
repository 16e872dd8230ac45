"""Long bodies: decoded in steps, to the same as in one."""

import asyncio
import json
import random

import pytest
from tavin.engine import Refusal
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


@pytest.mark.parametrize("odd", [ODD, [*ODD[3:], "中", "文"]], ids=["blanks", "none"])
def test_in_steps_it_is_the_same(monkeypatch, odd):
    monkeypatch.setattr(guard, "STEP", 16)
    chance = random.Random(5)
    for _ in range(400):
        text = "".join(chance.choices(odd, k=chance.randrange(60)))
        body = json.dumps({"text": text}, ensure_ascii=chance.random() < 0.5).encode(
            "utf-8", "surrogatepass"
        )
        # What "surrogatepass" makes of halves in UTF-8 stays in halves.
        assert asyncio.run(decode(body)) == json.loads(body), body


def test_a_long_text_without_blanks_is_decoded_in_steps():
    body = json.dumps({"text": "中文" * 1_000_000}, ensure_ascii=False).encode()
    others = Others()
    assert asyncio.run(decode(body, others)) == json.loads(body)
    assert others.served >= len(body) // guard.STEP


def test_a_long_text_of_escapes_alone_is_decoded():
    body = json.dumps({"text": "中文" * 500_000}).encode()
    assert asyncio.run(decode(body)) == json.loads(body)


@pytest.mark.parametrize(
    "body",
    [
        b'{"text": "a b c d e f g h i j k l m n o p \\"}',
        b'{"text": "a b c d e f g h" i j k l m n o p"}',
        b'{"text": "a b c d e f g h \\ i j k l m n o p"}',
        b'{"text": "a b c d e f g h \n i j k l m n o p"}',
        b'{"text": "a b c d e f g h \xff i j k l m n o p"}',
        b'{"text": "a b c d e f g h i j k l m n o p", "x": NaN}',
        b'{"text": "abcdefghijklmnopqrstuvwxyzabcdef\xff"}',
        b'                {"text":"}',
        b'["text", "a b c d e f g h i j k l m n o p"}',
    ],
)
def test_what_is_no_text_ends_as_in_one_step(monkeypatch, body):
    monkeypatch.setattr(guard, "STEP", 16)
    assert outcome(lambda: asyncio.run(decode(body))) == outcome(
        lambda: json.loads(body, parse_constant=guard._no_constant)
    )


@pytest.mark.parametrize(
    "body",
    [
        b"[%s]" % b",".join([b"{}"] * 200_000),
        b'{"text": "short", "more": [%s]}' % b",".join([b"[0]"] * 200_000),
        b'{"text": [%s]}' % b",".join([b"[0]"] * 200_000),
        b'{"more": "%s"}' % (b"a " * 400_000),
        b'{"text": "%s", "text": "b"}' % (b"a " * 400_000),
    ],
    ids=["list", "more than the text", "no text", "another text", "two texts"],
)
def test_a_long_body_that_is_no_single_text_is_refused_and_never_decoded(monkeypatch, body):
    longest, decode_any = [], json.loads

    def loads(data, **_):
        longest.append(len(data))
        return decode_any(data)

    monkeypatch.setattr(guard.json, "loads", loads)
    with pytest.raises(Refusal):
        asyncio.run(decode(body))
    assert all(length <= guard.STEP + 2 for length in longest)


def outcome(way):
    try:
        return way()
    except (ValueError, Refusal):
        return "refused"
