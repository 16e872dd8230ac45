"""The user's keys for cloud voices: kept by the desktop's Secret Service, never in a file of ours.

Runs on the event loop. The service may have to ask the user for a password and
may not answer at all, so it is talked to by a process (`secret_service.py`) that is
ended at a deadline. A key that was given or used stays in this process's memory.
"""

import asyncio
import contextlib
import json
import os
import sys
from collections import Counter
from functools import partial

from tavin import ENGINE_FOLDER
from tavin.process.shared import Shared

LONGEST_KEY = 1000
LOOK_SECONDS = 10.0
PROMPT_SECONDS = 50.0  # for a password dialog; Tavin waits a little longer


class KeyringError(Exception):
    """Text for the user: why the Secret Service did not do its part. `absent`: there is none."""

    def __init__(self, text, absent=False):
        super().__init__(text)
        self.absent = absent


class Keys:
    def __init__(self, names, stored=(), patience=PROMPT_SECONDS):
        """`stored`: the names that had a key when the service was last asked."""
        self._names = names
        self._patience = patience
        self._memory = {}
        self._stored = set(stored)  # names in the Secret Service, as far as known
        self._looks = {activate: Shared(partial(self._look, activate)) for activate in (False, True)}
        self._reads = {
            (name, prompt): Shared(partial(self._learn, name, prompt)) for name in names for prompt in (False, True)
        }
        self._storing = asyncio.Lock()  # the last one given wins
        self._wishes = Counter()  # how often the user gave or removed a key
        self._removing = Counter()  # removals on their way

    def known(self, name):
        return name in self._memory or name in self._stored

    @property
    def stored(self):
        """The names with a key in the Secret Service, as far as known."""
        return [name for name in self._names if name in self._stored]

    async def look(self, activate):
        """Find out which keys are stored. Unlocks nothing; `activate` may start the service."""
        await self._looks[activate].answer()

    async def _look(self, activate):
        wishes = self._wishes.total()
        answer = await ask(LOOK_SECONDS, do="search", names=self._names, activate=activate)
        if answer["running"] and wishes == self._wishes.total():
            self._stored = set(answer["names"])

    async def key(self, name, prompt=True):
        """A key to use, None without one. `prompt`: the user may be asked to unlock the keyring."""
        if name not in self._memory and not self._removing[name]:
            await self._reads[name, prompt].answer()
        return self._memory.get(name)

    async def _learn(self, name, prompt):
        wishes = self._wishes[name]
        key = await self._read(name, prompt)
        if wishes != self._wishes[name]:
            return  # the user knows better than what was read
        if key:
            self._stored.add(name)
            self._memory[name] = key
        else:
            self._stored.discard(name)

    async def _read(self, name, prompt):
        try:
            return checked((await ask(self._patience, do="get", name=name, prompt=prompt))["key"])
        except KeyringError as failure:
            if failure.absent and name not in self._stored:
                return None
            raise

    async def keep(self, name, label, key):
        """Store a key, remove it when empty. Where that fails, memory has it as was wished."""
        self._wished(name)
        if key:
            self._memory[name] = key
            async with self._storing:
                await ask(self._patience, do="store", name=name, label=label, key=key)
                self._stored.add(name)
                self._wished(name)  # who looked meanwhile may have missed it
        else:
            self._memory.pop(name, None)
            await self._remove(name)

    def _wished(self, name):
        """What is being read is not what the user wants any more."""
        self._wishes[name] += 1
        for prompt in (False, True):
            self._reads[name, prompt].forget()

    async def _remove(self, name):
        self._removing[name] += 1
        try:
            async with self._storing:
                await ask(self._patience, do="remove", name=name)
                self._stored.discard(name)
                self._wished(name)
        except KeyringError as failure:
            if not failure.absent or name in self._stored:
                raise
        finally:
            self._removing[name] -= 1


def is_key(text):
    """Whether it can go into a request's header as it is."""
    return len(text) <= LONGEST_KEY and text.isascii() and text.isprintable()


def checked(key):
    """A stored key as it can be used; the user's keyring program may have added a line's end."""
    if key is None:
        return None
    key = key.strip()
    if not is_key(key):
        raise KeyringError("What is stored there is not a key.")
    return key


async def ask(seconds, **request):
    """One question to the Secret Service, in a process of its own."""
    process = None
    try:
        async with asyncio.timeout(seconds):
            process = await start()
            output, _ = await process.communicate(json.dumps(request).encode())
        answer = json.loads(output)
    except TimeoutError:
        raise KeyringError("The keyring does not answer.") from None
    except (OSError, ValueError):
        raise KeyringError("The keyring could not be asked.") from None
    finally:
        if process and process.returncode is None:
            with contextlib.suppress(ProcessLookupError):
                process.kill()
            await process.wait()
    if "failure" in answer:
        raise KeyringError(answer["failure"], answer.get("absent", False))
    return answer


def start():
    return asyncio.create_subprocess_exec(
        sys.executable,
        "-m",
        "tavin.keys.secret_service",
        str(os.getpid()),
        cwd=ENGINE_FOLDER,
        stdin=asyncio.subprocess.PIPE,
        stdout=asyncio.subprocess.PIPE,
        stderr=asyncio.subprocess.DEVNULL,
    )
