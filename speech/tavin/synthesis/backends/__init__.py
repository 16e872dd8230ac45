"""The back-ends that this engine offers, in the order in which it lists them.

Each is a folder: its `BACKEND` is for the engine, its module `synthesizer` is
loaded in the worker process only. README.md tells how to add one.
"""

from tavin.synthesis.backends import elevenlabs, espeak, kokoro, openai, piper, server

BACKENDS = {module.BACKEND.name: module.BACKEND for module in (kokoro, piper, espeak, elevenlabs, openai)}

# One of the user's own comes behind them.
NAMES = (*BACKENDS, server.NAME)

# Speaks at once, without a download or a key, and most languages.
FIRST_CHOICE = LAST_RESORT = espeak.BACKEND.name
