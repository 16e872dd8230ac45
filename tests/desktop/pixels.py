"""What is on the screen, point by point."""

import os

import gi

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf  # noqa: E402


class Picture:
    """A picture from a file, its colours as red, green, blue."""

    def __init__(self, path):
        picture = GdkPixbuf.Pixbuf.new_from_file(path)
        self.size = picture.get_width(), picture.get_height()
        self._data = picture.get_pixels()
        self._line, self._count = picture.get_rowstride(), picture.get_n_channels()

    def colour(self, x, y):
        at = y * self._line + x * self._count
        return tuple(self._data[at:at + 3])


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
    desktop.session.run(["scrot", "-o", "-a", f"{x},{y},{width},{height}", path])
    return Picture(path)


def colours(desktop, x, y, width, height):
    """The colours in a rectangle of the screen, each with how often it is there."""
    picture = on_screen(desktop, x, y, width, height)
    found = {}
    for row in range(picture.size[1]):
        for column in range(picture.size[0]):
            colour = picture.colour(column, row)
            found[colour] = found.get(colour, 0) + 1
    return found
