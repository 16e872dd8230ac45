"""How much longer than what is written may be what is said."""

GROWTH = 10  # times, in bytes


def fits(said, written):
    return size(said) <= GROWTH * size(written.strip())


def size(text):
    return len(text.encode(errors="replace"))
