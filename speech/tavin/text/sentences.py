"""Finds sentences: those of the segmenter, joined where it takes an abbreviation for an end."""

import functools
import re

import icu

from tavin.text.spoken.bible import BOOKS
from tavin.text.spoken.languages import words_of

LOOKED_AT = 20  # code points at a sentence's end

# What ICU does not know of. They stand before a name or the like, seldom at a sentence's end; a
# single capital before a stop is an initial.
ABBREVIATION = re.compile(
    r"(?:\b(?:Dr|Drs|Dra|Mr|Mrs|Ms|Messrs|Mme|Mlle|Prof|Gen|Adm|Col|Capt|Cmdr|Maj|Lt|Sgt|Rev|Sen|Gov|Pres|St|Ft|Mt|Fig|Hr|Fr"
    r"|Sra|Srta|Dhr|Mevr|vs|[Cc]f|e\. ?g|i\. ?e)"
    r"|\(feat|(?:^|[\s.(])[A-Z]|(?<!v\. )(?<!r\. )\b[A-Z]\.-[A-Z])\. ?$"
)
TITLE = re.compile(r"(?:^|[,|;(] )Sr\. ?$")  # "Sr. Engineer"; behind a name it may end a sentence
OTHER_TITLE = re.compile(r"\b(?:Sr|[Ss]igg?|[Dd]ott|[Ii]ng|[Aa]vv)\. ?$")  # in other languages no name is before it
AGAINST = re.compile(r"[^\W\d_]\.? v\. ?$")
GERMAN = re.compile(r"(?:\b(?:bzw|bzgl|ggü|max|med|dent|jur|phil)|(?:^|[\s.])[a-zäöü])\. ?$")
# Though in English a sentence seems to begin: "near Main St. He is", "in the U.S. The".
NAME_END = re.compile(r"(?:[A-Z][a-z]+ St|\b[A-Z]\.[A-Z]|[a-z\d] [A-Z])\. ?$")
STREET = re.compile(r"(?:St|Ave|Blvd|Rd|Dr|Ln|Pkwy)\. ?$")
QUARTER = re.compile(r"(?:[NS][EW]?|[EW])\b")  # of a town
ENGLISH_BEGIN = re.compile(
    r"(?:He|She|It|They|We|You|I|The|This|That|These|There|In|On|At|But|And|His|Her|Its|Their|My|Our|Then|When|If)\b"
)
HOUR = re.compile(r"\b[ap]\.m\. ?$")
DAY = re.compile(
    r"(?:(?:Mon|Tues|Wednes|Thurs|Fri|Satur|Sun)day|[ECMP][SD]?T|UTC|GMT|CEST|BST|Eastern|Central|Mountain|Pacific"
    r"|January|February|March|April|May|June|July|August|September|October|November|December)\b"
)
# And these before a number.
COUNTED = re.compile(
    r"\b(?:[Nn]o|Nr|pp?|[Vv]ol|[Cc]h|[Cc]hap|[Ss]ec|[Ee]q|[Aa]rt|[Aa]pprox|[Cc]a|est"
    rf"|{'|'.join(book[:-1] for book in BOOKS)}|[Vv]ols|cls?|paras?|Apt|Ste|Bd|Kap|Abb|Tab|Ziff|S)\. ?$"
)
LETTERED = re.compile(r"#\d|[A-Z]\.?-?\d{2}")
ROMAN = re.compile(r"(?!I\b(?!–))[IVXL]+\b")
COMPANY = re.compile(r"\b(?:Corp|Inc|Ltd|Co|plc|LLC)\. ?$")
WORD = re.compile(r"(?:^|\s)[(\[\"'“„«]*(\S+) ?$")
ORDINAL = re.compile(r"\b(?:\d{1,2}|[IVX]{1,6})\. ?$")
GERMAN_MONTH = re.compile(
    r"(?:Jan(?:uar|\.)|Jänner|Feb(?:ruar|\.)|März|April|Apr\.|Mai|Juni?|Juli?|Aug(?:ust|\.)|Sept?(?:ember|\.)"
    r"|Okt(?:ober|\.)|Nov(?:ember|\.)|Dez(?:ember|\.)|Jahrhundert|Jh\.|Weltkrieg|[EODU]G\b|Stock|Etage|Auflage|Quartal"
    r"|(?:Bundesl|L)iga\b|Halb(?:jahr|zeit)|Mose\b|(?:FC|FSV|SC)\b)"
)
# Of a noun after an article or the like, unless a sentence seems to begin: "im 3. Stock", but "am 3. Es regnete".
GERMAN_ORDINAL = re.compile(
    r"\b(?:[Aa]m|[Ii]m|[Vv]om|[Zz]um|[Zz]ur|[Bb]eim|[Dd](?:er|ie|as|em|en|es)|[Ee]in(?:en?|em|er)"
    r"|[Jj]ede[mnrs]?|(?:[Ss]ein|[Ii]hr|[Mm]ein|[Uu]nser)(?:e[mnrs]?)?) (?:\d{1,2}\. (?:und|oder|bis) )?\d{1,3}\. ?$"
)
GERMAN_BEGIN = re.compile(
    r"(?:Er|Sie|Es|Wir|Ich|Ihr|Du|Man|Das|Die|Der|Den|Dem|Des|Dies\w*|Ein\w*|Kein\w*|Dann|Danach|Da|Dort|Dabei|Doch|Um|Am"
    r"|Im|In|Und|Aber|Auch|Als|An|Auf|Aus|Bei|Bis|Beim|Darum|Deshalb|Durch|Für|Hier|Jetzt|Jede\w*|Mit|Nach|Nicht|Noch|Nun|Nur"
    r"|Ohne|Schon|Leider|Heute|Gestern|Morgen|Daher|Denn|Ja|Nein|Oder|Ob"
    r"|Seit\w*|Seine?|So|Später|Vom|Von|Vor|War|Warum|Was|Weil|Wenn|Wer|Wie|Wo|Zu|Zum|Zur|Zwar|Zwei|Drei)\b"
)
# "1. 2. 2020": a number alone, or the year.
GERMAN_DATE = re.compile(r"(?:^|[^\d.] ?)\d{1,2}\. (?:(?:1[0-2]|0?[1-9])\. )?$")
MONTH_OR_YEAR = re.compile(r"(?:(?:1[0-2]|0?[1-9])\. ?(?:$|(?=(?:19|20)\d\d\b|bis\b|und\b))|(?:19|20)\d\d\b)")
STOPPED = re.compile(r"(?:\.|[.!?…][\"”“»«’']) ?$")


