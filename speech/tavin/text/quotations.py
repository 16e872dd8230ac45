"""Parts a sentence from what it quotes, where that is in another language."""

import re

from tavin.text.language import FEWEST_WORDS_OF_SENTENCE, primary, words

MARKS = re.compile("[\"“”„«»「」『』]")


def divided(sentence, language_of):
    """The sentence in parts of one language each; mostly it is one."""
    parts = at_marks(sentence)
    if len(parts) < 2:
        return [sentence]
    around = language_of(sentence)
    frame = language_of("".join(part for part, quoted in parts if not quoted))
    joined, last = [], None
    for part, quoted in parts:
        is_sentence = words(part) >= FEWEST_WORDS_OF_SENTENCE
        language = primary((language_of(part) if is_sentence else around) if quoted else frame)
        if language == last:
            joined[-1] += part
        else:
            joined.append(part)
        last = language
    return joined


def at_marks(sentence):
    """Cut before a mark that opens a quotation and after one that closes it: parts, and whether they are quoted."""
    parts, begin, quoted = [], 0, False
    for mark in MARKS.finditer(sentence):
        opening = opens(sentence, mark)
        end = mark.start() if opening else mark.end()
        parts.append((sentence[begin:end], not opening))
        begin, quoted = end, opening
    parts.append((sentence[begin:], quoted))
    return [(part, quoted) for part, quoted in parts if part]


def opens(sentence, mark):
    """By the letters around it, not by its shape: what opens in Swedish closes in German."""
    before = sentence[max(mark.start() - 1, 0) : mark.start()]
    after = sentence[mark.end() : mark.end() + 1]
    return not after.isspace() and after != "" and not (before.isalnum() or before in ".!?…,;")
