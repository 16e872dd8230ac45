"""A formula as TeX has it, between its delimiters: its commands are the signs and names they stand for."""

import re

from tavin.text.spoken.patterns import any_of

FORMULA = re.compile(
    r"\$\$([^$]{1,300})\$\$|\\\(((?:[^\\]|\\(?!\))){1,300})\\\)|\\\[((?:[^\\]|\\(?!\])){1,300})\\\]"
    r"|(?<![^\s(\[\"“'‘,;:–—-])\$(?=[^\s\d{])([^$]{1,200})(?<!\s)\$(?![\w${])"
)
SIGNS = {
    "leq": "≤", "le": "≤", "geq": "≥", "ge": "≥", "neq": "≠", "ne": "≠", "approx": "≈", "pm": "±", "times": "×",
    "cdot": "×", "div": "÷", "infty": "∞", "sum": "∑", "pi": "π", "in": "∈", "to": "→", "rightarrow": "→",
    "Rightarrow": "⇒", "ldots": "…", "dots": "…", "cdots": "…", "left": "", "right": "", "quad": "",
    "displaystyle": "",
}
GREEK = ("alpha beta gamma delta epsilon varepsilon zeta eta theta iota kappa lambda mu nu xi rho sigma tau phi varphi chi"
         " psi omega Gamma Delta Theta Lambda Sigma Phi Psi Omega").split()
OTHERS = "frac dfrac tfrac sqrt begin text mathbb mathbf mathcal mathrm int prod lim log ln sin cos tan vec hat bar".split()
# Between single dollars, which may be amounts or variables of a shell.
OBVIOUS = re.compile(r"[\\=^_<>+]")
# Between brackets, whose backslash is a pattern's as well: "\(foo\)", "\[^a\]".
TEX = re.compile(rf"\\(?:{any_of([*SIGNS, *GREEK, *OTHERS])})(?![A-Za-z])|[\w)}}]\^[\w{{]|_\{{|(?<![\w$\"'])[A-Za-z] = ")
VARIABLE = re.compile(r"[A-Za-z]'?")
ENVIRONMENT = re.compile(r"\\(?:begin|end)\{\w{1,20}\*?\}")
ESCAPED = re.compile(r"\\[{}]|(?<!\\)&")
NEW_LINE = re.compile(r"\\\\")
SHORT_FRACTION = re.compile(r"\\[dt]?frac ?(\w)(\w)")
FRACTION = re.compile(r"\\[dt]?frac\{([^{}]{1,200})\}\{([^{}]{1,200})\}")
ROOT = re.compile(r"\\sqrt\{([^{}]{1,200})\}")
TEXT = re.compile(r"\\(?:math(?:bb|bf|cal|rm|it|sf)|text(?:bf|it|rm)?|operatorname|bar|hat|vec|tilde)\{([^{}]{1,80})\}")
LIMITS = re.compile(  # of a sum, no powers
    r"(\\(?:sum|prod|int))_(?:\{([^{}]{1,40})\}|(\w))\^(?:\{([^{}]{1,40})\}|(\w|\\infty))"
)
INDEX = re.compile(r"_\{([^{}]{1,80})\}")
EXPONENT = re.compile(r"\^\{(\w|-?\d{1,4})\}")  # a longer one is known by its braces
BRACES = re.compile(r"(?<!\^)\{([^{}]{1,200})\}")
SINGLE = re.compile(r"\w{1,6}")
COMMAND = re.compile(r"\\([A-Za-z]+)\s?|\\[,;:! ]")
UNKNOWN = re.compile(r"[\\{}]")
SHOWN_POWER = re.compile(r"\^\{-?\w[\w+-]{0,20}\}")
DEEPEST = 6


def say(line, words):
    return FORMULA.sub(lambda found: said(found, words), line) if "$" in line or "\\(" in line or "\\[" in line else line


def said(found, words):
    formula = found[found.lastindex].strip()
    looks_like_one = TEX if found[2] or found[3] else OBVIOUS
    is_variable = not found[3] and VARIABLE.fullmatch(formula)  # nor Markdown's own bracket: "\[x\]"
    if not (found[1] or is_variable or looks_like_one.search(formula)):
        return found[0]
    formula = NEW_LINE.sub(", ", ENVIRONMENT.sub(" ", formula))
    formula = SHORT_FRACTION.sub(r"\1 / \2", ESCAPED.sub(" ", formula))
    formula = LIMITS.sub(rf"\1 \2\3 {words.to} \4\5 ", formula)
    for _ in range(DEEPEST):
        formula = flatter(formula)
    formula = COMMAND.sub(lambda command: f" {SIGNS.get(command[1], command[1] or '')} ", formula)
    formula = " ".join(BRACES.sub(r" \1 ", formula).split()).replace(" ,", ",").replace(" ^", "^")
    return found[0] if UNKNOWN.search(SHOWN_POWER.sub("", formula)) else formula


def flatter(formula):
    """Without its innermost braces."""
    formula = EXPONENT.sub(r"^\1", INDEX.sub(r"_\1 ", TEXT.sub(r"\1", formula)))
    formula = ROOT.sub(lambda root: f"√{bracketed(root[1])}", formula)
    return FRACTION.sub(lambda parts: " / ".join(map(bracketed, parts.groups())), formula)


def bracketed(part):
    part = part.strip()
    return part if SINGLE.fullmatch(part) else f"({part})"
