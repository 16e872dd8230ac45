"""One stream to the sound server, from the connection to its end."""

import sys

from tavin.process import frames
from tavin.sound import pulse

# The server holds this much; all of it is unheard after a stop or a pause.
BUFFER_SECONDS = 0.3
REQUEST_SECONDS = 0.03
START_SECONDS = 0.02  # enough to begin with, and to go on with after a gap
NOT_SET = 0xFFFFFFFF
REASONS = {
    pulse.NO_ENTITY: "No sound output is connected.",
    pulse.KILLED: "The sound output was disconnected.",
}


class Playback:
    """`report(kind, payload)` tells NEED, STARTED, SUSPENDED and, as the last, ENDED or FAILED."""

    def __init__(self, library, api, rate, paused, report):
        self._pa = library
        self._rate = rate
        self._paused = paused
        self._report = report
        self._stream = None
        self._asked = 0  # bytes wanted from the engine that have not come
        self._ending = False
        self._suspended = False
        # Kept here, because the library holds only pointers to them.
        self._on_context = pulse.Notify(lambda *_: self._context_changed())
        self._on_stream = pulse.Notify(lambda *_: self._stream_changed())
        self._on_suspended = pulse.Notify(lambda *_: self._tell_suspended())
        self._on_request = pulse.Request(lambda *_: self._ask())
        self._on_started = pulse.Notify(lambda *_: self._report(frames.STARTED))
        self._on_drained = pulse.Success(lambda *_: self._finish(frames.ENDED))
        properties = self._properties()
        self._context = self._pa.pa_context_new_with_proplist(api, b"Tavin", properties)
        self._pa.pa_proplist_free(properties)
        self._pa.pa_context_set_state_callback(self._context, self._on_context, None)
        if self._pa.pa_context_connect(self._context, None, 0, None) < 0:
            self._fail()

    def play(self, samples):
        self._asked -= len(samples)
        if self._stream:
            self._pa.pa_stream_write(
                self._stream, samples, len(samples), None, 0, pulse.SEEK_RELATIVE
            )

    def end(self):
        """No more sound comes: report when all of it was played."""
        self._ending = True
        if self._ready():
            self._forget(self._pa.pa_stream_drain(self._stream, self._on_drained, None))

    def pause(self, paused):
        self._paused = paused
        if self._ready():
            self._forget(self._pa.pa_stream_cork(self._stream, int(paused), None, None))

    def close(self):
        """Silence: the server throws away what it holds."""
        # Taken out first: both may call back while they are ended, whatever was asked of them.
        stream, self._stream = self._stream, None
        context, self._context = self._context, None
        if stream:
            self._pa.pa_stream_disconnect(stream)
            self._pa.pa_stream_unref(stream)
        if context:
            self._pa.pa_context_disconnect(context)
            self._pa.pa_context_unref(context)

    def _properties(self):
        properties = self._pa.pa_proplist_new()
        for name, value in (
            (b"application.name", b"Tavin"),
            (b"application.id", b"app.tavin.Tavin"),
            (b"application.icon_name", b"app.tavin.Tavin"),
            (b"media.role", b"a11y"),
        ):
            self._pa.pa_proplist_sets(properties, name, value)
        return properties

    def _context_changed(self):
        if not self._context:
            return
        state = self._pa.pa_context_get_state(self._context)
        if state == pulse.CONTEXT_READY:
            self._open_stream()
        elif state in (pulse.CONTEXT_FAILED, pulse.CONTEXT_TERMINATED):
            self._fail()

    def _open_stream(self):
        little = sys.byteorder == "little"
        spec = pulse.SampleSpec(pulse.FORMAT_S16LE if little else pulse.FORMAT_S16BE, self._rate, 1)
        self._stream = self._pa.pa_stream_new(self._context, b"Speech", spec, None)
        self._pa.pa_stream_set_state_callback(self._stream, self._on_stream, None)
        self._pa.pa_stream_set_write_callback(self._stream, self._on_request, None)
        self._pa.pa_stream_set_started_callback(self._stream, self._on_started, None)
        self._pa.pa_stream_set_suspended_callback(self._stream, self._on_suspended, None)
        self._pa.pa_stream_set_moved_callback(self._stream, self._on_suspended, None)
        sizes = pulse.BufferAttributes(
            NOT_SET,
            self._bytes(BUFFER_SECONDS),
            self._bytes(START_SECONDS),
            self._bytes(REQUEST_SECONDS),
            NOT_SET,
        )
        flags = pulse.ADJUST_LATENCY | (pulse.START_CORKED if self._paused else 0)
        self._corked_at_start = self._paused
        if self._pa.pa_stream_connect_playback(self._stream, None, sizes, flags, None, None) < 0:
            self._fail()

    def _stream_changed(self):
        if not self._stream:
            return
        state = self._pa.pa_stream_get_state(self._stream)
        if state in (pulse.STREAM_FAILED, pulse.STREAM_TERMINATED):
            self._fail()
        elif state == pulse.STREAM_READY:
            self._tell_suspended()
            if self._paused != self._corked_at_start:
                self.pause(self._paused)
            if self._ending:
                self.end()

    def _tell_suspended(self):
        """A device that is another session's for now takes nothing, and will again."""
        suspended = bool(self._stream) and self._pa.pa_stream_is_suspended(self._stream) > 0
        if suspended != self._suspended:
            self._suspended = suspended
            self._report(frames.SUSPENDED, b"1" if suspended else b"0")

    def _ask(self):
        """Ask the engine for what the server can take."""
        if not self._stream or self._ending:
            return
        wanted = self._pa.pa_stream_writable_size(self._stream) - self._asked
        if wanted > 0:
            self._asked += wanted
            self._report(frames.NEED, str(wanted).encode())

    def _ready(self):
        return self._stream and self._pa.pa_stream_get_state(self._stream) == pulse.STREAM_READY

    def _fail(self):
        if not self._context:
            return  # it was told
        number = self._pa.pa_context_errno(self._context)
        reason = REASONS.get(number)
        if reason is None:
            known = self._pa.pa_strerror(number).decode(errors="replace")
            reason = f"The sound server cannot be used: {known}"
        self._finish(frames.FAILED, reason.encode())

    def _finish(self, kind, payload=b""):
        if self._context:
            self.close()
            self._report(kind, payload)

    def _forget(self, operation):
        if operation:
            self._pa.pa_operation_unref(operation)

    def _bytes(self, seconds):
        return 2 * int(seconds * self._rate)
