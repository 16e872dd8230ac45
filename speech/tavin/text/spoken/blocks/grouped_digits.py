"""A number's groups that a narrow or a hard blank parts are one number. Others may be several."""

import re

GROUPED = re.compile(r"(?<=\d)[\u00a0\u2009\u202f](?=\d{3}(?!\d))")


def say(line, _words):
    return GROUPED.sub("", line)
