"""The source archive, and what configuring it does."""

import os
import pathlib
import re
import subprocess

import pytest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def make_archive(source, folder, umask=0o022):
    subprocess.run([os.path.join(source, "tools/package"), "dist", folder], check=True,
                   timeout=60, umask=umask)
    archive, = folder.glob("tavin-*.tar.gz")
    return archive


@pytest.fixture(scope="module")
def archive(tmp_path_factory):
    return make_archive(ROOT, tmp_path_factory.mktemp("archive"))


@pytest.fixture
def unpacked(archive, tmp_path):
    subprocess.run(["tar", "-C", tmp_path, "-xf", archive], check=True, timeout=60)
    return tmp_path / archive.name.removesuffix(".tar.gz")


def configure(source, build, *options):
    return subprocess.run(
        ["cmake", "-S", source, "-B", build, "-G", "Ninja", "-DBUILD_TESTING=OFF", *options],
        capture_output=True, text=True, timeout=120)


def files(folder):
    return sorted(path.relative_to(folder) for path in folder.rglob("*"))


def test_the_same_source_gives_the_same_bytes(archive, unpacked, tmp_path):
    """Also from a tree without git, with other times and another umask."""
    again = make_archive(unpacked, tmp_path / "again", umask=0o077)
    assert again.name == archive.name
    assert again.read_bytes() == archive.read_bytes()


def test_the_archive_holds_the_source_and_nothing_built(unpacked):
    assert (unpacked / "debian/rules").is_file() and (unpacked / "LICENSE").is_file()
    assert not [path for path in files(unpacked)
                if path.suffix == ".pyc" or path.parts[0].startswith("build")]


def test_configuring_writes_nothing_into_the_source(unpacked, tmp_path):
    before = files(unpacked)
    answer = configure(unpacked, tmp_path / "build")
    assert answer.returncode == 0, answer.stderr
    assert files(unpacked) == before


def test_the_folders_are_those_of_GNUInstallDirs(unpacked, tmp_path):
    build = tmp_path / "build"
    answer = configure(unpacked, build, "-DCMAKE_INSTALL_BINDIR=libexec/tavin",
                       "-DCMAKE_INSTALL_DATADIR=lib/data", "-DCMAKE_INSTALL_MANDIR=pages",
                       "-DCMAKE_INSTALL_LIBDIR=programs")
    assert answer.returncode == 0, answer.stderr
    header = (build / "src/platform/Installation.h").read_text()
    assert re.search(r'dataFromProgram\[\] = "(.*)"', header)[1] == "../../lib/data"
    assert (build / "lib/data/tavin/info.json").is_file()
    assert re.search(r'librariesFromProgram\[\] = "(.*)"', header)[1] == "../../programs"
    (build / "libexec/tavin/tavin").write_text("a program")  # in place of a build of minutes
    (build / "programs/tavin/tavin-windows").write_text("another")
    stage = tmp_path / "stage"
    subprocess.run(["cmake", "--install", build, "--prefix", "/opt/tavin"], check=True, timeout=60,
                   env={**os.environ, "DESTDIR": str(stage)}, stdout=subprocess.DEVNULL)
    tree = stage / "opt/tavin"
    assert {path.parts[:2] for path in files(tree) if (tree / path).is_file()} == {
        ("libexec", "tavin"), ("lib", "data"), ("pages", "man1"), ("programs", "tavin")}
    service = tree / "lib/data/dbus-1/services/app.tavin.Tavin.service"
    assert 'Exec="/opt/tavin/libexec/tavin/tavin"' in service.read_text()


def test_folders_beside_the_prefix_are_refused(unpacked, tmp_path):
    answer = configure(unpacked, tmp_path / "build", "-DCMAKE_INSTALL_PREFIX=/usr",
                       "-DCMAKE_INSTALL_DATADIR=/opt/share")
    assert answer.returncode != 0
    assert "/opt/share does not lie below the prefix" in " ".join(answer.stderr.split())


def relations(field):
    """The packages that debian/control names there, alternatives apart, without versions."""
    text = pathlib.Path(ROOT, "debian/control").read_text(encoding="utf-8")
    found = re.findall(rf"^{field}: (.*(?:\n .*)*)", text, re.MULTILINE)[0]
    return set(re.findall(r"(?:^|[,|])\s*([a-z][a-z0-9.+-]+)", found))


def group(name):
    """The packages of a group of tools/setup."""
    text = pathlib.Path(ROOT, "tools/setup").read_text(encoding="utf-8")
    found, _purpose = re.findall(rf'^ +{name}\) echo "([^"]*)" ;;$', text, re.MULTILINE)
    return set(re.split(r"[\s|]+", found))


# What the package's build does without, and what a program that was built needs when it runs.
NOT_FOR_THE_BUILD = {"ccache", "g++", "qt6-wayland", "libqt6svg6"}


def test_the_recipe_names_what_a_checkout_needs():
    assert group("build") - NOT_FOR_THE_BUILD <= relations("Build-Depends")
    assert group("engine") - {"python3"} <= relations("Depends") | relations("Recommends")
