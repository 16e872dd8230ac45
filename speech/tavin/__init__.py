"""Tavin's speech engine: reads texts aloud, driven over HTTP on the loopback interface."""

import os
import sys

ENGINE_FOLDER = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
# An installed Tavin names this folder in PYTHONPATH, before the system's. Nothing of the engine needs it, so
# nothing of it gets into processes that hold keys or listen.
LIBRARIES = os.path.join(ENGINE_FOLDER, "site-packages")
sys.path[:] = [folder for folder in sys.path if os.path.realpath(folder) != os.path.realpath(LIBRARIES)]
