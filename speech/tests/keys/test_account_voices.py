"""How often a cloud, its keyring and the user are asked for the voices that a menu lists."""

import asyncio
import threading
from concurrent.futures import ThreadPoolExecutor

import pytest
from cloud_service import KEY
from sound import until
from tavin.process.shared import Shared

LIST = "/voices?engine=elevenlabs"


@pytest.fixture
def engine(start):
    engine = start()
    assert engine.post("/key", engine="elevenlabs", key=KEY)[0] == 200
    return engine


def questions(service):
    return [path for path, _ in service.requests if "voices" in path]


def test_a_list_is_asked_for_once(engine, service):
    with ThreadPoolExecutor(20) as pool:
        answers = list(pool.map(lambda _: engine.request("GET", LIST), range(60)))
    assert {code for code, _ in answers} == {200}
    assert all(len(voices) == 3 for _, voices in answers)
    assert len(questions(service)) == 1


def test_a_refusal_is_kept_until_the_user_acts(engine, service):
    service.trouble = 401
    for _ in range(3):
        assert engine.request("GET", LIST)[0] != 200
    assert len(questions(service)) == 1
    service.trouble = None
    assert engine.post("/config", engine="elevenlabs")[0] == 200
    assert engine.request("GET", LIST)[0] == 200
    assert engine.post("/key", engine="elevenlabs", key=KEY)[0] == 200
    assert engine.request("GET", LIST)[0] == 200
    assert len(questions(service)) == 3


def test_other_failures_are_asked_about_anew(engine, service):
    service.trouble = 500
    assert engine.request("GET", LIST)[0] != 200
    service.trouble = None
    assert engine.request("GET", LIST)[0] == 200


def test_many_lists_with_the_key_in_the_keyring_ask_it_once(engine, start):
    engine.end()
    engine = start()
    until(lambda: "elevenlabs" in [e["name"] for e in engine.status()["engines"] if e["available"]], 10, "the key")
    seen, asked = set(), threading.Event()

    def watch():
        while not asked.is_set():
            seen.update(engine.helpers("tavin.keys.secret_service"))

    watcher = threading.Thread(target=watch)
    watcher.start()
    with ThreadPoolExecutor(20) as pool:
        answers = list(pool.map(lambda _: engine.request("GET", LIST), range(60)))
    asked.set()
    watcher.join()
    assert {code for code, _ in answers} == {200}
    assert 1 <= len(seen) <= 2, "one reads the key; the search at the engine's start may be seen too"


def test_a_list_never_unlocks_the_keyring(engine, start, service, keyring):
    engine.end()
    keyring.lock()
    engine = start()
    until(lambda: "elevenlabs" in [e["name"] for e in engine.status()["engines"] if e["available"]], 10, "the key")
    code, answer = engine.request("GET", LIST)
    assert code != 200 and "The keyring is locked." in answer["error"]
    assert keyring.locked() and questions(service) == []


def test_the_cloud_is_asked_nothing_and_the_keyring_stays_locked_when_a_cloud_voice_is_chosen_and_nobody_acts(
    engine, start, service, keyring
):
    assert engine.post("/config", engine="elevenlabs")[0] == 200
    engine.end()
    keyring.lock()
    service.requests.clear()
    engine = start()
    until(lambda: "elevenlabs" in [e["name"] for e in engine.status()["engines"] if e["available"]], 10, "the key")
    for _ in range(20):
        engine.status()
    assert keyring.locked() and service.requests == []


class Question:
    def __init__(self):
        self.asked = 0
        self.ended = 0
        self.answer = asyncio.Event()

    async def __call__(self):
        self.asked += 1
        try:
            await self.answer.wait()
        finally:
            self.ended += 1
        if self.asked == 2:
            raise ValueError("no")
        return self.asked


def test_who_asks_meanwhile_shares_the_answer():
    async def scenario():
        question = Question()
        shared = Shared(question)
        asking = [asyncio.create_task(shared.answer()) for _ in range(60)]
        await asyncio.sleep(0)
        question.answer.set()
        assert await asyncio.gather(*asking) == [1] * 60
        with pytest.raises(ValueError):
            await shared.answer()  # asked anew

    asyncio.run(scenario())


@pytest.mark.parametrize("lasts", [True, False])
def test_an_answer_is_kept_for_its_time_and_a_failure_where_it_lasts(lasts):
    async def scenario():
        question = Question()
        question.answer.set()
        shared = Shared(question, kept=0.2, lasts=lambda failure: lasts)
        assert [await shared.answer(), await shared.answer()] == [1, 1]
        await asyncio.sleep(0.25)
        with pytest.raises(ValueError):
            await shared.answer()
        if lasts:
            await asyncio.sleep(0.25)
            with pytest.raises(ValueError):
                await shared.answer()
            shared.forget()
        assert await shared.answer() == 3

    asyncio.run(scenario())


def test_a_question_that_was_forgotten_keeps_nothing_for_the_next():
    async def scenario():
        first, second = Question(), Question()
        questions = iter([first, second])
        shared = Shared(lambda: next(questions)(), kept=60)
        old = asyncio.create_task(shared.answer())
        await asyncio.sleep(0)
        shared.forget()
        new = asyncio.create_task(shared.answer())
        await asyncio.sleep(0)
        first.answer.set()
        assert await old == 1
        assert not new.done()
        second.answer.set()
        assert await new == 1

    asyncio.run(scenario())


def test_a_question_that_nobody_waits_for_ends():
    async def scenario():
        question = Question()
        shared = Shared(question)
        first, second = (asyncio.create_task(shared.answer()) for _ in range(2))
        await asyncio.sleep(0)
        await asyncio.sleep(0)
        first.cancel()
        await asyncio.gather(first, return_exceptions=True)
        assert (question.asked, question.ended) == (1, 0)
        second.cancel()
        await asyncio.gather(second, return_exceptions=True)
        await asyncio.sleep(0)
        assert question.ended == 1

    asyncio.run(scenario())
