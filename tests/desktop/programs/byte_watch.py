#!/usr/bin/python3
"""Runs in a terminal and appends to a file what reaches it: "ready", then every byte and signal.

Changes of the window's size are no news: window managers cause them at any time.
"""

import os
import signal
import sys
import termios
import tty

record = os.open(sys.argv[1], os.O_WRONLY | os.O_CREAT | os.O_APPEND, 0o600)


def note(line):
    os.write(record, (line + "\n").encode())


for number in signal.valid_signals() - {signal.SIGKILL, signal.SIGSTOP, signal.SIGWINCH}:
    signal.signal(number, lambda n, _frame: note("signal " + signal.Signals(n).name))
# Raw but for the keys that make signals, which must be seen as such.
tty.setraw(0)
settings = termios.tcgetattr(0)
settings[3] |= termios.ISIG
termios.tcsetattr(0, termios.TCSANOW, settings)
sys.stdout.write(sys.argv[2])
sys.stdout.flush()
note("ready")
while True:
    got = os.read(0, 1024)
    if not got:
        break
    note("bytes " + got.hex())
