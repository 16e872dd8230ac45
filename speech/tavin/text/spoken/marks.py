"""Private characters that carry from the lines to the sentences what was found there. The text itself
has none: `lines.clean` takes them out."""

LINK, LINK_END = "\ue010", "\ue011"
CODE = "\ue012"  # at the beginning of a line of code
PARAGRAPH = "\n\n"
NO_MARKS = str.maketrans("", "", LINK + LINK_END + CODE)


def without_marks(text):
    return text.translate(NO_MARKS)
