"""What is on the screen, point by point."""

import os

import gi

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf  # noqa: E402


def size(path):
    """A picture's width and height."""
    picture = GdkPixbuf.Pixbuf.new_from_file(path)
    return picture.get_width(), picture.get_height()


def pixel(path, x, y):
    """The colour of one point of a picture, as red, green, blue."""
    picture = GdkPixbuf.Pixbuf.new_from_file(path)
    at = y * picture.get_rowstride() + x * picture.get_n_channels()
    return tuple(picture.get_pixels()[at:at + 3])


def colours(desktop, x, y, width, height):
    """The colours in a rectangle of the screen, each with how often it is there."""
    path = os.path.join(desktop.session.folder, "pixels.png")
    desktop.session.run(["scrot", "-o", "-a", f"{x},{y},{width},{height}", path])
    picture = GdkPixbuf.Pixbuf.new_from_file(path)
    data, count, line = picture.get_pixels(), picture.get_n_channels(), picture.get_rowstride()
    found = {}
    for row in range(picture.get_height()):
        for column in range(picture.get_width()):
            at = row * line + column * count
            colour = data[at:at + 3]
            found[colour] = found.get(colour, 0) + 1
    return found
