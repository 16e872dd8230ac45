"""The installed tree is whole and valid, wherever it is put."""

import configparser
import json
import os
import re
import subprocess

import pytest
from appstream import problems

BUILD = os.environ["TAVIN_BUILD"]
HERE = os.path.dirname(os.path.abspath(__file__))
IN_SESSION = os.path.join(HERE, "../tools/in-session")
LINK_ENTRIES = os.path.join(HERE, "../../tools/link-entries")
SPEAK = os.path.join(HERE, "speak.py")


@pytest.fixture(scope="module")
def prefix(tmp_path_factory):
    path = tmp_path_factory.mktemp("in stalled") / "tree"
    subprocess.run(["cmake", "--install", BUILD, "--prefix", str(path)], check=True,
                   stdout=subprocess.DEVNULL, timeout=60)
    return path


def entry(path, section):
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    parser.read(path, encoding="utf-8")
    return dict(parser[section])


def test_the_build_tree_names_the_development_engine():
    with open(os.path.join(BUILD, "share/tavin/info.json"), encoding="utf-8") as f:
        engine = json.load(f)["TavinEngineDir"]
    assert os.path.isfile(os.path.join(engine, "tavin/server.py"))
    assert os.access(os.path.join(engine, ".venv/bin/python"), os.X_OK)


def test_the_build_tree_shows_the_icons():
    assert os.path.isdir(os.path.join(BUILD, "share/icons/hicolor"))


def test_the_installed_program_brings_its_engine(prefix):
    resources = prefix / "share/tavin"
    assert json.loads((resources / "info.json").read_text()) == {}
    assert (resources / "engine/tavin/server.py").is_file()
    python = resources / "engine/python/bin/python3"
    version = subprocess.run([python, "--version"], capture_output=True, text=True, timeout=10)
    assert version.stdout.startswith("Python 3.")
    assert os.access(prefix / "bin/tavin", os.X_OK)


def libraries(program):
    """The file names of those that it is linked with."""
    listed = subprocess.run(["readelf", "-d", program], capture_output=True, text=True, check=True, timeout=10)
    return re.findall(r"\(NEEDED\).*\[(.+)\]", listed.stdout)


def test_the_program_for_windows_alone_needs_libraries_for_windows(prefix):
    shows, = (path for path in prefix.rglob("tavin-windows") if os.access(path, os.X_OK))
    assert shows.parent.name == "tavin"
    gui = {"libQt6Gui.so.6", "libQt6Widgets.so.6"}
    assert gui <= set(libraries(shows))
    assert "libQt6Core.so.6" in libraries(prefix / "bin/tavin")
    assert not [name for name in libraries(prefix / "bin/tavin") if re.match("libQt6(?!Core|DBus)|libg[dt]k", name)]


def test_the_installed_engine_carries_its_compiled_modules(prefix):
    package = prefix / "share/tavin/engine/tavin"
    sources = {path.relative_to(package).with_suffix("") for path in package.rglob("*.py")}
    compiled = {
        path.parent.parent.relative_to(package) / path.name.split(".")[0]
        for path in package.rglob("__pycache__/*.pyc")
    }
    assert sources and compiled == sources


def test_the_installed_engine_speaks_without_the_neural_voices_libraries(prefix):
    engine = prefix / "share/tavin/engine"
    libraries = engine / "site-packages"
    for name in ("aiohttp", "attr", "icu"):  # what the server needs, not to be had from there
        (libraries / name).mkdir(parents=True, exist_ok=True)
        (libraries / name / "__init__.py").write_text("raise SystemExit('a stranger')")
    environment = {"PYTHONPATH": f"{engine}:{libraries}", "PYTHONNOUSERSITE": "1",
                   "PYTHONDONTWRITEBYTECODE": "1"}  # as the program sets it
    answer = subprocess.run(
        [IN_SESSION, "--wm", "none", "--no-bus", "--sound", "--", "/usr/bin/python3", "-B", SPEAK,
         engine / "python/bin/python3"],
        cwd=engine, env={**os.environ, **environment}, capture_output=True, text=True, timeout=60)
    assert answer.stdout.split() == ["speaking", "idle", "None"], answer.stderr


def test_icons_are_installed(prefix):
    icons = {path.name for path in (prefix / "share/icons/hicolor").rglob("*.svg")}
    assert "app.tavin.Tavin.svg" in icons
    assert [name for name in icons if name.endswith("-symbolic.svg")]


