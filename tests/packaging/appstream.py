"""What appstreamcli finds wrong with AppStream data."""

import re
import subprocess

# Tavin has no page of its own yet, which AppStream 1.0 warns of.
KNOWN = {"url-homepage-missing"}


def problems(path):
    answer = subprocess.run(["appstreamcli", "validate", "--no-net", "--no-color", path],
                            capture_output=True, text=True, timeout=30)
    assert "Validation" in answer.stdout, answer.stderr
    return set(re.findall(r"^[EW]: \S+ (\S+)", answer.stdout, re.MULTILINE)) - KNOWN
