"""The user's own rules, from a file that is read anew when it was changed.

A line that is wrong is told and left out, the others hold. A pattern is ICU's, because that can be
given a time; one that takes long is left out from then on.
"""

import re
import time
import tomllib
import unicodedata

import icu

from tavin.log import log
from tavin.settings import content_of, default_path
from tavin.text.spoken.bounds import GROWTH, size
from tavin.text.spoken.patterns import any_of

NAME = "pronunciation.toml"
LONGEST = 200  # code points of each side of a rule
MOST_RULES = 2000
MOST_PATTERNS = 100
MOST_FAULTS = 10
SPARE = 1000  # bytes that a sentence may grow by in any case
TIME_LIMIT = 20  # ICU's unit; a few milliseconds
SLOW = 0.002  # seconds of processor time for a sentence; the limit is up after 3 ms on a slow machine
PLACE = re.compile(r"\(at line (\d+),")
LANGUAGE = re.compile(r"[a-z]{2,3}(?:-[a-z0-9]{2,8})*")
GROUP = re.compile(r"(?<!\\)\$(\d+)")
EVERYWHERE = ""


class Fault(Exception):
    """Why a rule cannot be followed."""


class Pronunciation:
    def __init__(self, path=None):
        self._path = path or default_path().with_name(NAME)
        self._seen = None
        self._rules = {}  # by language

    def look(self):
        """Read the file if it was changed. Gives what is wrong with it, once; mostly None."""
        seen = stamp(self._path)
        if seen == self._seen:
            return None
        self._seen, self._rules = seen, {}
        if not seen:
            return None
        try:
            self._rules, faults = rules_of(content_of(self._path).decode("utf-8-sig"))
        except (OSError, UnicodeDecodeError) as failure:
            faults = [f"it cannot be read ({getattr(failure, 'strerror', None) or 'it is no UTF-8'})"]
        return f"{NAME}: {'; '.join(faults)}." if faults else None

    def say(self, sentence, language):
        if not self._rules:
            return sentence
        said = composed(sentence)
        for name in dict.fromkeys((language, language.split("-")[0], EVERYWHERE)):
            for rule in self._rules.get(name, ()):
                said = rule.say(said)
        return said if size(said) <= GROWTH * size(sentence) + SPARE else sentence


def composed(text):
    """Letters with their marks in one, as most texts have them."""
    return unicodedata.normalize("NFC", text)


class Words:
    """Whole words. One in small letters is found however it is written."""

    def __init__(self, spoken):
        self._spoken = {word.replace("’", "'"): said for word, said in spoken.items()}
        small = [word for word in self._spoken if word == word.lower()]
        self._small = {word.casefold(): self._spoken[word] for word in small}
        exact = f"{any_of(self._spoken)}|(?i:{any_of(small)})".replace("'", "['’]")
        self._known = re.compile(rf"(?<!\w)(?:{exact})(?!\w)")

    def say(self, sentence):
        return self._known.sub(self._said, sentence)

    def _said(self, found):
        word = found[0].replace("’", "'")
        if word in self._spoken:
            return self._spoken[word]
        return self._small.get(word.casefold(), found[0])


class Pattern:
    def __init__(self, pattern, spoken):
        try:
            self._pattern = icu.RegexPattern.compile(pattern, 0)
        except icu.ICUError:
            raise Fault("this is no pattern") from None
        groups = self._pattern.matcher(icu.UnicodeString("")).groupCount()
        if any(int(group) > groups for group in GROUP.findall(spoken)):
            raise Fault("the pattern has no such group")
        self._spoken = icu.UnicodeString(spoken)
        self._is_slow = False

    def say(self, sentence):
        if self._is_slow:
            return sentence
        begin = time.thread_time()
        matcher = self._pattern.matcher(icu.UnicodeString(sentence))
        matcher.setTimeLimit(TIME_LIMIT)
        try:
            said = str(matcher.replaceAll(self._spoken))
        except icu.ICUError:
            said = sentence
        if time.thread_time() - begin > SLOW:
            self._is_slow = True
            log.info("%s: a pattern takes too long and is left out", NAME)
        return said


def stamp(path):
    """Changes with the file; None without one."""
    try:
        state = path.stat()
    except OSError:
        return None
    return state.st_mtime_ns, state.st_size, state.st_ino


def rules_of(content):
    """By language: its rules. And what is wrong, each with its line."""
    found, faults = parsed(content.splitlines())
    words, patterns = {}, {}
    for language, word, spoken in entries(found):
        try:
            check(language, word, spoken)
            if is_pattern(word):
                patterns.setdefault(language, []).append(Pattern(word[1:-1], spoken))
            else:
                words.setdefault(language, {})[word] = spoken
        except Fault as fault:
            faults.append((word, fault))
    if sum(map(len, words.values())) > MOST_RULES or sum(map(len, patterns.values())) > MOST_PATTERNS:
        return {}, [f"more than {MOST_RULES} words or {MOST_PATTERNS} patterns"]
    rules = {name: [Words(words[name])] if name in words else [] for name in {**words, **patterns}}
    return {name: rules[name] + patterns.get(name, []) for name in rules}, told(faults, content)


def told(faults, content):
    """The first of them, each with its line."""
    first = [
        fault if isinstance(fault, str) else f"line {line_of(fault[0], content)}: {fault[1]}"
        for fault in faults[:MOST_FAULTS]
    ]
    return [*first, f"{len(faults) - MOST_FAULTS} more"] if len(faults) > MOST_FAULTS else first


def parsed(lines):
    """What TOML makes of the lines, without those that it takes for wrong."""
    faults = []
    while True:
        try:
            return tomllib.loads("\n".join(lines) + "\n"), faults
        except (tomllib.TOMLDecodeError, RecursionError) as failure:
            place = PLACE.search(str(failure))
            if not place or len(faults) >= MOST_FAULTS:
                return {}, ["this is no TOML", *faults]
            number = min(int(place[1]), len(lines))
            faults.append(f"line {number} is left out, it is no “word = \"spoken\"”")
            if not lines[number - 1]:
                return {}, ["this is no TOML", *faults]
            lines[number - 1] = ""


def entries(found):
    for name, value in found.items():
        if isinstance(value, dict):
            language = name.lower().replace("_", "-")
            yield from ((language, composed(word), spoken) for word, spoken in value.items())
        else:
            yield EVERYWHERE, composed(name), value


def check(language, word, spoken):
    if language and not LANGUAGE.fullmatch(language):
        raise Fault(f"“{language}” is no language such as “en” or “en-GB”")
    if not isinstance(spoken, str):
        raise Fault("what is spoken must be a text in quotation marks")
    if not word.strip() or max(len(word), len(spoken)) > LONGEST:
        raise Fault(f"a word has 1 to {LONGEST} characters")


def is_pattern(word):
    return len(word) > 2 and word[0] == word[-1] == "/"


def line_of(word, content):
    """Where the rule stands, about: TOML does not say."""
    either = "|".join(map(re.escape, (word, word.replace("\\", "\\\\"))))
    rule = re.compile(rf"[ \t]*[\"']?(?:{either})[\"']?[ \t]*=")
    return next((number for number, line in enumerate(content.splitlines(), 1) if rule.match(line)), "?")
