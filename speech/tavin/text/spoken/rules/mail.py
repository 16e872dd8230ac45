"""A mail address is said with its signs."""

import re

ADDRESS = re.compile(r"(?<![\w.+%-])([\w.+%-]{1,64})@((?:[\w-]{1,63}\.){1,6}[^\W\d_]{2,24})(?![\w-])")


def say(sentence, words):
    return ADDRESS.sub(lambda address: spoken(address, words), sentence) if "@" in sentence else sentence


def spoken(address, words):
    name = address[1].replace("_", words.underscore).replace("-", words.dash).replace(".", words.dot)
    return name + words.at + address[2].replace(".", words.dot)
