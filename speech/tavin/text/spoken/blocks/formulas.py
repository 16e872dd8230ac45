"""A formula as TeX has it, between its delimiters: its commands are the signs and names they stand for."""

import re

FORMULA = re.compile(
    r"\$\$([^$]{1,300})\$\$|\\\(((?:[^\\]|\\(?!\))){1,300})\\\)|\\\[((?:[^\\]|\\(?!\])){1,300})\\\]"
    r"|(?<![\w$\\])\$(?=[^\s\d])([^$]{1,200})(?<!\s)\$(?![\w$])"
)
# Between single dollars, which may be amounts or variables of a shell, and in Markdown's own brackets.
OBVIOUS = re.compile(r"[\\=^_<>+]")
VARIABLE = re.compile(r"[A-Za-z]'?")
FRACTION = re.compile(r"\\[dt]?frac\{([^{}]{1,60})\}\{([^{}]{1,60})\}")
ROOT = re.compile(r"\\sqrt\{([^{}]{1,60})\}")
BRACES = re.compile(r"(?<!\^)\{([^{}]{1,80})\}")
SINGLE = re.compile(r"\w{1,6}")
TEXT = re.compile(r"\\(?:math(?:bb|bf|cal|rm|it|sf)|text(?:bf|it|rm)?|operatorname|bar|hat|vec|tilde)\{([^{}]{1,80})\}")
COMMAND = re.compile(r"\\([A-Za-z]+)\s?|\\[,;:! ]")
SIGNS = {
    "leq": "≤", "le": "≤", "geq": "≥", "ge": "≥", "neq": "≠", "ne": "≠", "approx": "≈", "pm": "±", "times": "×", "cdot": "×",
    "div": "÷", "infty": "∞", "sum": "∑", "pi": "π", "in": "∈", "to": "→", "rightarrow": "→", "Rightarrow": "⇒",
    "ldots": "…", "dots": "…", "cdots": "…", "left": "", "right": "", "quad": "", "displaystyle": "",
}


def say(line, _words):
    return FORMULA.sub(said, line) if "$" in line or "\\(" in line or "\\[" in line else line


def said(found):
    formula = found[found.lastindex].strip()
    if (found[3] or found[4] and not VARIABLE.fullmatch(formula)) and not OBVIOUS.search(formula):
        return found[0]
    formula = ROOT.sub(lambda root: f"√{bracketed(root[1])}", TEXT.sub(r"\1", formula))
    formula = FRACTION.sub(lambda parts: " / ".join(map(bracketed, parts.groups())), formula)
    formula = COMMAND.sub(lambda command: f" {SIGNS.get(command[1], command[1] or '')} ", formula)
    return " ".join(BRACES.sub(r" \1 ", formula).split())


def bracketed(part):
    return part if SINGLE.fullmatch(part) else f"({part})"
