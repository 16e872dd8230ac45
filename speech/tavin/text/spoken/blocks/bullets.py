"""An item of a list is a sentence; its bullet is not said, and whether it is ticked is."""

import re

from tavin.text.spoken.marks import PARAGRAPH

# A minus before a number may be one, but for where it is so much or so many of something.
AMOUNT = r"\d{1,4}(?:[.,/–-]\d{1,4})?(?: \d/\d)? ?[½⅓⅔¼¾⅛]?"
BULLET = re.compile(
    r"\s*(?:[•‣▪▫◦●○■□◆◇⁃∙·►▶➤➢✦❖]\s*(?=\S)|\*[\t ]+(?=\S)|[-+–][\t ]+(?=[^\s\d½⅓⅔¼¾⅛]"
    rf"|(?:{AMOUNT}|[½⅓⅔¼¾⅛]) *(?:[^\W\d_]{{2}}|[^\W\d_] [^\W\d_])))"
)
BOX = re.compile(r"\[([ xX])\] +")


def say(line, words):
    bullet = BULLET.match(line)
    if not bullet:
        return line
    item = line[bullet.end() :]
    if words.done and (box := BOX.match(item)):
        item = f"{words.open if box[1] == ' ' else words.done} {item[box.end() :]}"
    return PARAGRAPH + item
