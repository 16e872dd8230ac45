"""A quotation in another language is parted from what is around it."""

import pytest
from tavin.text.language import Written
from tavin.text.pieces import pieces
from tavin.text.quotations import divided

ENGLISH = "The evening was long, and nobody in the house wanted to talk about what had happened. "


def spoken(text, expected="en-us", around=ENGLISH * 3):
    """The pieces of a text within others, with their languages."""
    written = Written(around + text)

    def divide(sentence):
        return divided(sentence, lambda part: written.of(part, expected))

    found = pieces(text, written.whole(expected), 600, divide=divide)
    return [(written.of(piece.sentence, expected), str(piece)) for piece in found if piece]


@pytest.mark.parametrize(
    "text, parts",
    [
        (
            "He said: “Je ne veux pas y aller ce soir.” Then he left.",
            [("en-us", "He said:"), ("fr", "“Je ne veux pas y aller ce soir.”"), ("en-us", "Then he left.")],
        ),
        (
            "He wrote «Ce n’est pas la peine de revenir, mon ami», and left.",
            [("en-us", "He wrote"), ("fr", "«Ce n’est pas la peine de revenir, mon ami»"), ("en-us", ", and left.")],
        ),
        (
            'She asked "Was ist denn hier eigentlich los?" and went.',
            [("en-us", "She asked"), ("de", '"Was ist denn hier eigentlich los?"'), ("en-us", "and went.")],
        ),
        (
            "“Je ne sais pas encore. Il est trop tard pour en parler,” she said to us.",
            [
                ("fr", "“Je ne sais pas encore."),
                ("fr", "Il est trop tard pour en parler,”"),
                ("en-us", "she said to us."),
            ],
        ),
    ],
)
def test_a_quotation_of_a_sentence_is_parted(text, parts):
    assert spoken(text) == parts


@pytest.mark.parametrize(
    "text, language",
    [
        ("He calls it “joie de vivre” and smiles.", "en-us"),
        ("“Stop,” she said, “I do not like it here.”", "en-us"),
        ("Il a dit «bonjour» et il est parti sans nous dire pourquoi.", "fr"),
        ("It is 5\" wide, and 7\" long.", "en-us"),
        ("A \"\" and a “ and a ” alone.", "en-us"),
    ],
)
def test_what_is_in_one_language_stays_together(text, language):
    assert spoken(text) == [(language, text)]


def test_nothing_is_lost():
    text = "a“b„c«d»e\"f\"g ”h ‘i’ “Je ne veux pas y aller ce soir” „Ich weiß nicht, wo er heute ist“"
    assert "".join(divided(text, lambda part: "fr" if "Je" in part else "de" if "Ich" in part else "en")) == text
