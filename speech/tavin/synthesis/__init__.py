"""From sentences to sound: the back-ends, their workers and voices."""
