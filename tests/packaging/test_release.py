"""Whatever tells of the release tells the same: its version, its day and what belongs to it."""

import email.utils
import glob
import os
import re
import subprocess
import xml.etree.ElementTree

BUILD = os.environ["TAVIN_BUILD"]
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
IN_SESSION = os.path.join(ROOT, "tests/tools/in-session")
PAGE = os.path.join(BUILD, "packaging/tavin.1")


def read(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as f:
        return f.read()


def found(pattern, text):
    return re.search(pattern, text, re.MULTILINE).groups()


VERSION, = found(r"^project\(tavin VERSION (\S+)", read("CMakeLists.txt"))


def appstream_releases():
    tree = xml.etree.ElementTree.fromstring(read("packaging/app.tavin.Tavin.metainfo.xml"))
    return tree.findall("releases/release")


def changelog_releases():
    return re.findall(r"^## \[(\d\S*)\] - (\S+)$", read("CHANGELOG.md"), re.MULTILINE)


def test_the_changelog_the_appstream_data_and_the_package_tell_the_same_version():
    assert changelog_releases()[0][0] == VERSION
    assert appstream_releases()[0].get("version") == VERSION
    assert found(r"^tavin \((\S+)\)", read("debian/changelog")) == (VERSION,)


def test_the_package_is_of_the_day_of_the_release():
    written, = found(r"^ -- .*>  (.+)$", read("debian/changelog"))
    assert email.utils.parsedate_to_datetime(written).date().isoformat() == changelog_releases()[0][1]


def test_each_release_is_told_once_and_the_latest_first():
    versions = [tuple(map(int, version.split("."))) for version, _ in changelog_releases()]
    assert versions == sorted(set(versions), reverse=True)
    assert read("CHANGELOG.md").count("\n## [Unreleased]\n") == 1


def test_the_program_tells_its_version():
    program = subprocess.run(
        [IN_SESSION, "--wm", "none", "--no-a11y", "--", "timeout", "2",
         os.path.join(BUILD, "bin/tavin")],
        stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60)
    first = next(line for line in program.stderr.splitlines() if line.startswith("Tavin: X11"))
    assert first.endswith(f", version {VERSION}")


def test_the_manual_page_tells_the_version():
    with open(PAGE, encoding="utf-8") as f:
        assert f'"Tavin {VERSION}"' in f.readline()


def test_the_appstream_data_tell_of_the_releases_that_there_were():
    told = [(release.get("version"), release.get("date")) for release in appstream_releases()]
    assert told == changelog_releases()
    assert all(release.find("description/p") is not None for release in appstream_releases())


def test_the_manual_page_is_well_formed():
    page = subprocess.run(["man", "--warnings", "--encoding=UTF-8", "--local-file", PAGE],
                          env={**os.environ, "LANG": "C.UTF-8", "MANROFFSEQ": "", "MANWIDTH": "80"},
                          stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=30)
    assert (page.returncode, page.stderr) == (0, "")
    assert "tavin - read aloud" in page.stdout


def variables_read():
    """The environment variables of Tavin's own that the program and its engine name."""
    sources = [path for kind in ("src/**/*.cpp", "src/**/*.h", "speech/tavin/**/*.py")
               for path in glob.glob(os.path.join(ROOT, kind), recursive=True)]
    return {name for path in sources
            for name in re.findall(r'"(TAVIN_\w+)"', read(path))}


def test_the_manual_page_names_each_variable_that_is_read():
    variables = variables_read()
    assert {"TAVIN_KEYBOARD", "TAVIN_SHORTCUTS", "TAVIN_OPENAI_URL"} <= variables
    with open(PAGE, encoding="utf-8") as f:
        page = f.read()
    assert variables == set(re.findall(r"TAVIN_\w+", page))


def test_the_manual_page_names_each_action():
    desktop = read("packaging/app.tavin.Tavin.desktop.in")
    actions, = found(r"^Actions=(\S+);$", desktop)
    with open(PAGE, encoding="utf-8") as f:
        section = f.read().partition(".SH ACTIONS")[2].partition(".SH")[0]
    assert re.findall(r"^\.TP\n\.B ([\w-]+)$", section, re.MULTILINE) == actions.split(";")
