"""Tavin's windows for eyes that need more than the usual. A test file imports these and gives the
fixture `photograph`: given "usual", "high contrast" or "large letters", it sets the desktop's look,
shows an alert and returns its picture."""

from pixels import contrast


def text_contrast(picture):
    """That of the clearest text to the ground beside it."""
    width, height = picture.size
    ground = picture.colour(4, 20)
    return max(contrast(ground, picture.colour(x, y))
               for y in range(height) for x in range(4, width - 4))


def lines_high(picture):
    """How many rows the highest piece of text has."""
    width, height = picture.size
    ground = picture.colour(4, 20)
    highest = rows = 0
    for y in range(8, height - 8):
        drawn = any(contrast(ground, picture.colour(x, y)) > 2 for x in range(8, width // 2))
        rows = rows + 1 if drawn else 0
        highest = max(highest, rows)
    return highest


def test_a_theme_of_high_contrast_is_followed(photograph):
    high = photograph("high contrast")
    assert high.colour(4, 20) in ((0, 0, 0), (255, 255, 255))
    assert text_contrast(high) > text_contrast(photograph("usual"))


def test_a_window_grows_with_large_letters(photograph):
    usual, large = photograph("usual"), photograph("large letters")
    assert lines_high(large) > 1.5 * lines_high(usual)
    assert large.size[1] > 1.4 * usual.size[1]
    assert large.size[0] >= usual.size[0]
