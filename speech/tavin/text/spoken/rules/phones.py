"""A telephone number: figure by figure, in its groups."""

import re

NUMBER = re.compile(
    r"(?<![\w.,/+-])(?<!\d )(?:"
    r"(?:\+|00)[1-9]\d{0,2}[ ./-]?(?:\(0\)[ ]?)?(?:\(?\d{1,5}\)?[ ./-]?){1,6}\d{2,}"  # of another country
    r"|\(0 ?\d{2,4}\) \d\d(?:[ -]\d{2,3}){1,4}"
    r"|\(\d{2,5}\) ?\d{3,4}[ -]?\d{3,4}|(?:1-)?\d{3}-\d{3}-\d{4}|\d{3}\.\d{3}\.\d{4}|0\d{2,4} \d{3,4} \d{4}|0\d(?:\.\d\d){4}"
    r"|0\d{2,4} \d{5,9}|0\d{2,5}[ ]?[/-][ ]?\d{3,9}(?:[ -]\d{1,6}){0,3})(?![\w-]|[.,]\d)"
)
EXTENSION = re.compile(r"\b(Fax|DW|Durchwahl|Telefon|Tel\.)(:? ?)-(?=\d{1,4}\b)")  # in the same house: "Fax: -57"
GROUPS = re.compile(r"\d+")
LONGEST = 20
FEWEST = 7


def say(sentence, words):
    return EXTENSION.sub(r"\1\2", NUMBER.sub(lambda number: spoken(number[0], words), sentence))


def spoken(number, words):
    groups = GROUPS.findall(number.replace("(0)", ""))
    if not FEWEST <= sum(map(len, groups)) <= LONGEST:
        return number
    plus = f"{words.signs['+']} " if words.signs else "+"
    return (plus if number[0] == "+" else "") + ", ".join(group if in_pairs(group, words) else " ".join(group) for group in groups)


def in_pairs(group, words):
    """As the French say them."""
    return words.language == "fr" and len(group) == 2
