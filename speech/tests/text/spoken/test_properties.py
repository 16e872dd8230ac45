"""What holds for every text: no word is lost, nothing grows without bounds, nothing takes long."""

import collections
import itertools
import random
import re
import string
import time

import pytest
from tavin.text.pieces import pieces
from tavin.text.spoken.blocks import leaders
from tavin.text.spoken.blocks.unmarked_pages import PAGE_LENGTH
from tavin.text.spoken.bounds import GROWTH, size
from tavin.text.spoken.say import say
from test_corpus import LANGUAGES, SNIPPETS

PLAIN = "house tree water garden morning window letter people winter story".split()
JOINTS = [" ", " ", " ", "  ", "     ", "\n", "\n\n", ". ", ", ", "? "]
SIGNS = """**x** * ** _ __ ` `` ``` ~~~ # ## > - + • | |a|b| |---|---| --- === *** [1] [ ] [x] ( ) { } < > <b> </b> <br>
<a href="x"> & &amp; &lt; &#13; &#xe010; \\ / // /usr/bin ~/a.b C:\\x http:// https://a.b/c?d=e!
www.x.org a@b.org x@ 😀 😀😀 👍🏽 ❤️ 🇩🇪
$5 $ 5€ -5 −5 5% 5 km 5km/h 5-10 5–10 5:30 5:3 5pm 1/2 ½ 3½ 2026-11-22 1/2/2026 1990s II XIV MMXX x² x^2 10⁻³ H₂O CO2
≤ ≠ → § #5 #tag @me e.g. i.e. etc. Dr. No. 5 J. R. R. snake_case camelCase a() 3f2a9c1d4e5f 123456789012345678 +49 89 123456
"Why?" “so” ‘a’ … — – ' '' z. B. d. h. p. ex. n° 1er 2e 1.º \u00ad \u200d \ufe0f""".split() + ["\t"]
HOSTILE = [
    *("x", "1", "1.", "1,", "1 ", "1 000 ", "a.", "a@", "a@b.", "/a", "/", "\\a", "C:\\a", "[", "[1", "[1]",
      "](", "![", "(", "<a ", "<a b=", "<img alt="),
    *("<", "*", "a*", "_", "a_", "`", "a`", "|", "a|", "http://", "http://a@", "www.", "a.com", "-", "0-",
      "1-", "+49 ", "(1", "I", "X", "M", "I ", "A. "),
    *("😀", "😀a", "👍🏽", "\u200d", "#", "#1", "1:", "1:2", "$1", "1$", "1/2 ", "e.g. ", "z. B. ", "e", "&#",
      "&a", "&amp;", "<!--", "\x0c", "\x0c\n", "1\n"),
    *("$", "$a ", "1$ ", "==a", "a==", "1:00-", "1.1.", "am 1.1.", "a[1]", "Mary I ", "Fr. ", "1. II ", "```{\n", "A* ", "a.A. The "),
    *("a\t", "a  ", "a  b\n", "a  b  c  d\n", "a     1\n", "a  b c\n", "  a\n", "a  b\n---\n", "~", "=", "^1", "⁻²", "aB1+", "a1", "H₂", "½", "1er ", "²", "→", " → ", "km ", "5 km ", "'", "\"",
      "...", "- ", "- a\n", "|a|b|\n", "```\n", "# a\n"),
    *("Parts I, ", "part I–", "wars I and ", "V–V–", "(a + b)²", "(a+", "(a + ", "[nb 1]", "[^1]", "a[nb 1]:1", "1,00,", "$1K-"),
    *("Luke 1:1-", "12 Oak Dr. ", "Mary V. ", "unter Kaiser ", "Ca²⁺", "²⁺", "3 StR 1/20 ", "5 mg/", "1 sq. ", " − "),
]


def said(text, language):
    found = pieces(text, language, 600, say=lambda sentence: say(sentence, language))
    return " ".join(filter(None, found))


def mixed(chance):
    """Plain words and signs in any order, and the words alone."""
    text, words = "", []
    for _ in range(chance.randrange(2, 60)):
        plain = chance.random() < 0.5
        word = chance.choice(PLAIN if plain else SIGNS)
        words += [word] if plain else []
        text += word + (chance.choice(JOINTS) if plain else chance.choice(" \n"))
    return text, words


@pytest.mark.parametrize("language", [*LANGUAGES.values(), "pl", "en-gb"])
@pytest.mark.parametrize("seed", range(10))
def test_no_plain_word_is_lost(language, seed):
    chance = random.Random(f"{language} {seed}")
    for _ in range(25):
        text, words = mixed(chance)
        found = iter(re.findall(r"[^\W\d_]+", said(text, language)))
        assert all(word in found for word in words), text


NAMES = ("@", "@a", "b.org", "x.org/a", ".", "/", "\\")  # of a site, a person or a file
GLUED = """* ** _ ` `` [ ] [1] ( ) { } < > </ | - -- — – : ; , . … / \\ = == + # $ % & &amp; " ' “ ” « » ~ ^ 1 12 2nd ² ½ € 、 。
（ ） ： ！ 5km 5:30 1/2 é ñ 中 の :) @ @a a@b.org x.org/a x.org。 https://x.org/a， https://x.org/a—""".split()


@pytest.mark.parametrize("language", LANGUAGES.values())
def test_no_plain_word_is_lost_behind_a_sign_without_a_blank(language):
    chance = random.Random(language)
    for _ in range(300):
        text, words = "", []
        for number in range(chance.randrange(2, 26)):
            words.append(chance.choice(PLAIN) + string.ascii_lowercase[number] * 2)  # none twice
            text += words[-1] + chance.choice(["", " "]) + chance.choice([*GLUED, " "])
            if text.endswith(NAMES):  # a name goes on up to the next blank
                text += " "
        found = said(text, language)
        places = [found.find(word) for word in words]
        assert places == sorted(places) and -1 not in places, (text, found)



