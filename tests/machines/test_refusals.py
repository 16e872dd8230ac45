"""A user who may not install packages is told in one line what is missing, and nothing is begun."""

import pytest
from machine import Machine

TOLD = "Some packages are missing, and only root may install them: apt-get install "
NOT_ALLOWED = ("--prepare", "sudo rm /etc/sudoers.d/user")  # sudo is there, and refuses


@pytest.mark.parametrize("options", [("--without-sudo",), NOT_ALLOWED], ids=["none", "refusing"])
def test_one_line_names_the_packages(options):
    with Machine("debian12", *options) as machine:
        before = machine.check("git status --short --ignored")
        for target in ("run", "test", "test-all", "deb", "bench", "lint"):
            code, printed = machine.run(f"make {target}")
            line, end = printed.splitlines()
            assert (code, line[:len(TOLD)]) == (2, TOLD)
            assert " cmake " in line
            assert end.startswith("make: *** [Makefile:")
        assert machine.check("git status --short --ignored") == before


def test_the_line_that_is_told_serves():
    """What it names is all that is needed."""
    with Machine("debian12", *NOT_ALLOWED) as machine:
        line = machine.run("make run")[1].splitlines()[0]
    install = line.partition(": ")[2].replace("apt-get install", "apt-get -qq -y install")
    prepare = f"sudo apt-get -qq update && sudo {install} >/dev/null 2>&1"
    with Machine("debian12", "--without-sudo", "--prepare", prepare) as machine:
        assert " s of speech: " in machine.check("make run")
