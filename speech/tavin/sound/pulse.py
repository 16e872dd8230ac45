"""The part of libpulse that the player needs.

The sound servers of all desktops (PulseAudio, and PipeWire with its pulse
server) speak this library's protocol. Its own streams are used, because they
never lose samples: a stream that runs dry waits for more, a paused one goes on
at the same sample, and the server tells when the last one was played.

All calls are for the main loop's thread. Callbacks come on that thread.
"""

import ctypes as c

LIBRARY = "libpulse.so.0"

CONTEXT_READY, CONTEXT_FAILED, CONTEXT_TERMINATED = 4, 5, 6
STREAM_READY, STREAM_FAILED, STREAM_TERMINATED = 2, 3, 4
START_CORKED, ADJUST_LATENCY = 0x0001, 0x2000
SEEK_RELATIVE = 0
NO_ENTITY, KILLED = 5, 12  # errors
IO_INPUT, IO_HANGUP = 1, 4
FORMAT_S16LE, FORMAT_S16BE = 3, 4


class SampleSpec(c.Structure):
    _fields_ = [("format", c.c_int), ("rate", c.c_uint32), ("channels", c.c_uint8)]


class BufferAttributes(c.Structure):
    _fields_ = [
        ("maxlength", c.c_uint32),
        ("tlength", c.c_uint32),
        ("prebuf", c.c_uint32),
        ("minreq", c.c_uint32),
        ("fragsize", c.c_uint32),
    ]


IoCallback = c.CFUNCTYPE(None, c.c_void_p, c.c_void_p, c.c_int, c.c_int, c.c_void_p)
IoNew = c.CFUNCTYPE(c.c_void_p, c.c_void_p, c.c_int, c.c_int, IoCallback, c.c_void_p)


class MainLoopApi(c.Structure):
    _fields_ = [("userdata", c.c_void_p), ("io_new", IoNew)]  # and more


Notify = c.CFUNCTYPE(None, c.c_void_p, c.c_void_p)
Request = c.CFUNCTYPE(None, c.c_void_p, c.c_size_t, c.c_void_p)
Success = c.CFUNCTYPE(None, c.c_void_p, c.c_int, c.c_void_p)
POINTER = c.c_void_p

FUNCTIONS = {
    "pa_mainloop_new": (POINTER, []),
    "pa_mainloop_get_api": (c.POINTER(MainLoopApi), [POINTER]),
    "pa_mainloop_run": (c.c_int, [POINTER, POINTER]),
    "pa_proplist_new": (POINTER, []),
    "pa_proplist_sets": (c.c_int, [POINTER, c.c_char_p, c.c_char_p]),
    "pa_proplist_free": (None, [POINTER]),
    "pa_strerror": (c.c_char_p, [c.c_int]),
    "pa_context_new_with_proplist": (POINTER, [c.POINTER(MainLoopApi), c.c_char_p, POINTER]),
    "pa_context_connect": (c.c_int, [POINTER, c.c_char_p, c.c_int, POINTER]),
    "pa_context_set_state_callback": (None, [POINTER, Notify, POINTER]),
    "pa_context_get_state": (c.c_int, [POINTER]),
    "pa_context_errno": (c.c_int, [POINTER]),
    "pa_context_disconnect": (None, [POINTER]),
    "pa_context_unref": (None, [POINTER]),
    "pa_stream_new": (POINTER, [POINTER, c.c_char_p, c.POINTER(SampleSpec), POINTER]),
    "pa_stream_set_state_callback": (None, [POINTER, Notify, POINTER]),
    "pa_stream_set_write_callback": (None, [POINTER, Request, POINTER]),
    "pa_stream_set_started_callback": (None, [POINTER, Notify, POINTER]),
    "pa_stream_set_suspended_callback": (None, [POINTER, Notify, POINTER]),
    "pa_stream_set_moved_callback": (None, [POINTER, Notify, POINTER]),
    "pa_stream_is_suspended": (c.c_int, [POINTER]),
    "pa_stream_get_state": (c.c_int, [POINTER]),
    "pa_stream_connect_playback": (
        c.c_int,
        [POINTER, c.c_char_p, c.POINTER(BufferAttributes), c.c_int, POINTER, POINTER],
    ),
    "pa_stream_writable_size": (c.c_size_t, [POINTER]),
    "pa_stream_write": (c.c_int, [POINTER, c.c_char_p, c.c_size_t, POINTER, c.c_int64, c.c_int]),
    "pa_stream_cork": (POINTER, [POINTER, c.c_int, POINTER, POINTER]),
    "pa_stream_drain": (POINTER, [POINTER, Success, POINTER]),
    "pa_stream_disconnect": (c.c_int, [POINTER]),
    "pa_stream_unref": (None, [POINTER]),
    "pa_operation_unref": (None, [POINTER]),
}


def load():
    """The library with its functions' types set; RuntimeError when it is not there."""
    try:
        library = c.CDLL(LIBRARY)
    except OSError:
        raise RuntimeError("The sound server's library is not installed (package libpulse0).") from None
    for name, (result, arguments) in FUNCTIONS.items():
        function = getattr(library, name)
        function.restype, function.argtypes = result, arguments
    return library
