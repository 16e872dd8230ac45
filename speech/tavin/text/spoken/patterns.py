"""Parts of patterns that several rules need."""

import re

# The ends of sites' names that tell one where no scheme does.
SITE_ENDS = "com|org|net|edu|gov|io|dev|de|fr|es|at|ch|uk|eu|info"


def any_of(texts):
    """Any of these, the longest that fits; without texts nothing."""
    return "|".join(sorted(map(re.escape, texts), key=len, reverse=True)) or "(?!)"
