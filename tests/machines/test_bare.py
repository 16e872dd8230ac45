"""tools/bare gives what it says, and leaves nothing."""

import os
import pathlib
import subprocess

import pytest
from machine import BARE, ROOT, Machine


def cache():
    home = os.environ.get("XDG_CACHE_HOME") or os.path.expanduser("~/.cache")
    return pathlib.Path(os.environ.get("TAVIN_BARE") or os.path.join(home, "tavin/bare"))


def test_a_machine_is_fresh_each_time():
    for _ in range(2):
        with Machine() as machine:
            assert machine.run("ls /left ~/left /tmp/left")[0] != 0
            machine.check("sudo touch /left; touch ~/left /tmp/left")


def test_the_checkout_has_what_is_not_committed_and_is_the_users():
    diff = subprocess.run(["git", "-C", ROOT, "diff", "HEAD"], check=True, capture_output=True, text=True)
    with Machine() as machine:
        assert machine.check("git diff HEAD") == diff.stdout.strip()
        assert machine.check("pwd; stat -c %U . .git Makefile").split() == [
            "/home/user/tavin", "user", "user", "user"]


def test_nothing_is_left_when_it_is_killed():
    machine = Machine()
    with machine:
        inside = int(machine.check("stat -L -c %i /proc/self/ns/pid"))
        layer = machine.check("grep -o '[^=]*/upper,' /proc/mounts").removesuffix("/upper,")
        machine.process.kill()
        machine.process.wait()
    for _ in range(100):
        if not processes_in(inside):
            break
        subprocess.run(["sleep", "0.1"], check=True)
    assert not processes_in(inside)
    with Machine():
        pass  # It also removes what a killed one has left.
    assert layer and not (cache() / layer).exists()
    assert str(cache() / layer) not in pathlib.Path("/proc/mounts").read_text()


def processes_in(namespace):
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        try:
            if entry.name.isdigit() and (entry / "ns/pid").stat().st_ino == namespace:
                found.append(entry.name)
        except OSError:
            pass
    return found


def test_a_user_there_may_have_namespaces():
    with Machine() as machine:
        machine.check("unshare --map-current-user --keep-caps --net --mount --pid --fork --mount-proc true")


def test_a_folder_is_bound_to_be_read_only(tmp_path):
    folder = tmp_path / "söme things"
    folder.mkdir()
    (folder / "file").write_text("there")
    with Machine("debian12", "--bind", str(folder), "/media/bound") as machine:
        assert machine.check("cat /media/bound/file") == "there"
        assert machine.run("sudo touch /media/bound/other")[0] != 0
    assert os.listdir(folder) == ["file"]


def test_without_root_and_sudo_it_says_so_in_one_line():
    command = [BARE, "debian12", "true"]
    if os.getuid() == 0:
        command = ["setpriv", "--reuid=65534", "--clear-groups", *command]
    elif subprocess.run(["sudo", "-n", "true"], check=False, stderr=subprocess.DEVNULL).returncode == 0:
        pytest.fail("run as root: this user may use sudo")
    done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                          check=False, timeout=30, start_new_session=True)
    assert (done.returncode, done.stdout) == (1, "")
    assert done.stderr == "bare: needs root's rights: run it as root, or as a user who may use sudo\n"
