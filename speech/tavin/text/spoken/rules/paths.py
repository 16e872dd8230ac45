"""A file's path is said with its signs."""

import re

PLACE = r"(?<![^\s(\[{\"'“„«=>,;|])"
POSIX = re.compile(
    rf"{PLACE}(?:~|\.{{1,2}})?/(?=[\w.+@-]{{0,50}}[^\W\d_])[\w.+@-]{{1,255}}(?:/[\w.+@-]{{1,255}}){{0,50}}/?(?![\w/])"
)
RELATIVE = re.compile(rf"{PLACE}[\w.+-]{{1,255}}(?:/[\w.+-]{{1,255}}){{1,50}}(?:/|\.[a-z]\w{{0,4}})(?![\w/])")
WINDOWS = re.compile(r"(?<!\w)[A-Za-z]:\\(?:[\w.+@-]{1,255}\\?){1,50}")
PHONETIC = re.compile("[ˈˌːəɪʊɛɔæɑʃʒθðŋɡʁɲœøɐ]")
SIGN = re.compile(r"[~/\\_]|\.(?=\w)|(?<=/)\.")


def say(sentence, words):
    if "\\" in sentence:
        sentence = WINDOWS.sub(lambda path: spoken(path[0], words), sentence)
    if "/" in sentence:
        sentence = POSIX.sub(lambda path: spoken(path[0], words), sentence)
        sentence = RELATIVE.sub(lambda path: spoken(path[0], words), sentence)
    return sentence


def spoken(path, words):
    """The stop that ends the sentence stays one. How a word is pronounced stands between such strokes as well."""
    if PHONETIC.search(path) and path[0] == path[-1] == "/" and path.count("/") == 2:
        return path
    end = "." if path.endswith(".") and len(path) > 3 else ""
    names = {"/": words.slash, "\\": words.backslash, "_": " ", ".": words.dot, "~": words.operators.get("~", "~")}
    return " ".join(SIGN.sub(lambda sign: names[sign[0]], path.removesuffix(end)).split()) + end
