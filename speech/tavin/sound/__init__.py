"""From samples to the desktop's output."""
