"""The numbers of notes and sources in a text are not said; they stand behind a stop and would keep it from ending the
sentence."""

import re

NUMBERS = r"\[[1-9]\d{0,2}(?:[ ,;–-]{1,2}\d{1,3}){0,20}\]"
# In no subscript, list or option: those are read.
CLOSE = re.compile(
    rf"(?:(?<=\w\w)|(?<=[^(]\))|(?<=[^\s\[\]][.,;!?\"”»’'…%])|(?<=[\w)]:)|(?<=[\w.,;:!?)]\*\*))"
    rf"(?:(?:{NUMBERS}|\[[a-h]\])(?:[–-](?=\[\d))?)+(?!\(|\w|\.\w|\[\d| ?=)"
)
SERIES = re.compile(rf"({NUMBERS})(?:, ?{NUMBERS})+")
NOTED = re.compile(r"[^\W\d_]|[.!?]")  # what a note stands right behind
CLAUSE_END = re.compile(r"[.,;:)!?\"”»]|\s*$")
APART = re.compile(rf"(?<=[\w\"”»’')%]) (?:{NUMBERS})+(?=[.;)]|,(?! ?\[\d)|$)")
MISSING = re.compile(r" ?\[(?:citation needed|réf\. (?:nécessaire|souhaitée)|cita requerida|Beleg fehlt)\]")
NAME = re.compile(r"[._\d]|[a-z][A-Z]")  # of a program's variable
WORD = re.compile(r"[\w.]*\w$")
LONGEST_WORD = 40
ROWS = frozenset("arr array list matrix vector args argv Liste liste lista".split())
NEED_ONE = ROWS | frozenset(  # they would say nothing without what is in the brackets
    "in by of see also and or is are was from to with than range interval option step press item"
    " reference references algorithm equation figure table section page line chapter theorem rule note version"
    " von bei nach siehe auch und oder ist sind aus mit laut dans par de voir aussi et ou est selon"
    " en por ver véase también es según".split()
)
# After a word, not after a unit or a letter, which they square.
RAISED = re.compile(r"(?:(?<=[^\W\d_]{3})|(?<=[.,;:!?)\"”»’']))[¹²³⁰⁴-⁹]{1,3}(?![\w⁻⁺])")
DAGGER = re.compile(r"(?<=[\w.,;:!?)\"”])[†‡]+")


def say(line, _words):
    if "[" in line:
        line = SERIES.sub(series, MISSING.sub("", line))
        line = APART.sub(apart, CLOSE.sub(close, line))
    return DAGGER.sub("", RAISED.sub("", line))


def series(found):
    """What stands behind a word, as one: "[12], [13]"; but not "options [1], [2] or [3]"."""
    before = found.string[max(0, found.start() - 2) : found.start()]
    apart = before.endswith(" ") and before[:-1].isalnum() and CLAUSE_END.match(found.string, found.end())
    return found[1] if apart or NOTED.match(before[-1:]) else found[0]


def close(found):
    word = word_before(found)
    is_row = word in ROWS or NAME.search(word) and not word.isdigit() or word and found.string.count(f"{word}[") > 1
    return found[0] if is_row else ""


def apart(found):
    word = word_before(found).lower()
    return found[0] if word in NEED_ONE or word.isdigit() and not found.string.endswith("-", 0, found.start() - len(word)) else ""


def word_before(found):
    word = WORD.search(found.string, max(0, found.start() - LONGEST_WORD), found.start())
    return word[0] if word else ""
