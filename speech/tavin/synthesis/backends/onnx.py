"""How the neural voices' workers run a model on onnxruntime."""

import os

import onnxruntime


def run_options():
    """What ends a run in its midst, by `terminate`; on any thread."""
    options = onnxruntime.RunOptions()
    # Each text has a length of its own: what one needed is of little use to the next.
    options.add_run_config_entry("memory.enable_memory_arena_shrinkage", "cpu:0")
    return options


class Session:
    """The model in the file `path`; its runs obey `options`."""

    def __init__(self, path, options):
        session_options = onnxruntime.SessionOptions()
        session_options.intra_op_num_threads = threads()
        session_options.inter_op_num_threads = 1
        session_options.add_session_config_entry("session.intra_op.allow_spinning", "0")
        self._session = onnxruntime.InferenceSession(
            str(path), session_options, providers=["CPUExecutionProvider"]
        )
        self._options = options

    def __getattr__(self, name):
        return getattr(self._session, name)

    def run(self, outputs, inputs):
        return self._session.run(outputs, inputs, self._options)


def threads():
    """One core stays free for everybody else, but not of two: sound would begin late, and pause."""
    cores = len(os.sched_getaffinity(0))
    return min(cores, max(2, cores - 1))
