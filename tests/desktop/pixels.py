"""What is on the screen, point by point."""

import itertools
import os
from collections import Counter

import gi

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf  # noqa: E402


class Picture:
    """A picture from a file, its colours as red, green, blue."""

    def __init__(self, path):
        self._take(GdkPixbuf.Pixbuf.new_from_file(path))

    @classmethod
    def of(cls, pixbuf):
        picture = cls.__new__(cls)
        picture._take(pixbuf)
        return picture

    def _take(self, picture):
        self._pixbuf = picture
        self.size = picture.get_width(), picture.get_height()
        self._data = picture.get_pixels()
        self._line, self._count = picture.get_rowstride(), picture.get_n_channels()

    def colour(self, x, y):
        at = y * self._line + x * self._count
        return tuple(self._data[at:at + 3])

    def part(self, x, y, width, height):
        return Picture.of(self._pixbuf.new_subpixbuf(x, y, width, height).copy())

    def stretched(self, factor):
        """As what is drawn without regard to the screen's scale gets onto it."""
        return Picture.of(self._pixbuf.scale_simple(
            *(round(factor * side) for side in self.size), GdkPixbuf.InterpType.BILINEAR))

    def save(self, path):
        self._pixbuf.savev(path, "png", ["compression"], ["9"])

    def sharpness(self):
        """How far two neighbouring points differ at the sharpest of its edges, of all that there is
        between dark and light: near 1 in a drawing in the screen's own points."""
        width, height = self.size
        rows = [[luminance(self.colour(x, y)) for x in range(width)] for y in range(height)]
        steps = sorted(abs(one - next_) for row in rows for one, next_ in zip(row, row[1:]))
        shades = [shade for row in rows for shade in row]
        return steps[-len(steps) // 500] / (max(shades) - min(shades))

    def ground(self):
        """The colour that most of it has."""
        width, height = self.size
        seen = Counter(self.colour(x, y) for y in range(0, height, 2) for x in range(0, width, 2))
        return seen.most_common(1)[0][0]

    def rules(self):
        """How many thin lines are drawn from side to side, such as between the parts of a menu."""
        (width, height), ground = self.size, self.ground()

        def kind(row):
            """Of its middle, which the lines of every desktop cross."""
            drawn = {self.colour(x, row) for x in range(width * 2 // 5, width * 3 // 5)}
            return "letters" if len(drawn) > 1 else "ground" if ground in drawn else "line"
        kinds = [kind for kind, _ in itertools.groupby(map(kind, range(height)))]
        return sum(three == ("ground", "line", "ground") for three in zip(kinds, kinds[1:], kinds[2:]))

    def lines(self):
        """Its lines of letters, from above: where each begins and ends, as parts of the width."""
        (width, height), ground = self.size, self.ground()
        found, run = [], []
        for y in range(height):
            drawn = [x for x in range(4, width - 4) if contrast(self.colour(x, y), ground) > 1.5]
            if drawn and len(drawn) < width / 2:
                run += drawn
            elif run:
                found.append((min(run) / width, max(run) / width))
                run = []
        return found

    def is_drawn(self):
        """Unlike a window that has only been opened."""
        width, height = self.size
        return len({self.colour(x, y) for y in range(height) for x in range(0, width, 3)}) > 8

    def is_like(self, other):
        width, height = self.size
        return self.size == other.size and all(self.colour(x, y) == other.colour(x, y)
                                               for y in range(height) for x in range(width))

    def is_made_of_blocks(self, side):
        """Whether it is a smaller picture, each of its points repeated."""
        width, height = (length - length % side for length in self.size)
        return all(self.colour(x, y) == self.colour(x - x % side, y - y % side)
                   for y in range(height) for x in range(width))


def luminance(colour):
    """As WCAG has it."""
    def linear(part):
        return part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4
    red, green, blue = (linear(part / 255) for part in colour)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    """From 1, the same, to 21, black on white."""
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


def on_screen(desktop, x, y, width, height):
    path = os.path.join(desktop.session.folder, "pixels.png")
    desktop.session.picture(path)
    return Picture(path).part(x, y, width, height)


def colours(desktop, x, y, width, height):
    """The colours in a rectangle of the screen, each with how often it is there."""
    picture = on_screen(desktop, x, y, width, height)
    found = {}
    for row in range(picture.size[1]):
        for column in range(picture.size[0]):
            colour = picture.colour(column, row)
            found[colour] = found.get(colour, 0) + 1
    return found