class Segmenter:
    """For texts in one language."""

    def __init__(self, language):
        self._breaks = icu.BreakIterator.createSentenceInstance(icu.Locale(language))
        self._abbreviations = abbreviations(language)
        self._german = language.split("-")[0] == "de"
        self._english = language.split("-")[0] == "en"
        self._counted = counted(language)
        self._before_numeral = tuple(f" {text}" for text in words_of(language).before_numeral)
        self._parted = parted_abbreviations(language)
        self._compounds = tuple(words_of(language).compounds)
        self._going_on = words_of(language).going_on

    def sentences(self, text):
        """All of `text` in sentences; the last may be unfinished."""
        units = text.encode("utf-16-le")  # the segmenter counts in these
        self._breaks.setText(text)
        found = []
        begin = 0
        for end in self._breaks:
            sentence = units[2 * begin : 2 * end].decode("utf-16-le")
            begin = end
            if found and self._goes_on(found[-1][-LOOKED_AT:], sentence[:LOOKED_AT]):
                found[-1] += sentence
            else:
                found.append(sentence)
        return found

    def _goes_on(self, before, after):
        if self._english and NAME_END.search(before) and ENGLISH_BEGIN.match(after):
            return False
        if self._english and after[0].isupper() and HOUR.search(before):
            return bool(DAY.match(after))
        word = WORD.search(before)
        if word and (word[1] in self._abbreviations or word[1] in self._going_on):
            return True
        if self._english and after[0].isupper() and (TITLE.search(before) or AGAINST.search(before)):
            return True
        if not self._english and OTHER_TITLE.search(before):
            return True
        if self._english and QUARTER.match(after) and STREET.search(before):
            return True
        if ABBREVIATION.search(before) or self._german and GERMAN.search(before):
            return True
        if any(before.endswith(begin) and after.startswith(end) for begin, end in self._parted):
            return True
        if after[0] == "(" and COMPANY.search(before):
            return True
        is_counted = word and word[1] in self._counted or bool(COUNTED.search(before))
        if ROMAN.match(after) and (is_counted or f" {before.rstrip()}".endswith(self._before_numeral)):
            return True
        if LETTERED.match(after) and is_counted:
            return True
        if after[0].isdigit() or after[0] == "(" and after[1:2].isdigit() and is_counted:
            is_other = word and word[1].endswith(self._compounds) or self._german and is_german_ordinal(before, after)
            return bool(is_counted or is_other)
        if after[0] in "/=;" or after[0] == "+" and before[-1] == ".":  # "3./4. Mai", "a != b", "3 p.m.; then", "45.+2"
            return True
        # The end of what was said; without the blank it may open in German.
        if after[0] == "»" and after[1:2] in (*" .,;:!?", ""):
            return True
        if after[0].islower():
            return bool(STOPPED.search(before))
        return self._german and is_german_ordinal(before, after)


def is_german_ordinal(before, after):
    if after[0].isupper() and GERMAN_ORDINAL.search(before) and not GERMAN_BEGIN.match(after):
        return True
    if ORDINAL.search(before) and GERMAN_MONTH.match(after):
        return True
    return bool(GERMAN_DATE.search(before) and MONTH_OR_YEAR.match(after))


@functools.cache
def parted_abbreviations(language):
    """Those with a blank in them, parted there in all ways."""
    places = ((text, place) for text in words_of(language).abbreviations for place in range(len(text)) if text[place] == " ")
    return [(text[: place + 1], text[place + 1 :]) for text, place in places]


@functools.cache
def counted(language):
    words = words_of(language)
    return frozenset({*words.before_number, *words.before_year})


@functools.cache
def abbreviations(language):
    """ICU's own list for a language. Its segmenter would use that for the ends of words as well: in
    German no sentence would end after "Meer.", because "r." is in the list."""
    locale = icu.Locale(language)
    try:
        data = icu.ResourceBundle("ICUDATA-brkitr", locale)
        if data.getLocale().getLanguage() != locale.getLanguage():
            return frozenset()  # it stands in for one that has none
        return frozenset(entry.getString() for entry in data.get("exceptions").get("SentenceBreak"))
    except icu.ICUError:
        return frozenset()
