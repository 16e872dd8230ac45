"""Each group of tools/setup is complete by itself: alone on a bare machine, what it is for starts."""

import pathlib
import re

import pytest
from machine import ROOT, Machine

BUILD = "cmake -S . -B build -G Ninja -DCMAKE_UNITY_BUILD=ON"
TESTS = f"{BUILD} >/dev/null && cmake --build build >/dev/null && ctest --test-dir build --no-tests=error"
ENGINE = """cd speech && { python3 -m tavin.server & } && for _ in $(seq 200); do
  python3 -c 'if True:
    import http.client, json
    asked = http.client.HTTPConnection("127.0.0.1", 47632, timeout=5)
    asked.request("GET", "/status")
    print(json.loads(asked.getresponse().read()))
    ' 2>/dev/null && break; sleep 0.1
done; kill %%"""
# What starts there, and what its output then holds.
GROUPS = {
    "build": (f"{BUILD} -DBUILD_TESTING=OFF && cmake --build build && ls build/bin", r"^tavin$"),
    "engine": (ENGINE, r"'ready': True"),
    "neural": ("speech/tests/heavy/neural_models.py && echo there", r"^there$"),
    "demo": (f"{BUILD} -DBUILD_TESTING=OFF && cmake --build build && tools/demo build", r" s of speech: "),
    "test": (f"{TESTS} -R '^(session_test|engine_test|desktop_terminals|speech_keys|packaging)$'",
             r"100% tests passed"),
    "wayland": (f"{TESTS} -R '^wayland_(services|terminal)$'", r"100% tests passed"),
    "heavy": (f"{TESTS} -R '^heavy_(documents|browsers|konsole|window_managers|lxqt_panel|xfce_player)$'",
              r"100% tests passed"),
    "desktops": (f"{TESTS} -R '^(kde|gnome)_(session|player)$'", r"100% tests passed"),
    "bench": (f"{BUILD} >/dev/null && cmake --build build >/dev/null && bench/run build --quick; "
              "ls build/bench", r"^result.json$"),
    "lint": ("clang-format-14 --dry-run --Werror $(git ls-files '*.cpp') && cmake --preset tidy && "
             "cmake --build --preset tidy --target tavin_logic", r"Linking CXX static library"),
    "fuzz": ("FUZZ_SECONDS=5 make fuzz", r"^http: \d+ inputs"),
    "package": ("make deb", r"^Built .*[.]deb$"),
    "screenshots": (f"{BUILD} -DBUILD_TESTING=OFF && cmake --build build && "
                    "tools/screenshots build menu player",
                    r" xfce4-menu.png, 900 by 410(.|\n)* xfce4-player.png, 420 by 200"),
    "debootstrap": ("sudo debootstrap --print-debs trixie /tmp/there \"$(bash -c "
                    "'. tools/debian-folder.sh; mirror')\"", r"\bcoreutils\b"),
    "debian13": (f"{BUILD} >/dev/null && cmake --build build >/dev/null && TAVIN_BUILD=$PWD/build "
                 "tests/tools/in-session --bare -- python3 -m pytest -q tests/desktop/gnome/test_session.py",
                 r" passed"),
}
LONG = 3600  # seconds


def test_all_groups_are_here():
    head = pathlib.Path(ROOT, "tools/setup").read_text(encoding="utf-8").partition("set -euo")[0]
    listed = " ".join(re.findall(r"(?:groups:|^#  {20,})(.*)", head, re.MULTILINE)).split()
    assert sorted(GROUPS) == sorted(listed)


@pytest.mark.parametrize("group", GROUPS)
def test_a_group_alone_starts_what_it_is_for(group):
    command, wanted = GROUPS[group]
    kind = "debian13" if group == "debian13" else "debian12"
    with Machine(kind, "--prepare", f"tools/setup {group}", seconds=LONG) as machine:
        printed = machine.check(command, LONG)
        assert re.search(wanted, printed, re.MULTILINE), printed[-5000:]
