"""The user's own rules: words and patterns of a file."""

import os
import re
import textwrap
import time

import pytest
from engine_process import FOLDER
from tavin.log import log
from tavin.text.spoken import pronunciation
from tavin.text.spoken.pronunciation import Pronunciation
from tavin.text.spoken.say import say


@pytest.fixture
def write(tmp_path):
    path = tmp_path / "pronunciation.toml"
    times = iter(range(1, 100))

    def write(content):
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        os.utime(path, (0, next(times)))  # two changes may come in one tick of the file system's clock
        return path

    return write


def said(path, sentence, language="en-us"):
    own = Pronunciation(path)
    assert own.look() is None
    return own.say(sentence, language)


RULES = """
tavin = "tah vin"
GNU = "g'noo"
"C#" = "see sharp"
"naïve" = ""

[en]
SQL = "sequel"
"/v(\\\\d+)/" = "version $1"
'/\\bpg(?=\\d)/' = "page "

[de]
SQL = "Es Ku El"

["en_GB"]
tavin = "tavvin"

[es]
"New York" = "Nueva York"
new = "nuevo"
"don't" = "no"
"café" = "un café"
"µm" = "micras"
istanbul = "Estambul"
"""


@pytest.mark.parametrize(
    "written, language, spoken",
    [
        ("Tavin reads.", "en-us", "tah vin reads."),
        ("TAVIN and tavin, not tavinX.", "fr", "tah vin and tah vin, not tavinX."),
        ("Tavin reads.", "en-gb", "tavvin reads."),
        ("GNU, but gnu and Gnu.", "en-us", "g'noo, but gnu and Gnu."),
        ("I like C# and MySQL.", "en-us", "I like see sharp and MySQL."),
        ("SQL", "en-us", "sequel"),
        ("SQL", "de", "Es Ku El"),
        ("SQL", "fr", "SQL"),
        ("Use v12 on pg5.", "en-us", "Use version 12 on page 5."),
        ("Use v12.", "de", "Use v12."),
        ("a naïve man", "en-us", "a  man"),
        ("New York, new york", "es", "Nueva York, nuevo york"),
        ("I don’t, don't", "es", "I no, no"),
        ("5 μm, 5 µm", "es", "5 micras, 5 micras"),
        ("İstanbul, Istanbul", "es", "İstanbul, Estambul"),
        ("café and café", "es", "un café and un café"),
    ],
)
def test_a_rule_holds_for_its_language(write, written, language, spoken):
    assert said(write(RULES), written, language) == spoken


def test_they_come_before_those_for_numbers_signs_and_abbreviations(write):
    own = Pronunciation(write('SQL = "sequel"\n"etc." = "and the rest"\n'))
    own.look()
    assert say("SQL etc. costs $5.", "en-us", own.say) == "sequel and the rest costs 5 dollars."


def test_without_a_file_nothing_changes(tmp_path):
    assert said(tmp_path / "pronunciation.toml", "SQL") == "SQL"


def test_a_change_is_seen(write):
    path = write('one = "first"')
    own = Pronunciation(path)
    own.look()
    assert own.say("one two", "en") == "first two"
    write('two = "second"')
    assert own.say("one two", "en") == "first two"
    assert own.look() is None
    assert own.say("one two", "en") == "one second"
    path.unlink()
    own.look()
    assert own.say("one two", "en") == "one two"


@pytest.mark.parametrize(
    "line, told",
    [
        ("what is this", "line 2 is left out"),
        ('b = "unfinished', "line 2 is left out"),
        ("b = 5", "line 2: what is spoken must be a text"),
        ('"/(/" = "x"', "line 2: this is no pattern"),
        ('"/x/" = "$1"', "line 2: the pattern has no such group"),
        ('"" = "x"', "line 2: a word has 1 to 200 characters"),
        (f'b = "{"x" * 201}"', "line 2: a word has 1 to 200 characters"),
        ('a = "twice"', "line 2 is left out"),
        ('[english]\nb = "c"\n[en]', "line 3: “english” is no language"),
    ],
)
def test_a_faulty_line_is_told_once_and_left_out(write, line, told):
    own = Pronunciation(write(f'a = "alpha"\n{line}\nz = "omega"\n'))
    assert told in own.look()
    assert own.look() is None
    assert own.say("a b z", "en") == "alpha b omega"


def test_as_many_faulty_lines_as_a_file_may_hold_are_told_soon(write):
    own = Pronunciation(write("\n".join(f"b{number} = 5" for number in range(40_000))))
    begin = time.thread_time()
    assert "39990 more" in own.look()
    assert time.thread_time() - begin < 2


