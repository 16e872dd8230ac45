"""A name of several words, as programs have them, is its words."""

import re

SNAKE = re.compile(r"(?<=[^\W_])_+(?=[^\W_])")
CALL = re.compile(r"(?<=[a-z_\d])\(\)")


def say(sentence, _words):
    return CALL.sub("", SNAKE.sub(" ", sentence)) if "_" in sentence or "()" in sentence else sentence
