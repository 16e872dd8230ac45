"""Tavin's speech engine: reads texts aloud, driven over HTTP on the loopback interface."""
