"""Code in words: operators by their names, `snake_case` and `camelCase` parted, brackets silent."""

import re

from tavin.text.spoken.bounds import fits

# But for an apostrophe: "don't", not "f'text'".
SILENT = re.compile(r"(?:(?!(?<=[^\W\d_])(?<!\b[bfruBFRU])'(?=[^\W\d_]))[(){}\[\];\"'`])+")
PROMPT = r"^\s*\$ (?=\w)"  # of a shell
COMMENT = re.compile(PROMPT + r"|^\s*(?://+|#+!?|/\*+|\*+/|\*+|--)\s*|\s*\*/\s*$|(?<=\s)(?:#|//)(?=\s)")
HUMP = re.compile(r"(?<=[a-zß-öø-ÿ])(?=[A-ZÀ-Þ])")
POINT = re.compile(r"(?<=\w)\.(?=[^\W\d])|(?<![\w.])\.(?=[^\W\d])")
OPERATOR = re.compile(r"[=!]==?|[<>]=|[-=]>|&&|\|\||[-+]=|::|--(?=\w)|(?<!\w)-(?=\s|$)|[=<>+*%/&|!@$\\^~]")
BLANKS = re.compile(r"\s+")


def in_words(code, words):
    written = SILENT.sub(" ", COMMENT.sub("", code))
    code = OPERATOR.sub(lambda sign: spaced(words.operators.get(sign[0], sign[0])), written)
    code = POINT.sub(spaced(words.dot.strip()) if words.dot != "." else ".", code)
    code = HUMP.sub(" ", code).replace("_", " ")
    said = BLANKS.sub(" ", code).strip()
    return said if fits(said, written) else written.strip()


def spaced(word):
    return f" {word} "
