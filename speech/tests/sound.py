"""A private sound server with one silent sink, and a recorder of what is played there."""

import array
import os
import signal
import subprocess
import threading
import time

RATE = 22050
NULL_SINK = ("channels=1", "format=s16le", "norewinds=1")
LOUD = 200  # speech is far above, rounding far below
# What a killed test run leaves behind must not live on.
WITH_US = ("setpriv", "--pdeathsig", "KILL")


def until(condition, seconds, what):
    """Wait for a condition; its value. AssertionError after the given time."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        assert time.monotonic() < deadline, f"not within {seconds} s: {what}"
        time.sleep(0.005)


class SoundServer:
    def __init__(self, folder):
        self.socket = os.path.join(folder, "sound")
        config = os.path.join(folder, "client.conf")
        with open(config, "w", encoding="ascii") as file:
            file.write("autospawn = no\nenable-shm = no\n")
        self.environment = {
            "PULSE_SERVER": f"unix:{self.socket}",
            "PULSE_CLIENTCONFIG": config,
            "XDG_RUNTIME_DIR": str(folder),
            "HOME": str(folder),
            "PATH": os.environ["PATH"],
        }
        self._log = open(os.path.join(folder, "pulse.log"), "wb")
        self._process = None
        self.start()

    def start(self):
        self._process = subprocess.Popen(
            [
                *WITH_US,
                *("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1"),
                *("--use-pid-file=no", "--disable-shm=yes"),
                *("-L", " ".join(["module-null-sink", "sink_name=test", f"rate={RATE}", *NULL_SINK])),
                *("-L", f"module-native-protocol-unix auth-anonymous=1 socket={self.socket}"),
            ],
            env=self.environment,
            stdout=self._log,
            stderr=self._log,
        )
        until(lambda: self._pactl("info").returncode == 0, 10, "the sound server answers")

    def streams(self):
        """The streams that are open to the server now."""
        return self._pactl("list", "short", "sink-inputs").stdout.splitlines()

    def load(self, module, *arguments):
        """Add a module, for instance a sink."""
        done = self._pactl("load-module", module, *arguments)
        assert done.returncode == 0, done.stderr
        return done.stdout.strip().decode()

    def add_sink(self, name, rate=RATE):
        """Returns what `unload` takes to remove it."""
        return self.load("module-null-sink", *NULL_SINK, f"rate={rate}", f"sink_name={name}")

    def unload(self, module):
        """By its number or, of all that have it, its name."""
        assert self._pactl("unload-module", module).returncode == 0

    def set_default(self, sink):
        # Without a source that was asked for, recordings would follow as well.
        assert self._pactl("set-default-source", "test.monitor").returncode == 0
        assert self._pactl("set-default-sink", sink).returncode == 0

    def suspend(self, sink, suspended):
        assert self._pactl("suspend-sink", sink, str(int(suspended))).returncode == 0

    def sinks(self):
        """Each one's line, with its state at the end."""
        return self._pactl("list", "short", "sinks").stdout.decode().splitlines()

    def freeze(self, frozen):
        self._process.send_signal(signal.SIGSTOP if frozen else signal.SIGCONT)

    def end(self):
        self._process.kill()
        self._process.wait()

    def _pactl(self, *arguments):
        return subprocess.run(
            ["pactl", *arguments], env=self.environment, capture_output=True, check=False
        )


class Recorder:
    """Records the sink from the moment of its making until `end`."""

    def __init__(self, server, sink="test", rate=RATE):
        self._rate = rate
        self._process = subprocess.Popen(
            [
                *("parec", "--raw", f"--device={sink}.monitor", "--latency-msec=10"),
                *("--format=s16le", f"--rate={rate}", "--channels=1"),
            ],
            env=server.environment,
            stdout=subprocess.PIPE,
        )
        self.samples = array.array("h")
        self.last_loud = None  # when the latest loud sample arrived, at the latest
        self.first_loud = None
        threading.Thread(target=self._take, daemon=True).start()
        until(lambda: len(self.samples) > 0, 10, "the recording runs")

    def loud_for(self, seconds):
        """Wait until so much sound was heard from now on."""
        begin = len(self.samples)
        until(lambda: self._loud_count(begin) > seconds * self._rate / 4, seconds + 10, "sound")

    def quiet_for(self, seconds, within=20):
        """Wait until it has been quiet for so long."""
        begin = time.monotonic()
        until(
            lambda: time.monotonic() - max(self.last_loud or 0, begin) > seconds,
            within,
            "quiet",
        )

    def end(self):
        self._process.kill()
        self._process.wait()

    def _loud_count(self, begin):
        return sum(1 for sample in self.samples[begin:] if abs(sample) > LOUD)

    def _take(self):
        left = b""
        while data := os.read(self._process.stdout.fileno(), 65536):
            arrived = time.monotonic()
            data = left + data
            whole = len(data) & ~1
            left = data[whole:]
            fresh = array.array("h", data[:whole])
            if fresh and max(max(fresh), -min(fresh)) > LOUD:
                self.last_loud = arrived
                self.first_loud = self.first_loud or arrived
            self.samples.extend(fresh)