def wrapped(chance):
    """Prose of a page's width with numbers in its lines and between them, most of which count up."""
    lines, number = [], 0
    for _ in range(chance.randrange(40, 120)):
        words = chance.choices(PLAIN, k=8)
        if chance.random() < 0.1:
            number += chance.choice([1, 1, 1, 0, 2])
            words = chance.choice([[], ["The", "Winter", "Story"], words])
            words.insert(chance.randrange(len(words) + 1), str(number))
        lines.append(" ".join(words))
    return "\n".join(lines)


def in_columns(chance):
    """Rows of one to three words in each of two to five columns, some cells empty or too wide, and lines of prose between."""
    widths = [chance.randrange(4, 24) for _ in range(chance.randrange(2, 6))]
    lines = []
    for _ in range(chance.randrange(2, 80)):
        cells = [" ".join(chance.choices([*PLAIN, "12", "7 %", "-"], k=chance.choice([0, 1, 1, 1, 2, 3]))) for _ in widths]
        pad = chance.choice([str.ljust, str.ljust, str.rjust])
        lines.append("  ".join(pad(cell, width) for cell, width in zip(cells, widths)))
        if chance.random() < 0.1:
            lines.append(chance.choice(["", "-" * 20, " ".join(chance.choices(PLAIN, k=12)), "```", "| a | b |"]))
    return "\n".join(lines)


def test_no_word_of_columns_is_lost():
    chance = random.Random(5)
    for _ in range(150):
        text = in_columns(chance)
        written, found = (collections.Counter(re.findall("|".join(PLAIN), part)) for part in (text, said(text, "en-us")))
        assert not written - found, text


def test_no_number_of_wrapped_prose_is_lost_unless_it_counts_up_at_the_distance_of_pages():
    chance, lost = random.Random(3), 0
    for _ in range(300):
        text = wrapped(chance)
        numbers = [(int(number[0]), number.start()) for number in re.finditer(r"\d+", text)]
        counts_up = [number for number, place in numbers for before, other in numbers
                     if number == before + 1 and place - other >= PAGE_LENGTH]
        found = map(int, re.findall(r"\d+", said(text, "en-us")))
        missing = collections.Counter(number for number, _ in numbers) - collections.Counter(found)
        assert not missing - collections.Counter(counts_up), text
        lost += sum(missing.values())
    assert lost


@pytest.mark.parametrize("language", [*LANGUAGES.values(), "pl"])
def test_no_text_grows_more_than_tenfold(language):
    texts = [sign * count for sign in [*SIGNS, *HOSTILE] for count in (1, 50)]
    texts += [" ".join([sign] * 50) for sign in SIGNS] + [param.values[1] for param in SNIPPETS]
    texts.append("|a very long head of a column|\n|---|\n" + "|1|\n" * 100)
    texts.append("A VERY LONG HEAD OF A COLUMN    ANOTHER\n" + "a                               1\n" * 100)
    for text in texts:
        assert size(said(text, language)) <= GROWTH * size(text), text[:100]


@pytest.mark.parametrize("language", LANGUAGES.values())
def test_no_text_takes_long(language):
    for unit in HOSTILE:
        text = unit * (20_000 // len(unit))
        begin = time.thread_time()
        said(text, language)
        assert time.thread_time() - begin < 2, unit


def test_a_line_of_dots_takes_no_long_time():
    for line in ("x" + "…" * 20_000 + "x ..", "x" + ". " * 20_000 + "x", "x .... 1" + " " * 20_000 + "x", "x .... 1 " * 2_500):
        begin = time.thread_time()
        leaders.say(line, None)
        assert time.thread_time() - begin < 0.2, line[:20]


def test_ten_megabytes_begin_as_soon_as_one_line():
    """Of processor time; what a text of any length may take before its first piece."""
    unit = "It costs $5, says https://example.org/a?b. **See** `a != b`.\n| a | b |\n|---|---|\n| 1 | 2 |\n\n"
    text = unit * (10_000_000 // len(unit))
    said("warm 5 km", "en-us")
    begin = time.thread_time()
    found = pieces(text, "en-us", 600, say=lambda sentence: say(sentence, "en-us"))
    first = list(itertools.islice(filter(None, found), 3))
    assert time.thread_time() - begin < 0.05
    assert first[:2] == ["It costs 5 dollars, says link to example dot org.", "See a is not b."]


@pytest.mark.parametrize("line", ["Anna     31", "----", "a  b", "   and more", ""])
def test_a_table_of_ten_megabytes_is_not_held_back(line):
    text = "Name     Age\nBob       7\n" + (line + "\n") * (10_000_000 // (len(line) + 1))
    said("warm   up\nwarm   up", "en-us")
    begin = time.thread_time()
    next(filter(None, pieces(text, "en-us", 600)))
    assert time.thread_time() - begin < 0.05


def test_other_languages_have_what_does_not_depend_on_the_language():
    text = "**Dom** ma 5 km i kosztuje $500 lub 20 €.[12] `a`"
    assert said(text, "pl") == "Dom ma 5 kilometrów i kosztuje 500 dolarów amerykańskich lub 20 euro. a"


def test_units_are_said_in_no_other_language_than_the_texts():
    assert said("5 km", "cmn") == "5公里"
    assert said("5 km, $500 😀", "la") == "5 km, $500 😀"


def test_the_parts_of_a_long_line_keep_their_order():
    text = "a | b | " + " | ".join(f"cell{number}" for number in range(500))
    assert re.findall(r"cell(\d+)", said(text, "en-us")) == [str(number) for number in range(500)]
