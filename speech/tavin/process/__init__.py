"""Helper processes: how they are started and seen, what passes between them and the engine, how they end."""
