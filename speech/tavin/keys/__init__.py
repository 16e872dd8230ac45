"""The user's keys for cloud voices."""
