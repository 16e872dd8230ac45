"""`make kokoro` takes nothing but what the hashes say, and leaves no half of it."""

import hashlib
import os
import shutil
import subprocess
import zipfile

import pytest
from engine_process import FOLDER

# Needs pip, as what fills TAVIN_KOKORO_LIBRARIES does, and so runs after it.
INFO = "tiny-1.dist-info"
REQUIREMENT = "tiny==1 --hash=sha256:{}\n"


@pytest.fixture
def source(tmp_path):
    """A source tree that wants one library, and that library where pip looks for it."""
    tree = tmp_path / "source"
    for folder in ("tools", "speech"):
        (tree / folder).mkdir(parents=True)
    for name in ("install-kokoro", "setup"):
        shutil.copy(FOLDER.parent / "tools" / name, tree / "tools")
    (tmp_path / "wheels").mkdir()
    with zipfile.ZipFile(tmp_path / "wheels" / "tiny-1-py3-none-any.whl", "w") as wheel:
        wheel.writestr("tiny.py", "")
        wheel.writestr(f"{INFO}/METADATA", "Metadata-Version: 2.1\nName: tiny\nVersion: 1\n")
        wheel.writestr(f"{INFO}/WHEEL", "Wheel-Version: 1.0\nRoot-Is-Purelib: true\nTag: py3-none-any\n")
        wheel.writestr(f"{INFO}/RECORD", "")
    return tree


def install(source, digest):
    (source / "speech" / "requirements-kokoro.txt").write_text(REQUIREMENT.format(digest))
    wheels = source.parent / "wheels"
    return subprocess.run(
        [source / "tools" / "install-kokoro"],
        env={**os.environ, "PIP_NO_INDEX": "1", "PIP_FIND_LINKS": str(wheels), "PIP_NO_CACHE_DIR": "1"},
        capture_output=True,
        text=True,
        check=False,
        timeout=120,
    )


def test_a_wrong_hash_is_refused_and_costs_nothing(source):
    wheel = source.parent / "wheels" / "tiny-1-py3-none-any.whl"
    refused = install(source, "0" * 64)
    assert refused.returncode != 0
    assert "DO NOT MATCH THE HASHES" in refused.stderr
    assert [path.name for path in (source / "speech").iterdir()] == ["requirements-kokoro.txt"]

    good = install(source, hashlib.sha256(wheel.read_bytes()).hexdigest())
    assert good.returncode == 0, good.stderr
    installed = source / "speech" / "site-packages"
    assert (installed / "tiny.py").exists()

    wheel.write_bytes(wheel.read_bytes() + b"more")
    (installed / ".installed").unlink()  # as if it were not up to date
    assert install(source, "0" * 64).returncode != 0
    assert (installed / "tiny.py").exists()
    assert sorted(path.name for path in (source / "speech").iterdir()) == [
        "requirements-kokoro.txt",
        "site-packages",
    ]
