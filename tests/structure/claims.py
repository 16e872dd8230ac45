"""The absolute sentences of the pages for users and developers, and the tests that show them.

`claims.txt` holds, for each page, each of these sentences and below it, indented, the tests. A line in
parentheses says instead why a sentence claims nothing that Tavin does.
"""
import re

ABSOLUTE = re.compile(r"\b(never|nothing|none|nobody|no|any|anything|anybody|always|only|each(?! other)|every|"
                      r"everything|all|neither|cannot|alone|at most|whatever)\b", re.IGNORECASE)
CODE = re.compile(r"```.*?```|^    .*?$", re.MULTILINE | re.DOTALL)
# Between two of them an empty line, or what begins a line of a list or a table.
BLOCK = re.compile(r"\n\s*\n|\n(?=[|#]|- |\d+\. )")
RULE = re.compile(r"\|[-|]+\|")


def sentences(page):
    """In their order: those of the text and of lists, and the cells of tables."""
    for block in BLOCK.split(CODE.sub("", page)):
        text = " ".join(block.split())
        if text.startswith("#") or RULE.fullmatch(text):
            continue
        cells = text.strip("|").split(" | ") if text.startswith("|") else [re.sub(r"^(- |\d+\. )", "", text)]
        for cell in cells:
            yield from (part.strip() for part in re.split(r"(?<=[.!?;])\s+", cell))


def is_absolute(sentence):
    """By its words; a name in code is none."""
    return ABSOLUTE.search(re.sub(r"`[^`]*`", "", sentence)) is not None


def absolute(page):
    return list(dict.fromkeys(filter(is_absolute, sentences(page))))


def read(table):
    """{page: {sentence: its lines}}."""
    claims = {}
    for line in table.splitlines():
        if line.startswith("== "):
            page = claims.setdefault(line[3:], {})
        elif line.startswith("    "):
            lines.append(line.strip())
        elif line:
            lines = page.setdefault(line, [])
    return claims


def tests_in(path, source):
    """The names by which the table knows the tests of a file."""
    if path.endswith(".cpp"):
        found = re.findall(r"^TEST(?:_[FP])?\(\s*(\w+),\s*(\w+)\)", source, re.MULTILINE)
        return {f"{suite}.{name}" for suite, name in found}
    return {f"{path} {name}" for name in re.findall(r"^ *(?:async )?def (test_\w+)", source, re.MULTILINE)}


def is_reason(line):
    return line.startswith("(") and line.endswith(")")
