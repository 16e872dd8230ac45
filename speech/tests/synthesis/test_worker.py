"""Which requests a worker carries out, and which not any more."""

import io
import threading

import pytest
from tavin.process import frames
from tavin.synthesis import worker


class Input:
    """Standard input that gets its frames when the test wants."""

    def __init__(self, monkeypatch):
        self.buffer = self
        self._data = io.BytesIO()
        self._there = threading.Condition()
        self._read = 0
        self._ended = False
        monkeypatch.setattr(worker.sys, "stdin", self)

    def send(self, kind, number):
        with self._there:
            self._data.seek(0, io.SEEK_END)
            self._data.write(frames.pack(kind, number, b"x"))
            self._there.notify()

    def end(self):
        with self._there:
            self._ended = True
            self._there.notify()

    def read(self, count):
        with self._there:
            self._there.wait_for(lambda: len(self._data.getvalue()) >= self._read + count or self._ended, 10)
            self._data.seek(self._read)
            data = self._data.read(count)
            self._read += len(data)
            return data


@pytest.fixture
def source(monkeypatch):
    made = Input(monkeypatch)
    yield made
    made.end()


class Abandoned:
    def __init__(self):
        self.calls = []
        self.told = threading.Event()

    def __call__(self, now):
        self.calls.append(now)
        if now:
            self.told.set()


def test_requests_come_in_order_and_end_with_the_input(source):
    inbox = worker.Inbox(lambda now: None)
    for number in (1, 2):
        source.send(frames.SAY, number)
    assert [inbox.next()[1], inbox.next()[1]] == [1, 2]
    source.end()
    assert inbox.next() is None


def test_the_current_request_is_abandoned_at_once_and_the_next_is_not(source):
    abandoned = Abandoned()
    inbox = worker.Inbox(abandoned)
    source.send(frames.SAY, 1)
    assert inbox.next()[1] == 1
    source.send(frames.ABANDON, 1)
    assert abandoned.told.wait(5)
    source.send(frames.SAY, 2)
    assert inbox.next()[1] == 2
    assert abandoned.calls == [False, True, False]


def test_a_waiting_request_that_is_abandoned_never_begins(source):
    abandoned = Abandoned()
    inbox = worker.Inbox(abandoned)
    for number in (1, 2, 3):
        source.send(frames.SAY, number)
    assert inbox.next()[1] == 1
    source.send(frames.ABANDON, 2)
    source.send(frames.ABANDON, 1)  # behind it: when this is told, the other was read
    assert abandoned.told.wait(5)
    assert inbox.next()[1] == 3


def test_what_is_over_is_not_abandoned(source):
    abandoned = Abandoned()
    inbox = worker.Inbox(abandoned)
    for number in (1, 2):
        source.send(frames.SAY, number)
    inbox.next()
    inbox.next()
    source.send(frames.ABANDON, 1)
    source.send(frames.ABANDON, 2)
    assert abandoned.told.wait(5)
    assert abandoned.calls == [False, False, True]
