"""What the user of a neural voice waits for, with real models: see speech/tests/heavy/neural_models.py."""

import os
import pathlib
import re
import shutil
import sys
import tempfile
import time
from itertools import groupby

from report import head, load, machine, median, row, verdict

HEAVY = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "speech", "tests", "heavy")
sys.path.append(HEAVY)
import file_server  # noqa: E402
import real_voices  # noqa: E402
from engine_process import EngineProcess  # noqa: E402
from sound import LOUD, RATE, Recorder, until  # noqa: E402

PARAGRAPH = (
    "Halfway up the hill we met a farmer who was looking for his dog. He asked whether we had seen it, a small "
    "brown animal with one white ear, and when we said no he only shook his head. She always comes back when she is "
    "hungry, he told us, but my wife will not believe it. We promised to keep our eyes open, and he went down the "
    "slope with long steps."
)
# A voice means the pauses at marks, where Piper's lasts 0.3 to 0.5 s: here nothing is meant to be quiet.
UNMARKED = re.sub(r"[,.]", "", PARAGRAPH)
TEXTS = {
    "two words": "Hello there.",
    "a paragraph": PARAGRAPH,
    "no comma in sight": "Everything that we had carried up the long hill since early that morning was gone by noon.",
}
VOICES = {"kokoro": "af_heart", "piper": real_voices.PIPER}
FIRST_SOUND = {"kokoro": 0.5, "piper": 0.15}  # seconds
MEMORY = {"kokoro": 350, "piper": 300}  # MB
QUIET = 0.2


class NeuralVoice:
    def __init__(self, sound_server, count):
        self._sound = sound_server
        self._count = count
        self._files = file_server.FileServer()
        self._folder = pathlib.Path(tempfile.mkdtemp(prefix="tavin-"))
        tree = real_voices.tree(self._folder / "tree", self._folder / "data", self._files)
        self.engine = EngineProcess(sound_server.environment, self._folder, tree=tree.folder)
        self.result = {"machine": machine(), "load at start": load()}

    def run(self):
        self.engine.start()
        for name in VOICES:
            result = self.result[name] = {}
            begin = time.monotonic()
            self.engine.post("/config", engine=name)
            self.engine.post("/config", voice=VOICES[name])
            until(lambda: self.engine.status()["ready"], 120, "the voice is ready")
            result["ready"] = time.monotonic() - begin
            print(f"\n{name}: ready {result['ready']:.1f} s after the choice, with the files from this machine")
            self._first_sound(name, result)
            self._stop(name, result)
            self._paragraph(name, result)

    def close(self):
        self.engine.kill()
        self._files.end()
        self._sound.end()
        shutil.rmtree(self._folder)

    def _first_sound(self, name, result):
        head(f"{name}: first sample, {self._count} times", "median", "p95 ms")
        for kind, text in TEXTS.items():
            seconds = [self._spoken(text) for _ in range(self._count)]
            result[f"first sample, {kind}"] = seconds
            row(kind, seconds, verdict(median(seconds), FIRST_SOUND[name], " s"))

    def _spoken(self, text):
        recorder = Recorder(self._sound)
        begin = time.monotonic()
        self.engine.speak(text)
        until(lambda: recorder.first_loud, 60, "sound")
        self.engine.post("/stop")
        recorder.end()
        time.sleep(0.3)  # what was given up has ended
        return recorder.first_loud - begin

    def _stop(self, name, result):
        seconds = []
        for _ in range(self._count):
            recorder = Recorder(self._sound)
            self.engine.speak(PARAGRAPH)
            recorder.loud_for(0.5)
            begin = time.monotonic()
            self.engine.post("/stop")
            recorder.quiet_for(0.4)
            seconds.append(max(recorder.last_loud - begin, 0))
            recorder.end()
        result["stop"] = seconds
        head(f"{name}: silence, {self._count} times", "median", "p95 ms")
        row("stop", seconds, verdict(median(seconds) * 1000, 50, " ms"))

    def _paragraph(self, name, result):
        """The longest quiet that is not meant, and the worker's memory meanwhile."""
        (worker,) = self.engine.helpers("tavin.synthesis.worker", name)
        for speed in (1.0, 1.5):
            self.engine.post("/config", speed=speed)
            recorder = Recorder(self._sound)
            self.engine.speak(UNMARKED)
            most = [0.0]
            until(lambda: recorder.first_loud, 60, "sound")
            until(
                lambda: most.append(real_voices.proportional(worker)) or self.engine.status()["state"] == "idle",
                120, "the end",
            )
            recorder.quiet_for(0.5)
            recorder.end()
            quiet = longest_quiet(recorder.samples)
            result[f"speed {speed}"] = {"longest quiet": quiet, "memory": max(most)}
            print(f"  speed {speed}: longest quiet {quiet:.2f} s, {verdict(quiet, QUIET, ' s')}; worker "
                  f"{max(most):.0f} MB proportional, {verdict(max(most), MEMORY[name], ' MB')}", flush=True)
        self.engine.post("/config", speed=1.0)


def longest_quiet(samples):
    """In seconds, between the first loud sample and the last."""
    loud = [abs(sample) > LOUD for sample in samples]
    runs = [(kind, len(list(run))) for kind, run in groupby(loud)]
    return max((length for kind, length in runs[1:-1] if not kind), default=0) / RATE
