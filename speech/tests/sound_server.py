"""Private sound servers, PulseAudio's and PipeWire's, with silent sinks: neither touches a device."""

import contextlib
import os
import shutil
import signal
import subprocess
import time

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
    """Serves in `folder`, whose path must be short: it holds a socket. `processes` are its own."""

    def __init__(self, folder, sink, rate):
        self.folder, self._sink, self._rate = str(folder), sink, rate
        self._socket = os.path.join(self.folder, "sound")
        self.address = f"unix:{self._socket}"
        config = os.path.join(self.folder, "client.conf")
        with open(config, "w", encoding="ascii") as file:
            file.write("autospawn = no\nenable-shm = no\n")
        self.environment = {
            "PULSE_SERVER": self.address,
            "PULSE_CLIENTCONFIG": config,
            "XDG_RUNTIME_DIR": self.folder,
            "HOME": self.folder,
            "PATH": os.environ["PATH"],
        }
        self.processes = []
        self.start()

    def start(self):
        self._start_processes()
        until(lambda: self._pactl("info").returncode == 0, 20, "the sound server answers")
        self.add_sink(self._sink)
        until(lambda: self._default_sink() == self._sink, 20, "the sink is the default")

    def end(self):
        for process in self.processes:
            process.kill()
        for process in self.processes:
            process.wait()
        self.processes.clear()

    def freeze(self, frozen):
        for process in self.processes:
            process.send_signal(signal.SIGSTOP if frozen else signal.SIGCONT)

    @contextlib.contextmanager
    def prompt(self):
        """Meanwhile what stops is soon silent, and a loaded machine may lose sound."""
        yield

    def streams(self):
        """The streams that are open to the server now."""
        return self._pactl("list", "short", "sink-inputs").stdout.splitlines()

    def load(self, module, *arguments):
        """Add a module, for instance a sink. Returns what `unload` takes to remove it."""
        done = self._pactl("load-module", module, *arguments)
        assert done.returncode == 0, done.stderr
        return done.stdout.strip().decode()

    def unload(self, module):
        """By its number or, of all that have it, its name."""
        assert self._pactl("unload-module", module).returncode == 0

    def add_sink(self, name, rate=None):
        raise NotImplementedError

    def set_default(self, sink):
        # Without a source that was asked for, recordings would follow as well.
        assert self._pactl("set-default-source", f"{self._sink}.monitor").returncode == 0
        assert self._pactl("set-default-sink", sink).returncode == 0

    def sinks(self):
        """Each one's line, with its state at the end."""
        return self._pactl("list", "short", "sinks").stdout.decode().splitlines()

    def _default_sink(self):
        return self._pactl("get-default-sink").stdout.decode().strip()

    def _spawn(self, *command):
        # None of the machine's services, which give devices and priorities.
        nowhere = f"unix:path={self.folder}/no-bus"
        buses = {"DBUS_SESSION_BUS_ADDRESS": nowhere, "DBUS_SYSTEM_BUS_ADDRESS": nowhere}
        with open(os.path.join(self.folder, f"{command[0]}.log"), "ab") as log:
            self.processes.append(subprocess.Popen(
                [*WITH_US, *command], env={**self.environment, **buses}, stdout=log, stderr=log
            ))

    def _pactl(self, *arguments):
        return subprocess.run(
            ["pactl", *arguments], env=self.environment, capture_output=True, check=False
        )


class PulseAudio(SoundServer):
    needs = ("pulseaudio",)
    has_always_a_sink = False

    def _start_processes(self):
        self._spawn(
            *("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1"),
            *("--use-pid-file=no", "--high-priority=no", "--realtime=no", "--disable-shm=yes"),
            *("-L", f"module-native-protocol-unix auth-anonymous=1 socket={self._socket}"),
        )

    def add_sink(self, name, rate=None):
        return self.load(
            *("module-null-sink", "channels=1", "format=s16le", "norewinds=1"),
            *(f"rate={rate or self._rate}", f"sink_name={name}"),
        )

    def suspend_idle_sinks(self):
        self.load("module-suspend-on-idle", "timeout=1")

    def suspend(self, sink, suspended):
        """Until it is said otherwise. PipeWire has no such thing."""
        assert self._pactl("suspend-sink", sink, str(int(suspended))).returncode == 0


# One rate everywhere, so that no sample is computed anew, and long periods: a short one that a loaded
# machine is too late for is lost.
PIPEWIRE = """context.properties = {{
  support.dbus = false
  default.clock.rate = {rate}
  default.clock.allowed-rates = [ {rate} ]
  default.clock.min-quantum = 4096
  default.clock.quantum = 4096
}}
"""
PIPEWIRE_PULSE = """pulse.properties = {{
  server.address = [ "{address}" ]
}}
"""
# The machine's devices are not for tests: in the words of WirePlumber 0.4, then of 0.5.
WIREPLUMBER_LUA = """alsa_monitor.enabled = false
v4l2_monitor.enabled = false
libcamera_monitor.enabled = false
default_access.properties["enable-flatpak-portal"] = false
"""
WIREPLUMBER = """wireplumber.profiles = {
  main = {
    hardware.audio = disabled
    hardware.bluetooth = disabled
    hardware.video-capture = disabled
    support.dbus = disabled
  }
}
"""


class PipeWire(SoundServer):
    needs = ("pipewire", "wireplumber", "pipewire-pulse")
    has_always_a_sink = True  # "auto_null", which is nowhere

    def _start_processes(self):
        self._configure("pipewire/pipewire.conf.d/tavin.conf", PIPEWIRE.format(rate=self._rate))
        self._configure("pipewire/pipewire-pulse.conf.d/tavin.conf",
                        PIPEWIRE_PULSE.format(address=self.address))
        self._configure("wireplumber/main.lua.d/60-tavin.lua", WIREPLUMBER_LUA)
        self._configure("wireplumber/wireplumber.conf.d/tavin.conf", WIREPLUMBER)
        self._spawn("pipewire")
        socket = os.path.join(self.folder, "pipewire-0")
        until(lambda: os.path.exists(socket), 20, "pipewire")
        self._spawn("wireplumber")
        self._spawn("pipewire-pulse")

    @contextlib.contextmanager
    def prompt(self):
        self._force_period(256)
        yield
        self._force_period(0)

    def _force_period(self, samples):
        subprocess.run(
            ["pw-metadata", "-n", "settings", "0", "clock.force-quantum", str(samples)],
            env=self.environment, stdout=subprocess.DEVNULL, check=True, timeout=10,
        )

    def add_sink(self, name, rate=None):
        return self.load(
            *("module-null-sink", "channels=1", "channel_map=mono"),
            *(f"rate={rate or self._rate}", f"sink_name={name}"),
        )

    def suspend_idle_sinks(self):
        """WirePlumber does so by itself."""

    def _configure(self, name, text):
        path = os.path.join(self.folder, ".config", name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)


SERVERS = {"pulseaudio": PulseAudio, "pipewire": PipeWire}


def start_sound_server(folder, sink, rate):
    """The one that TAVIN_TEST_SOUND names, else the first that this machine has."""
    wanted = os.environ.get("TAVIN_TEST_SOUND")
    for name, kind in SERVERS.items():
        if wanted in (None, name) and all(map(shutil.which, kind.needs)):
            return kind(folder, sink, rate)
    raise AssertionError(f"this machine has no sound server for tests ({wanted or 'any'})")
