"""The package on a machine of its own: upgrade, a second installation beside it, removal.

In this order, as what one test has done the next finds. Needs sudo, TAVIN_PACKAGE, a package that is
installed, and TAVIN_FILES, a list of the machine's files from before. Those with "second" in the name
need an installation by plain CMake, TAVIN_SECOND its prefix.
"""

import os
import subprocess

import own_engine
import pytest
import reader
import test_installed
from own_engine import engines
from session import wait_until

PACKAGE = os.environ["TAVIN_PACKAGE"]
SECOND = os.environ.get("TAVIN_SECOND")
NEW = "serving anew on port"
# What tools/bare has put there.
OF_THE_MACHINE = {"/etc/apt/apt.conf.d/90tavin", "/etc/dpkg/dpkg.cfg.d/90tavin"}
LONG = "The quick brown fox jumps over the lazy dog, again and again and again. " * 6
# What systems keep of any package, and what they write while they run.
KEPT = ("/home/", "/proc/", "/sys/", "/dev/", "/tmp/", "/run/", "/var/log/", "/var/cache/",
        "/var/lib/dpkg/", "/var/lib/apt/", "/var/tmp/", os.path.expanduser("~root/"))


def as_root(*command, **kwargs):
    return subprocess.run(["sudo", "env", "DEBIAN_FRONTEND=noninteractive", *command], check=True,
                          stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=300,
                          **kwargs)


def installed_version():
    return subprocess.run(["dpkg-query", "-W", "-f=${Version}", "tavin"], check=True,
                          capture_output=True, text=True, timeout=30).stdout


def files():
    found = as_root("find", "/", "-xdev", "-not", "-type", "d").stdout.splitlines()
    return {path for path in found if not path.startswith(KEPT)}


@pytest.fixture(scope="module")
def higher(tmp_path_factory):
    """The same package with a higher version, whose engine says so in its log."""
    folder = tmp_path_factory.mktemp("higher")
    tree = folder / "tree"
    subprocess.run(["dpkg-deb", "-R", PACKAGE, tree], check=True, timeout=60)
    for path, old, new in ((tree / "DEBIAN/control", f"Version: {installed_version()}\n",
                            f"Version: {installed_version()}+higher\n"),
                           (tree / "usr/share/tavin/engine/tavin/server.py", "serving on port", NEW)):
        text = path.read_text(encoding="utf-8")
        assert text.count(old) == 1
        path.write_text(text.replace(old, new), encoding="utf-8")
    result = folder / "tavin.deb"
    subprocess.run(["dpkg-deb", "--root-owner-group", "-b", tree, result], check=True, timeout=60,
                   stdout=subprocess.DEVNULL)
    return str(result)


def test_an_upgrade_leaves_the_reading_alone_and_then_nothing_of_the_old_engine(desktop, higher):
    tavin = reader.start(desktop, "/usr")
    reader.select(desktop, LONG)
    old_processes = set()

    def upgrade():
        old_processes.update(engines(desktop.session))
        as_root("apt-get", "-y", "install", higher)
        assert own_engine.status()["state"] == "speaking"
    assert reader.seconds_spoken(desktop, upgrade) > 10
    assert installed_version().endswith("+higher")
    wait_until(lambda: own_engine.status() and NEW in reader.engine_log(desktop), 30, "the new engine")
    own_engine.wait_for("idle")
    # The engine's own process stays, and is the new one.
    assert len(old_processes & set(engines(desktop.session))) == 1
    assert reader.seconds_spoken(desktop) > 10
    assert tavin.quit()[0] == 0
    wait_until(lambda: not engines(desktop.session), 10, "the engine's end")


def test_an_upgrade_leaves_no_byte_code_of_the_old_files():
    compiled = as_root("find", "/usr/share/tavin", "-name", "*.pyc").stdout.splitlines()
    assert compiled
    for path in compiled:
        folder, name = os.path.split(path)
        source = os.path.join(os.path.dirname(folder), name.split(".")[0] + ".py")
        assert os.path.getmtime(path) >= os.path.getmtime(source), path


def test_a_second_installation_stands_beside_the_package(desktop):
    second = reader.start(desktop, SECOND)
    assert os.readlink(f"/proc/{second.process.pid}/exe") == f"{SECOND}/bin/tavin"
    for process in engines(desktop.session):
        assert os.readlink(f"/proc/{process}/cwd") == f"{SECOND}/share/tavin/engine"
    assert desktop.start(["/usr/bin/tavin"]).wait(10) == 0  # it has handed over
    assert second.quit()[0] == 0


def test_removal_while_tavin_runs_lets_it_quit(desktop):
    tavin = reader.start(desktop, "/usr")
    as_root("apt-get", "-y", "remove", "tavin")
    assert tavin.process.poll() is None
    assert tavin.quit()[0] == 0
    wait_until(lambda: not engines(desktop.session), 10, "the engine's end")


def test_after_removal_no_file_is_left_outside_of_homes():
    as_root("apt-get", "-y", "install", PACKAGE)
    as_root("apt-get", "-y", "purge", "tavin")
    with open(os.environ["TAVIN_FILES"], encoding="utf-8") as f:
        before = {line.rstrip("\n") for line in f}
    now = files()
    assert now - before == set()
    # The package was there and was purged once before the list was made.
    assert {path for path in now if "tavin" in path.lower()} <= OF_THE_MACHINE


def test_the_second_installation_outlives_the_package(desktop):
    test_installed.test_a_key_is_pressed_and_the_selected_text_is_heard(desktop, SECOND)


def what_the_first_page_says_to_remove_it():
    with open(os.path.join(os.path.dirname(__file__), "../../README.md"), encoding="utf-8") as f:
        section = f.read().partition("## Remove it\n")[2].partition("\n## ")[0]
    return [line.strip() for line in section.splitlines() if line.startswith("    ")]


def test_what_the_first_page_says_leaves_nothing_of_it(desktop):
    as_root("apt-get", "-y", "install", PACKAGE)
    tavin = reader.start(desktop, "/usr")
    own_engine.configure(speed=1.25)
    assert tavin.quit()[0] == 0
    wait_until(lambda: not engines(desktop.session), 10, "the engine's end")
    environment = {**desktop.session.env, "DEBIAN_FRONTEND": "noninteractive"}
    assert {"config", "log"} <= {kind_of(path) for path in of_tavin(environment["HOME"])}
    commands = what_the_first_page_says_to_remove_it()
    assert len(commands) == 3
    for command in commands:
        subprocess.run(["sh", "-c", command], env=environment, check=True, input="y\n", text=True,
                       capture_output=True, timeout=300)
    assert of_tavin(environment["HOME"]) == []
    switched_on = subprocess.run(
        ["busctl", "--user", "get-property", "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Status",
         "IsEnabled"], env=environment, check=True, capture_output=True, text=True, timeout=30)
    assert switched_on.stdout == "b false\n"


def of_tavin(home):
    return [os.path.join(folder, name) for folder, folders, names in os.walk(home)
            for name in [*folders, *names] if "tavin" in name.lower()]


def kind_of(path):
    return "config" if "/.config/" in path else "log" if "/Logs/" in path else "other"
