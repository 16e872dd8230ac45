"""Gets a back-end's files before it can speak."""
