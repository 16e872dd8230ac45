"""A bare machine that commands are run on one after the other; see tools/bare."""

import os
import subprocess
import threading

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BARE = os.path.join(ROOT, "tools/bare")
END = "--- ended with"


class Machine:
    """Use as a context manager: leaving it ends the machine."""

    def __init__(self, kind="debian12", *options, seconds=900):
        self.process = subprocess.Popen(
            [BARE, *options, kind, "bash"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, text=True)
        self.run("true", seconds)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        try:
            self.process.wait(120)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self.process.stdout.close()

    def run(self, commands, seconds=600):
        """Runs them in the checkout. Returns the exit code and all that was printed."""
        deadline = threading.Timer(seconds, self.process.kill)
        deadline.start()
        try:
            self.process.stdin.write(f"( {commands}\n) </dev/null 2>&1; code=$?; echo; echo '{END}' $code\n")
            self.process.stdin.flush()
            printed = []
            for line in self.process.stdout:
                if line.startswith(END):
                    return int(line.removeprefix(END)), "".join(printed).strip()
                printed.append(line)
        finally:
            deadline.cancel()
        raise AssertionError(f"the machine ended, or {seconds} s have passed:\n{''.join(printed)}")

    def check(self, commands, seconds=600):
        """Those must succeed. Returns what was printed."""
        code, printed = self.run(commands, seconds)
        assert code == 0, printed[-5000:]
        return printed
