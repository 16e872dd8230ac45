"""The keyboard and the pointer of a sway session's user."""

from session import SessionError

WIDTH, HEIGHT = 1280, 800  # Of the screen.
# The kernel's numbers of the keys, by the names that xdotool gives them.
KEYS = {"Escape": 1, "BackSpace": 14, "Tab": 15, "Return": 28, "ctrl": 29, "shift": 42, "alt": 56,
        "Home": 102, "Up": 103, "Left": 105, "Right": 106, "End": 107, "Down": 108, "Insert": 110,
        "super": 125, "space": 57,
        **dict(zip("qwertyuiop", range(16, 26))), **dict(zip("asdfghjkl", range(30, 39))),
        **dict(zip("zxcvbnm", range(44, 51)))}
LEFT, RIGHT = 0x110, 0x111


class SwayInput:
    """`program` is a running wayland_input, its standard input and output in pipes."""

    def __init__(self, program):
        self._program = program
        self._wait()

    def send(self, *words):
        print(*words, file=self._program.stdin, flush=True)
        self._wait()

    def _wait(self):
        if self._program.stdout.readline() != "done\n":
            raise SessionError("the input program has ended")

    def chord(self, names):
        codes = [KEYS[name] for name in names.split("+")]
        for code in codes:
            self.send("key", code, 1)
        for code in reversed(codes):
            self.send("key", code, 0)

    def hold(self, name):
        self.send("key", KEYS[name], 1)

    def let_go(self, name):
        self.send("key", KEYS[name], 0)

    def move(self, x, y):
        self.send("move", x, y, WIDTH, HEIGHT)

    def press(self, button=LEFT):
        self.send("button", button, 1)

    def release(self, button=LEFT):
        self.send("button", button, 0)