def test_the_desktop_entry_is_valid_and_names_the_program(prefix):
    path = prefix / "share/applications/app.tavin.Tavin.desktop"
    subprocess.run(["desktop-file-validate", path], check=True, timeout=10)
    main = entry(path, "Desktop Entry")
    assert main["Exec"] == f'"{prefix}/bin/tavin"'
    # Without this KWin neither lets Tavin type nor tells it which keys are held and which window
    # is in front.
    assert main["X-KDE-Wayland-Interfaces"].split(",") == [
        "org_kde_kwin_fake_input", "org_kde_kwin_keystate", "org_kde_plasma_window_management"]
    assert main["Actions"].split(";") == [
        "speak", "pause", "stop", "next", "previous", "next-paragraph", "previous-paragraph", "repeat", "faster",
        "slower", "menu", ""]
    for action in main["Actions"].split(";")[:-1]:
        found = entry(path, f"Desktop Action {action}")
        assert found["Exec"] == f"gapplication action app.tavin.Tavin {action}"
        assert languages(found, "Name") == languages(main, "GenericName")


def languages(section, key):
    return {name.removeprefix(key) for name in section if name.startswith(key)}


def test_the_bus_service_names_the_program(prefix):
    service = entry(prefix / "share/dbus-1/services/app.tavin.Tavin.service", "D-BUS Service")
    assert service == {"Name": "app.tavin.Tavin", "Exec": f'"{prefix}/bin/tavin"'}


def test_the_appstream_data_is_valid(prefix):
    assert problems(prefix / "share/metainfo/app.tavin.Tavin.metainfo.xml") == set()


def test_invalid_appstream_data_are_found(prefix, tmp_path):
    good = prefix / "share/metainfo/app.tavin.Tavin.metainfo.xml"
    bad = tmp_path / good.name
    bad.write_text(good.read_text().replace("<metadata_license>CC0-1.0</metadata_license>", ""))
    assert "metadata-license-missing" in problems(bad)


def test_installed_through_a_link_the_program_is_named_without_it(tmp_path):
    (tmp_path / "tree").mkdir()
    (tmp_path / "link").symlink_to("tree")
    subprocess.run(["cmake", "--install", BUILD, "--prefix", str(tmp_path / "link")], check=True,
                   stdout=subprocess.DEVNULL, timeout=60)
    path = tmp_path / "tree/share/applications/app.tavin.Tavin.desktop"
    program = os.path.realpath(tmp_path / "tree/bin/tavin")
    assert entry(path, "Desktop Entry")["Exec"] == f'"{program}"'


def test_links_into_the_build_tree_make_way(tmp_path):
    """`make run` made them where this is installed now."""
    home = tmp_path / "home"
    data = tmp_path / "share"
    subprocess.run([LINK_ENTRIES, BUILD], check=True, timeout=60, stdout=subprocess.DEVNULL,
                   env={**os.environ, "HOME": str(home), "XDG_DATA_HOME": str(data)})
    linked = {path.relative_to(data) for path in data.rglob("app.tavin.Tavin*")}
    assert {path.parts[0] for path in linked} == {"applications", "dbus-1", "icons"}
    assert all((data / path).is_symlink() for path in linked)
    (data / "applications/other.desktop").symlink_to("/nonexistent")
    (data / "applications/app.tavin.Tavin-mine.desktop").symlink_to("/nonexistent/mine.desktop")
    (tmp_path / "elsewhere/share/applications").mkdir(parents=True)
    beyond = tmp_path / "elsewhere/share/applications/app.tavin.Tavin.desktop"
    beyond.symlink_to("/nonexistent/share/applications/elsewhere/app.tavin.Tavin.desktop")
    (data / "applications/elsewhere").symlink_to(beyond.parent)
    subprocess.run(["cmake", "--install", BUILD, "--prefix", str(tmp_path)], check=True, timeout=60,
                   stdout=subprocess.DEVNULL)
    for path in linked:
        assert (data / path).is_file() and not (data / path).is_symlink(), path
    assert (data / "applications/other.desktop").is_symlink()
    assert (data / "applications/app.tavin.Tavin-mine.desktop").is_symlink()
    assert beyond.is_symlink()


def test_a_staged_installation_names_its_final_place(tmp_path):
    subprocess.run(["cmake", "--install", BUILD, "--prefix", "/usr"], check=True, timeout=60,
                   env={**os.environ, "DESTDIR": str(tmp_path)}, stdout=subprocess.DEVNULL)
    service = entry(tmp_path / "usr/share/dbus-1/services/app.tavin.Tavin.service",
                    "D-BUS Service")
    assert service["Exec"] == '"/usr/bin/tavin"'
