"""What a peer on the bus may send, without a bus."""

import asyncio

import pytest
from jeepney import DBusAddress, HeaderFields, MessageFlag, new_method_call
from jeepney.io.asyncio import DBusConnection
from tavin.mpris import presence
from tavin.mpris.player import PATH, PLAYER, PROPERTIES, Player

ABOUT = DBusAddress(PATH, presence.NAME, PROPERTIES)
GET_ALL = new_method_call(ABOUT, "GetAll", "s", (PLAYER,))


class Engine:
    speed = 1.0
    toggle_pause = stop = None

    def __init__(self):
        self.paused = False

    def playback(self):
        return "Playing"

    def place(self):
        return None

    def pause(self, paused):
        self.paused = paused


class Writer:
    def __init__(self):
        self.transport = self
        self.sent = 0
        self.aborted = asyncio.Event()

    def write(self, data):
        self.sent += 1

    async def drain(self):
        pass

    def abort(self):
        self.aborted.set()


def served(monkeypatch, data, steps):
    """Have a peer's bytes come at once."""

    async def run():
        reader = asyncio.StreamReader()
        reader.feed_data(data)
        engine, writer = Engine(), Writer()

        async def connect():
            return DBusConnection(reader, writer)

        monkeypatch.setattr(presence, "connect", connect)
        there = presence.Presence(Player(engine))
        there.show()
        await steps(there, engine, writer)
        there.hide()

    asyncio.run(run())


def test_others_have_their_turn_between_messages_however_many_have_come(monkeypatch):
    async def steps(there, engine, writer):
        most = before = 0
        while writer.sent < 100:
            await asyncio.sleep(0)
            most, before = max(most, writer.sent - before), writer.sent
        assert most <= 3, "the first two are ours"

    served(monkeypatch, GET_ALL.serialise(1) * 100, steps)


def test_who_wants_no_answer_gets_none_and_is_obeyed(monkeypatch):
    call = new_method_call(ABOUT, "Set", "ssv", (PLAYER, "Rate", ("d", 0.0)))
    call.header.flags |= MessageFlag.no_reply_expected

    async def steps(there, engine, writer):
        async with asyncio.timeout(10):
            while not engine.paused:
                await asyncio.sleep(0)
        assert writer.sent == 2

    served(monkeypatch, call.serialise(1), steps)


def malformed():
    """As a bus would not let through."""
    index = new_method_call(ABOUT, "GetAll", "u", (0,)).serialise(3)
    yield index.replace(b"\x01g\x00\x01u\x00", b"\x01g\x00\x01h\x00")  # of a file that did not come
    nameless = new_method_call(ABOUT, "GetAll", "s", (PLAYER,))
    del nameless.header.fields[HeaderFields.member]
    yield nameless.serialise(3)
    yield GET_ALL.serialise(3).replace(b"\x01s\x00", b"\x02a(\x00")[:-1]
    yield b"?" * 100


@pytest.mark.parametrize("data", malformed(), ids=["descriptor", "nameless", "signature", "noise"])
def test_a_message_that_is_none_ends_the_connection_and_another_follows(monkeypatch, data):
    monkeypatch.setattr(presence, "AGAIN", 0)

    async def steps(there, engine, writer):
        async with asyncio.timeout(10):
            await writer.aborted.wait()
            sent = writer.sent
            while writer.sent < sent + 2:  # who we are, and the name
                await asyncio.sleep(0)

    served(monkeypatch, data, steps)


def test_who_ends_every_connection_is_left_alone_for_this_text(monkeypatch):
    monkeypatch.setattr(presence, "AGAIN", 0)

    async def steps(there, engine, writer):
        async with asyncio.timeout(10):
            while not there._task.done():
                await asyncio.sleep(0)
        assert there._task.exception() is None
        assert writer.sent == 2 * presence.CONNECTIONS

    served(monkeypatch, b"?" * 4096 * presence.CONNECTIONS, steps)


def before_the_last(monkeypatch, writer, act):
    """Have something happen before the last connection that a text has."""
    connect = presence.connect

    async def connected():
        if writer.sent == 2 * (presence.CONNECTIONS - 1):
            act()
        return await connect()

    monkeypatch.setattr(presence, "connect", connected)


def test_a_text_that_begins_after_the_last_trouble_has_a_player_at_once(monkeypatch):
    monkeypatch.setattr(presence, "AGAIN", 0)

    async def steps(there, engine, writer):
        before_the_last(monkeypatch, writer, lambda: monkeypatch.setattr(presence, "AGAIN", 3600))
        async with asyncio.timeout(10):
            while not there._task.done():
                await asyncio.sleep(0)
            there.show()
            while writer.sent < 2 * (presence.CONNECTIONS + 1):
                await asyncio.sleep(0)

    served(monkeypatch, b"?" * 4096 * presence.CONNECTIONS, steps)


def test_a_text_that_replaces_another_has_as_many_connections_again(monkeypatch):
    monkeypatch.setattr(presence, "AGAIN", 0)
    all_of_them = 2 * presence.CONNECTIONS - 1  # the fifth is the first of the new text

    async def steps(there, engine, writer):
        before_the_last(monkeypatch, writer, there.show)
        async with asyncio.timeout(10):
            while not there._task.done():
                await asyncio.sleep(0)
        assert writer.sent == 2 * all_of_them

    served(monkeypatch, b"?" * 4096 * all_of_them, steps)
