"""English."""

from dataclasses import replace

from tavin.text.spoken.languages import Words

WORDS = Words(
    locale="en_US",
    link="link to {}",
    dot=" dot ",
    at=" at ",
    dash=" dash ",
    slash=" slash ",
    backslash=" backslash ",
    underscore=" underscore ",
    more="{} and {count} more characters",
    code="Code:",
    done="done:",
    open="open:",
    signs={
        "=": "equals", "≠": "is not equal to", "!=": "is not equal to", "≈": "is about", "≤": "is at most", "<=": "is at most",
        "≥": "is at least", ">=": "is at least", "<": "is less than", ">": "is greater than", "×": "times", "÷": "divided by",
        "±": "plus or minus", "√": "the square root of", "∞": "infinity", "→": "to", "⇒": "implies", "←": "from", "∈": "is in",
        "↔": "to and from", "&": "and", "§": "section", "§§": "sections", "%": "percent", "‰": "per thousand", "+": "plus",
        "∑": "the sum of", "π": "pi", "✓": "check", "✔": "check", "✗": "cross", "✘": "cross", "☐": "open:", "☑": "done:",
        "°": "degrees", "~": "about", "*": "times", "^": "to the power of",
    },
    operators={
        "===": "equals", "!==": "is not", "==": "equals", "!=": "is not", "<=": "at most", ">=": "at least", "->": "arrow",
        "=>": "arrow", "&&": "and", "||": "or", "+=": "plus equals", "-=": "minus equals", "::": "",
        "=": "equals", "<": "less than", ">": "greater than", "+": "plus", "*": "times", "%": "percent", "/": "slash",
        "&": "and", "|": "pipe", "!": "not", "@": "at", "$": "dollar", "\\": "backslash", "^": "caret", "~": "tilde", "--": "dash dash",
        "-": "dash",
    },
    number="number",
    hashtag="hashtag",
    minus="minus",
    to="to",
    score="to",
    scored=r"\b(?:w[io]ns?|won|los[et]s?|beat|beaten|scored?|draws?|drew|leads?|led|victory|defeat|game|match|final|goals?)\b",
    squared="squared",
    cubed="cubed",
    power="to the power of",
    degrees="degrees",
    money={"USD": ("dollar", "dollars"), "GBP": ("pound", "pounds"), "EUR": ("euro", "euros"), "CAD": ("Canadian dollar", "Canadian dollars"),
           "CENT": ("cent", "cents")},
    with_cents="{} {}",
    scales={"k": ("thousand", "thousand"), "K": ("thousand", "thousand"), "M": ("million", "million"), "m": ("million", "million"),
            "B": ("billion", "billion"), "b": ("billion", "billion"), "bn": ("billion", "billion"), "T": ("trillion", "trillion"), "tn": ("trillion", "trillion"),
            "thousand": ("thousand", "thousand"), "million": ("million", "million"), "billion": ("billion", "billion"), "trillion": ("trillion", "trillion")},
    month_first=True,
    hour="{} o'clock",
    hour_and_minutes="{} {}",
    minutes_below_ten="oh {}",
    denominators={2: ("half", "halves"), 3: ("third", "thirds"), 4: ("quarter", "quarters"), 5: ("fifth", "fifths"), 6: ("sixth", "sixths"),
                  8: ("eighth", "eighths"), 10: ("tenth", "tenths")},
    one="one",
    half="one half",
    and_a_half="{} and a half",
    mixed="{} and {}",
    numerals="World War|[Cc]hapter|[Pp]art|[Vv]olume|[Aa]ct|[Ss]cene|[Ss]ection|[Bb]ook|[Pp]hase|[Tt]ype|[Tt]itle|[Aa]rticle|[Aa]ppendix|[Ff]igure|[Tt]able|[Gg]rade|[Ss]tage|[Ll]evel|[Cc]lass|Super Bowl|Mark|Schedule",
    rulers="Henry|Louis|Elizabeth|Charles|George|Edward|James|William|Richard|Paul|Pius|Benedict|Leo|Gregory|Innocent|Alexander|Nicholas"
           "|Catherine|Philip|Frederick|Ferdinand|Napoleon|Wilhelm|Francis|Peter|Ivan|Mary|Margaret|Ramses|Ramesses|Ptolemy|Cleopatra|Otto|Alfonso|Victoria|John",
    ruler="the {}",
    rulers_from=100,
    ruler_set="%spellout-ordinal",
    abbreviations={
        "e.g.": "for example", "e. g.": "for example", "i.e.": "that is", "i. e.": "that is", "etc.": "et cetera", "vs.": "versus", "cf.": "compare",
        "et al.": "and others", "approx.": "approximately", "Dr.": "Doctor", "Mr.": "Mister", "Mrs.": "Missus", "Ms.": "Ms", "Prof.": "Professor",
        "Jr.": "Junior", "Sr.": "Senior", "Gen.": "General", "Sen.": "Senator", "Gov.": "Governor", "Rep.": "Representative", "Capt.": "Captain", "Lt.": "Lieutenant",
        "Sgt.": "Sergeant", "Col.": "Colonel", "Rev.": "Reverend", "Mt.": "Mount", "Ave.": "Avenue", "Blvd.": "Boulevard", "Rd.": "Road", "Inc.": "Incorporated", "Ltd.": "Limited", "Corp.": "Corporation",
        "Co.": "Company", "Bros.": "Brothers", "dept.": "department", "Dept.": "Department", "govt.": "government", "est.": "established",
        "a.k.a.": "also known as", "w/o": "without", "w/": "with", "a.m.": "A M", "p.m.": "P M", "U.S.A.": "U S A", "U.S.": "U S", "U.K.": "U K", "U.N.": "U N", "E.U.": "E U", "D.C.": "D C",
        "Ph.D.": "P H D", "AT&T": "A T and T", "WWII": "World War 2", "WWI": "World War 1", "vs": "versus", "Jan.": "January", "Feb.": "February", "Aug.": "August", "Sept.": "September", "Oct.": "October", "Nov.": "November", "Dec.": "December",
    },
    before_number={
        "No.": "number", "no.": "number", "Nos.": "numbers", "nos.": "numbers", "p.": "page", "pp.": "pages", "Vol.": "volume", "vol.": "volume", "Fig.": "figure", "fig.": "figure",
        "Figs.": "figures", "Ch.": "chapter", "ch.": "chapter", "Sec.": "section", "sec.": "section", "Eq.": "equation", "eq.": "equation", "Art.": "article", "art.": "article",
        "ca.": "about", "c.": "about", "Tab.": "table", "ed.": "edition", "v.": "version", "est.": "estimated", "min.": "at least", "max.": "at most", "Apt.": "apartment", "Mar.": "March", "Apr.": "April", "Jun.": "June", "Jul.": "July",
    },
    acronyms={"FAQ": "F A Q", "SQL": "S Q L", "WHO": "W H O", "COVID": "Covid", "CO2": "C O 2", "H2O": "H 2 O", "O2": "O 2", "CH4": "C H 4", "HIV": "H I V", "JPEG": "jay peg",
              "WiFi": "wi-fi", "Wi-Fi": "wi-fi", "ASAP": "A S A P", "DIY": "D I Y", "CLI": "C L I", "IDE": "I D E", "LED": "L E D", "ISO": "I S O", "API": "A P I", "URL": "U R L"},
    decades=True,
)


def british(words):
    return replace(words, locale="en_GB", month_first=False, of_date=" ")
