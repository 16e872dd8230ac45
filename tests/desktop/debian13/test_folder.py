"""The folder with Debian 13 is a machine of its own to what runs in it, and leaves nothing mounted.
Runs outside of it."""

import os
import subprocess

TOOL = os.path.join(os.path.dirname(__file__), "../../../tools/desktops")


def desktops(*arguments, before=(), **environment):
    return subprocess.run([*before, TOOL, *arguments], env={**os.environ, **environment},
                          capture_output=True, text=True, timeout=60)


def test_what_runs_there_sees_debian_13_and_the_current_folder(tmp_path):
    (tmp_path / "letter").write_text("read there\n", encoding="utf-8")
    done = subprocess.run([TOOL, "run", "sh", "-c", "cat /etc/debian_version letter; echo $0", "a b"],
                          cwd=tmp_path, capture_output=True, text=True, timeout=60)
    version, letter, argument = done.stdout.splitlines()
    assert version.startswith("13")
    assert (letter, argument, done.stderr) == ("read there", "a b", "")


def test_nothing_stays_mounted_and_nothing_outside_is_reached():
    folder = desktops("path").stdout.strip()
    done = desktops("run", "sh", "-c", "ls /.outside; findmnt --noheadings --output TARGET /")
    assert done.stdout == "/\n"
    with open("/proc/self/mounts", encoding="utf-8") as f:
        assert folder not in f.read()
    assert os.listdir(os.path.join(folder, "proc")) == []
    assert os.listdir(os.path.join(folder, "tmp")) == []


def test_the_commands_own_code_is_returned():
    assert desktops("run", "sh", "-c", "exit 7").returncode == 7


def test_without_the_folder_it_fails(tmp_path):
    done = desktops("run", "true", TAVIN_DESKTOPS=str(tmp_path / "none"))
    assert done.returncode == 1
    assert "make desktops" in done.stderr


def test_where_nothing_may_be_mounted_it_says_so():
    """As in a container without the right to mount."""
    done = desktops("run", "true", before=["setpriv", "--bounding-set=-sys_admin", "--inh-caps=-all",
                                           "--no-new-privs"])
    assert done.returncode == 1
    assert "no mounts of its own" in done.stderr
