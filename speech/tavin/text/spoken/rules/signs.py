"""Signs of mathematics, chemistry and law by their names, where they stand for something."""

import re

SUPERSCRIPT = str.maketrans("⁰¹²³⁴⁵⁶⁷⁸⁹⁻", "0123456789-")
SUBSCRIPT = str.maketrans("₀₁₂₃₄₅₆₇₈₉", "0123456789")
ION = re.compile(r"(?<=[A-Za-z₀-₉\])])([²³⁴-⁹])?([⁺⁻])(?![\w⁰¹²³⁴-⁹⁺⁻])")  # its charge: "Ca²⁺"
POWER = re.compile(r"(?<=[\w)])([⁻⁰¹²³⁴-⁹]{1,4})(?!\w)")
CARET = re.compile(r"(?<=[\w)])\^(?:\{(-?\w[\w+-]{0,20})\}|(-?\d{1,4}|[a-z])(?![\w{]))")
FORMULA = re.compile(r"\b(?:[A-Z][a-z]?[₀-₉]{0,3}){1,12}(?![^\W_])")
ELEMENT = re.compile(r"[A-Z][a-z]?|\d+")
BETWEEN = re.compile(
    r"(?<![^\s(])(!=|<=|>=|[=≠≈≤≥<>×÷±→⇒←∈↔&§+*~])(?![^\s])(?!(?<=\*) (?:FROM|from)\b)"
    r"|(?<=[\w)])[ ]?([=≠×÷±]|(?<! )[≈≤≥]|[≈≤≥](?!\d))[ ]?(?=[\w(−√-])|"
    r"(?<=\d)([+*])(?=\d)|(?<=[A-Z])(&)(?=[A-Z])"
)
BEFORE = re.compile(r"(?<!\w)([≈≤≥<>±√∞~∑]|<=|>=)(?= ?[\d(])|(§§?)(?= ?\d)")
ALONE = re.compile(r"([∞‰π✓✔✗✘☐☑∑])|(?<=[\w)] )(→)|(?<=\d)(°)(?![\w])")
MINUS = re.compile(r"(?<![^\s(=≈<>≤≥×÷])[-−–](?=\d)|(?<=\d) ?− ?(?=\d)| − (?=[\d(]|[a-z]\b)")
HASH = re.compile(r"(?<![^\s(])#(?=[A-Z]{0,4}-?\d)(?![0-9A-F]{6}\b|[0-9A-F]{3}\b(?<=[A-F].)|\d+[A-Fa-f])")
TAG = re.compile(r"(?<![\w&])#(?=[^\W\d])(?!(?:[0-9a-fA-F]{3}){1,2}\b)(?![A-Z]{1,4}-?\d)")
SIZE = re.compile(r"(?<![\w.,])(\d{3,5})[×x](\d{3,5})(?![\w.,]*\d)")  # of a picture
PERCENT = re.compile(r"(?<=\d) ?%(?!\w)")


def say(sentence, words):
    if words.signs:
        sentence = ION.sub(lambda found: charged(found, words), sentence)
    sentence = FORMULA.sub(formula, sentence)
    if not words.signs:
        return sentence
    sentence = SIZE.sub(rf"\1 {words.by or words.signs['×']} \2", sentence)
    for pattern in (POWER, CARET):
        sentence = pattern.sub(lambda found: power(found[found.lastindex], words), sentence)
    sentence = MINUS.sub(lambda found: f"{blank_before(found)}{words.minus} ", sentence)
    for pattern in (BETWEEN, BEFORE, ALONE):
        sentence = pattern.sub(lambda found: f"{blank_before(found)}{named(found, words)}{blank_after(found)}", sentence)
    sentence = HASH.sub(f"{words.number} ", TAG.sub(f"{words.hashtag} ", sentence))
    sentence = PERCENT.sub(f" {words.signs['%']}", sentence)
    return re.sub(r" {2,}", " ", sentence).strip(" ")


def named(found, words):
    """What stands before a number alone is no verb: "took <10 ms", "(≈ 20 ms)"."""
    name = words.signs[found[0].strip()]
    return name.removeprefix("is ") if found.re is BEFORE or not blank_before(found) else name


def blank_before(found):
    return "" if found.string[: found.start()].endswith("(") else " "


def blank_after(found):
    """None before the sentence's own signs."""
    return "" if found.string[found.end() : found.end() + 1] in ".,;:!?)" else " "


def formula(found):
    """Its letters are said one by one, but only where a figure shows that it is one."""
    if not re.search(r"[₀-₉]", found[0]):
        return found[0]
    return " ".join(ELEMENT.findall(found[0].translate(SUBSCRIPT)))


def charged(found, words):
    size = f" {found[1].translate(SUPERSCRIPT)}" if found[1] else ""
    return f"{size} {words.signs['+'] if found[2] == '⁺' else words.minus}"


def power(exponent, words):
    exponent = exponent.translate(SUPERSCRIPT)
    named = {"2": words.squared, "3": words.cubed}.get(exponent)
    minus = re.sub(r"^-", f"{words.minus} ", exponent)
    return f" {named}" if named else f" {words.power} {minus}"
