"""A terminal with a program in it that records what reaches it."""

import os

from session import wait_until

WORD = "Wörterbuch"


class Watched:
    """`command` opens a terminal with that `title` and ends where a program follows; `row` is where
    its first line of text stands."""

    def __init__(self, desktop, programs, command, record, row=12, title="watched"):
        self.desktop, self.record, self.row = desktop, record, row
        self.window = desktop.open(
            [*command, "/usr/bin/python3", os.path.join(programs, "byte_watch.py"), record,
             WORD + " and more"], title)
        wait_until(lambda: self.reached() == ["ready"], 10, "program in the terminal")

    def reached(self):
        if not os.path.exists(self.record):
            return []
        with open(self.record, encoding="utf-8") as f:
            return f.read().split("\n")[:-1]

    def select_word(self):
        self.desktop.select_until(
            WORD, lambda: self.desktop.click(self.window, 30, self.row, times=2))
