"""Code within a line is read as words."""

import re

from tavin.text.spoken.rules.code import in_words

CODE = re.compile(r"(?<![\w`])(`{1,2})(?!`)([^`\n]+)\1(?![^\W\d_]{2}|`)")


def say(line, words):
    return CODE.sub(lambda code: said(code[2], words), line) if "`" in line else line


def said(code, words):
    """An address is none."""
    return code if "://" in code else in_words(code, words)
