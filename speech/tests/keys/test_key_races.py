"""Keys that are read, stored and removed at the same time."""

import asyncio

from cloud_service import KEY
from tavin.keys import keys
from tavin.keys.keys import Keys

OTHER = "another-key"


class SlowKeyring:
    """Holds one key. A question is carried out at once, its answer comes when the test wants."""

    def __init__(self, monkeypatch, key):
        self.key = key
        self.held = {}  # question -> the event that lets its answer go
        self.asked = []
        monkeypatch.setattr(keys, "ask", self._ask)

    def hold(self, do):
        self.held[do] = asyncio.Event()

    async def _ask(self, _seconds, do, key=None, **_):
        self.asked.append(do)
        answer = {"key": self.key, "running": True, "names": ["openai"] if self.key else []}
        if do in self.held:
            await self.held[do].wait()
        if do != "get":
            self.key = key
        return answer


async def read_while_kept(mine, keyring, key):
    """What a reading brings during which `key` is kept."""
    reading = await begun_reading(mine, keyring)
    await mine.keep("openai", "OpenAI", key)
    keyring.held["get"].set()
    return await reading


async def begun_reading(mine, keyring):
    """A reading whose answer is on its way."""
    keyring.hold("get")
    reading = asyncio.create_task(mine.key("openai"))
    while "get" not in keyring.asked:
        await asyncio.sleep(0)
    return reading


def test_a_key_that_is_removed_while_it_is_read_does_not_come_back(monkeypatch):
    async def scenario():
        keyring = SlowKeyring(monkeypatch, KEY)
        mine = Keys(["openai"])
        assert await read_while_kept(mine, keyring, "") is None
        assert not mine.known("openai")

    asyncio.run(scenario())


def test_who_reads_after_the_removal_does_not_get_what_is_on_its_way(monkeypatch):
    async def scenario():
        keyring = SlowKeyring(monkeypatch, KEY)
        mine = Keys(["openai"])
        first = await begun_reading(mine, keyring)
        await mine.keep("openai", "OpenAI", "")
        second = asyncio.create_task(mine.key("openai"))
        await asyncio.sleep(0)
        keyring.held["get"].set()
        assert [await first, await second] == [None, None]
        assert not mine.known("openai")

    asyncio.run(scenario())


def test_a_key_that_is_read_while_it_is_removed_does_not_come_back(monkeypatch):
    async def scenario():
        keyring = SlowKeyring(monkeypatch, KEY)
        mine = Keys(["openai"])
        assert await mine.key("openai") == KEY
        keyring.hold("remove")
        removal = asyncio.create_task(mine.keep("openai", "OpenAI", ""))
        await asyncio.sleep(0)
        assert await mine.key("openai") is None
        keyring.held["remove"].set()
        await removal
        assert not mine.known("openai")
        assert await mine.key("openai") is None

    asyncio.run(scenario())


def test_a_new_key_wins_over_the_one_that_is_being_read(monkeypatch):
    async def scenario():
        keyring = SlowKeyring(monkeypatch, OTHER)
        mine = Keys(["openai"])
        assert await read_while_kept(mine, keyring, KEY) == KEY

    asyncio.run(scenario())


def test_a_search_from_before_a_key_was_stored_does_not_hide_it(monkeypatch):
    async def scenario():
        keyring = SlowKeyring(monkeypatch, None)
        mine = Keys(["openai"])
        keyring.hold("store")
        keyring.hold("search")
        storing = asyncio.create_task(mine.keep("openai", "OpenAI", KEY))
        await asyncio.sleep(0)
        looking = asyncio.create_task(mine.look(activate=False))
        await asyncio.sleep(0)
        keyring.held["store"].set()
        await storing
        keyring.held["search"].set()
        await looking
        assert mine.stored == ["openai"]

    asyncio.run(scenario())
