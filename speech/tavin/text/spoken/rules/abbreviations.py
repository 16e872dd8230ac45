"""Abbreviations in full: a stop within a sentence is heard as its end."""

import functools
import re

from tavin.text.sentences import GERMAN_BEGIN
from tavin.text.spoken.languages import words_of_locale
from tavin.text.spoken.patterns import any_of
from tavin.text.spoken.rules.numerals import NUMERAL, value

STREET = re.compile(r"(?<=[a-z\d] )St\.(?=,|(\s*$)| (?:[a-z]|[NSEW]\b))")
FORT = re.compile(r"(?<![\d.] )(?<!Sq )\bFt\. (?=[A-Z][a-z])")  # no feet
DRIVE = re.compile(r"(\b\d{1,5} (?:[NSEW]\.? )?(?:[A-Z][a-z]+ ){1,2})Dr\.(?=,|(\s*$)| (?:[a-z]|[NSEW]\b))")
FOUNDED = re.compile(r"\best\. (?=(?:1[5-9]|20)\d\d(?:[),;]|\.?\s*$))")  # in that year
WOMAN = re.compile(r"(?<!bis )(?<![\w.-])Fr\. (?=[A-ZÄÖÜ])")  # no Friday
CORDIALLY = re.compile(r"(?:^|(?<=[Bb]ien )|(?<=[.!,] ))Cdt(?=,|[.!]?\s*$)", re.MULTILINE)  # no commander
LAWYER = re.compile(r"(?<![\w.'’-])Me (?=[A-ZÀ-Þ][a-zà-ÿ])")
ONE_HOUR = re.compile(r"(?:(?<![\w.,:/½¼¾-])1|\b(?:[Ee]ine[nr]?|[Pp]ro|[Jj]ede[rn]?)) ?$")
ANSWER = re.compile(r"\b(?:is|was|be|said|says?|answered) $")
AGAINST = re.compile(r"(?<=[^\W\d_][\w.] )v\. (?=[A-Z][\w.])")  # of a case in court
AT_LEAST = re.compile(r"(?<![\w.])(?<!\b[ae]l )(?<!\bdel )min\. (?=\d+ [^\W\d_]{3})")  # of something, no minute
TIMES = re.compile(r"\d+ fois\b")  # the English word, said so often
CLAUSE = re.compile(r"(?<=Abs\. )(\d+[a-z]?) S\. (?=\d)")
LETTER = re.compile(r"\blit\. ?(?=[a-z]\b)")  # not "lit. gesehen"
EXTRA_TIME = re.compile(r"(?<=\d)( zu \d{1,2}) n\. ?V\.(?=(\s*$)?)")  # otherwise by appointment
LABELLED = re.compile(r"(?<![\w.-])(?:n°|nº|n\.º|N°|Nº|N\.º) ?(?=[A-Z]-?\d)")
SAINT = re.compile(r"\bSt\. (?=[A-Z])")


def say(sentence, words):
    if not words.abbreviations:
        return sentence
    everywhere, before_number = patterns(tuple(words.abbreviations), tuple(words.before_number))
    if words.language == "en":
        sentence = AGAINST.sub("versus ", sentence)
        sentence = FOUNDED.sub("established ", FORT.sub("Fort ", sentence))
        sentence = DRIVE.sub(lambda found: f"{found[1]}Drive{'' if found[2] is None else '.'}", sentence)
        sentence = SAINT.sub("Saint ", STREET.sub(lambda found: "Street" if found[1] is None else "Street.", sentence))
    if words.language == "de":
        sentence = LETTER.sub("Buchstabe ", CLAUSE.sub(r"\1 Satz ", WOMAN.sub("Frau ", sentence)))
        sentence = EXTRA_TIME.sub(lambda found: f"{found[1]} nach Verlängerung{'' if found[2] is None else '.'}", sentence)
    if words.language == "fr":
        sentence = LAWYER.sub("Maître ", CORDIALLY.sub("Cordialement", sentence))
    if words.language == "es":
        sentence = AT_LEAST.sub("mínimo ", sentence)
    if words.number:
        sentence = LABELLED.sub(f"{words.number} ", sentence)
    for pattern, said in beside_numbers(words.locale):
        sentence = pattern.sub(said, sentence)
    sentence = before_number.sub(lambda found: counting(found, words), sentence)
    return everywhere.sub(lambda found: spoken(found, words), sentence)


@functools.cache
def patterns(everywhere, before_number):
    begin = r"(?:(?<![\w.’'-])|(?<=\b[dl][’']))"  # French "l'art. 5"
    return (
        re.compile(rf"{begin}({any_of(everywhere)})(?!\w)(?=(\s*[\"”»’')]*\s*$)?)"),
        re.compile(rf"{begin}({any_of(before_number)}) ?(?:(?=\d|\(\d{{1,3}}\)|I\b)|({NUMERAL})\b)"),
    )


@functools.cache
def beside_numbers(locale):
    """What is one of a number alone, as it is said of that."""
    words = words_of_locale(locale)
    year = any_of(words.before_year)
    of_life = r"(?:(?<=[(,;–])|(?<=[,;–] ))" if words.language == "en" else ""  # not "Figure d. 200 people"
    behind, ends = any_of(words.after_number), any_of(words.compounds)
    return (
        (
            re.compile(rf"{of_life}(?<![\w.])({year}) (?=(?:c\. |ca\. )?\d{{3,4}}\b)"),
            lambda found: f"{words.before_year[found[1]]} ",
        ),
        (
            re.compile(
                rf"(?<![\w.,])(\d[\d.,/]{{0,9}}|ein ?halb) ?({behind})(?!\w|\.\w|(?<=\.)\.)"
                rf"(?P<ends> {GERMAN_BEGIN.pattern})?(?!(?<=J\.) [A-ZÄÖÜ])"
            ),
            lambda found: f"{found[1]} {words.after_number[found[2]][found[1] != '1']}{stop(found)}",
        ),
        (re.compile(rf"(?<=[a-zäöüß])({ends})(?!\w)"), lambda found: words.compounds[found[1]]),
    )


def stop(found):
    return f".{found['ends']}" if found["ends"] and found[2].endswith(".") else found["ends"] or ""


def counting(found, words):
    """Not "The answer is no." before a sentence that begins with a number."""
    if found[1] == "no." and ANSWER.search(found.string, max(0, found.start() - 10), found.start()):
        return found[0]
    if found[1] == "no" and TIMES.match(found.string, found.end()):
        return found[0]
    return f"{words.before_number[found[1]]} {value(found[2]) if found[2] else ''}"


def spoken(found, words):
    """One that ends a sentence leaves its stop there."""
    ends = found[2] is not None and found[1].endswith(".")
    one = found[1] == "Std." and ONE_HOUR.search(found.string, max(0, found.start() - 10), found.start())
    return ("Stunde" if one else words.abbreviations[found[1]]) + ("." if ends else "")
