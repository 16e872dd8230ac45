"""A number's groups that a narrow or a hard blank parts are one number, and so are those that Indians part by commas.
Others may be several."""

import re

GROUPED = re.compile(r"(?<=\d)[\u00a0\u2009\u202f](?=\d{3}(?!\d))")
LAKHS = re.compile(r"(?<![\w.,])\d{1,2}(?:,\d\d){1,4},\d{3}(?!,?\w)")  # "12,34,567"


def say(line, _words):
    return LAKHS.sub(lambda number: number[0].replace(",", ""), GROUPED.sub("", line))
