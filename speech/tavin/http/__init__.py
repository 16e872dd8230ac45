"""The HTTP interface and who may use it."""
