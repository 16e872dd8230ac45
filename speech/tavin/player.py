"""The player process: plays streams of samples on the desktop's default output.

Run as `python3 -m tavin.player PARENT-PID`. GStreamer is loaded at the start,
but a stream to the sound server exists only between OPEN and the stream's end.
Everything runs on the GLib main loop's thread except the requests for audio,
which GStreamer makes on a thread of its own.
"""

import json
import os
import sys

from tavin import frames, lifetime

# What appsrc may hold on top of the sound server's own fifth of a second.
QUEUE_SECONDS = 0.3
PROPERTIES = "props,application.name=Tavin,application.id=app.tavin.Tavin,media.role=a11y"


def load_gstreamer():
    global GLib, Gst
    try:
        import gi

        gi.require_version("Gst", "1.0")
        from gi.repository import GLib, Gst
    except (ImportError, ValueError):
        raise RuntimeError(
            "GStreamer for Python is not installed (packages python3-gi, gir1.2-gstreamer-1.0)."
        ) from None
    Gst.init(None)
    needed = {
        "pulsesink": "gstreamer1.0-pulseaudio",
        "appsrc": "gstreamer1.0-plugins-base",
        "audioconvert": "gstreamer1.0-plugins-base",
        "audioresample": "gstreamer1.0-plugins-base",
    }
    for element, package in needed.items():
        if not Gst.ElementFactory.find(element):
            raise RuntimeError(f"GStreamer's {element} is not installed (package {package}).")


class Stream:
    """One text's sound on its way to the sound server."""

    def __init__(self, number, rate, report):
        self._number = number
        self._report = report
        self._pipeline = Gst.parse_launch(
            "appsrc name=source format=time emit-signals=true min-percent=50 "
            f"max-bytes={int(QUEUE_SECONDS * rate) * 2} "
            f"caps=audio/x-raw,format={sample_format()},rate={rate},channels=1,layout=interleaved "
            # Samples carry no time: each follows the one before, however late it comes.
            "! audioconvert ! audioresample ! pulsesink sync=false client-name=Tavin "
            f'stream-properties="{PROPERTIES}"'
        )
        self._source = self._pipeline.get_by_name("source")
        self._source.connect("need-data", lambda *_: report(frames.NEED, number))
        bus = self._pipeline.get_bus()
        bus.add_signal_watch()
        bus.connect("message::state-changed", self._state_changed)
        bus.connect("message::eos", lambda *_: self._finish(frames.ENDED))
        bus.connect("message::error", self._error)

    def run(self, playing):
        if self._pipeline:
            self._pipeline.set_state(Gst.State.PLAYING if playing else Gst.State.PAUSED)

    def play(self, samples):
        if self._pipeline:
            self._source.emit("push-buffer", Gst.Buffer.new_wrapped(samples))

    def end(self):
        if self._pipeline:
            self._source.emit("end-of-stream")

    def close(self):
        if self._pipeline:
            self._pipeline.get_bus().remove_signal_watch()
            self._pipeline.set_state(Gst.State.NULL)
            self._pipeline = self._source = None

    def _finish(self, kind, text=""):
        self.close()
        self._report(kind, self._number, text.encode())

    def _state_changed(self, _bus, message):
        if message.src == self._pipeline:
            _, state, _ = message.parse_state_changed()
            if state == Gst.State.PLAYING:
                self._report(frames.STARTED, self._number)

    def _error(self, _bus, message):
        error, _ = message.parse_error()
        self._finish(frames.FAILED, error.message)


def sample_format():
    return "S16LE" if sys.byteorder == "little" else "S16BE"


class Player:
    """Carries out the engine's frames; at most one stream at a time."""

    def __init__(self, output):
        self._output = output
        self._parser = frames.Parser()
        self._stream = None
        self._number = 0

    def report(self, kind, number=0, payload=b""):
        frames.write(self._output, kind, number, payload)

    def input_ready(self, fd, _condition):
        data = os.read(fd, 65536)
        if not data:
            os._exit(0)  # the engine is gone, and the sound with this process
        for kind, number, payload in self._parser.feed(data):
            self._carry_out(kind, number, payload)
        return True

    def _carry_out(self, kind, number, payload):
        if kind == frames.OPEN:
            self._open(number, **json.loads(payload))
        elif self._stream and number == self._number:
            self._steer(kind, payload)
        if kind == frames.CLOSE:
            self.report(frames.CLOSED, number)

    def _open(self, number, rate, paused):
        if self._stream:
            self._stream.close()
        self._number = number
        self._stream = Stream(number, rate, self.report)
        self._stream.run(playing=not paused)

    def _steer(self, kind, payload):
        stream = self._stream
        if kind == frames.AUDIO:
            stream.play(payload)
        elif kind == frames.END:
            stream.end()
        elif kind in (frames.PAUSE, frames.RESUME):
            stream.run(playing=kind == frames.RESUME)
        elif kind == frames.CLOSE:
            stream.close()
            self._stream = None


def main():
    lifetime.end_with_parent(int(sys.argv[1]))
    lifetime.ignore_terminal_signals()
    output = lifetime.claim_output()
    try:
        load_gstreamer()
    except RuntimeError as failure:
        frames.write(output, frames.MISSING, 0, str(failure).encode())
        return
    player = Player(output)
    GLib.unix_fd_add_full(GLib.PRIORITY_HIGH, 0, GLib.IOCondition.IN | GLib.IOCondition.HUP, player.input_ready)
    player.report(frames.READY)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
