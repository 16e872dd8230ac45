"""From the text that came to sentences in a known language."""