@pytest.mark.parametrize(
    "lines, told",
    [
        ([f'a{number} = "b"' for number in range(2001)], "more than 2000 words or 100 patterns"),
        ([f'"/a{number}/" = "b"' for number in range(101)], "more than 2000 words or 100 patterns"),
        (["#" * 1_100_000], "cannot be read"),
    ],
)
def test_more_than_it_may_hold_is_told_and_nothing_of_it_holds(write, lines, told):
    own = Pronunciation(write("\n".join(['a = "alpha"', *lines])))
    assert told in own.look()
    assert own.say("a", "en") == "a"


def test_a_pattern_that_takes_long_is_told_in_the_log_once_and_left_out(write, caplog, monkeypatch):
    own = Pronunciation(write('"/z/" = "zed"\n'))
    own.look()
    assert own.say("z", "en") == "zed"
    monkeypatch.setattr(pronunciation, "SLOW", 0.0)  # as if this took long
    with caplog.at_level("INFO", logger=log.name):
        own.say("z", "en")
        assert own.say("z", "en") == own.say("z", "en") == "z"
    assert caplog.text.count("takes too long") == 1


def test_what_marks_the_order_of_its_bytes_is_no_fault(write):
    assert said(write('\ufeffa = "alpha"\n'), "a b") == "alpha b"


def test_the_last_line_may_be_the_faulty_one(write):
    for end in ("", "\n"):
        own = Pronunciation(write(f'a = "alpha"\nwhat{end}'))
        assert "line 2 is left out" in own.look()
        assert own.say("a", "en") == "alpha"


@pytest.mark.parametrize("count, said", [(10, "alpha"), (11, "a")])
def test_up_to_ten_lines_that_are_no_toml_are_left_out_and_with_more_nothing_holds(write, count, said):
    own = Pronunciation(write('a = "alpha"\n' + "what\n" * count))
    assert ("this is no TOML" in own.look()) == (said == "a")
    assert own.say("a", "en") == said


NO_TOML = [b"\xff\xfe", b"=" * 5000, b"a = [" * 3000, b"=\n" * 3000, b'a = """\n' * 2000, b"\x00"]


@pytest.mark.parametrize("content", NO_TOML)
def test_a_file_that_is_no_toml_is_told(write, content):
    own = Pronunciation(write(content))
    told = own.look()
    assert told and len(told) < 2000
    assert own.say("a b", "en") == "a b"


def test_a_folder_or_a_pipe_in_its_place_is_told(tmp_path):
    (tmp_path / "folder").mkdir()
    os.mkfifo(tmp_path / "pipe")
    for name in ("folder", "pipe"):
        assert "cannot be read" in Pronunciation(tmp_path / name).look()


@pytest.mark.parametrize("pattern", ["(a+)+$", "(a|aa)+$", "(.*)*x", "((a{1,100}){1,100}){1,100}$", "(?=(a+))a*b\\\\1"])
def test_a_hostile_pattern_does_not_hold_up_the_engine(write, pattern):
    own = Pronunciation(write(f'"/{pattern}/" = "x"\nword = "spoken"\n'))
    own.look()
    sentence = "a" * 4000 + "! word"
    begin = time.thread_time()
    for _ in range(100):
        assert "spoken" in own.say(sentence, "en")
    assert time.thread_time() - begin < 1


def test_a_rule_does_not_make_a_text_endless(write):
    own = Pronunciation(write(f'"/x?/" = "{"long " * 40}"\n'))
    own.look()
    assert own.say("y" * 2000, "en") == "y" * 2000


def test_many_rules_take_no_time(write):
    own = Pronunciation(write("".join(f'word{number} = "spoken {number}"\n' for number in range(2000))))
    assert own.look() is None
    begin = time.thread_time()
    assert own.say("word1999 " * 100, "en") == "spoken 1999 " * 100
    assert time.thread_time() - begin < 0.5


def test_the_example_that_users_read_is_right(write):
    page = (FOLDER.parent / "docs" / "using.md").read_text("utf-8").partition("## How words are pronounced")[2]
    path = write(textwrap.dedent(re.search(r"(?:^ {4}.*\n|^\n)+", page.partition("next text on.")[2], re.MULTILINE)[0]))
    assert said(path, "Tavin: C#, SQL v2.") == "tah vin: see sharp, sequel version 2."
    assert said(path, "SQL v2", "de") == "Es Ku El v2"
