"""A copy of the engine with files and libraries of the test's own for the neural voice."""

import hashlib
import json
import shutil
import subprocess
import sys

from engine_process import FOLDER

KOKORO = "tavin/synthesis/backends/kokoro"
WANTED = "from tavin.synthesis.backends.kokoro.needs import libraries; print(libraries.wanted(), end='')"


class Tree:
    def __init__(self, folder, server=None):
        self.folder = folder
        self._server = server
        shutil.copytree(FOLDER / "tavin", folder / "tavin", ignore=shutil.ignore_patterns("__pycache__"))
        self._want(libraries={"download": 0, "disk": 0})

    def offer(self, **contents):
        """Have the server offer these files (name without ending -> bytes), and the engine want them."""
        self._server.files.update(contents)
        files = [
            {
                "name": name,
                "url": self._server.url(name),
                "size": len(content),
                "sha256": hashlib.sha256(content).hexdigest(),
            }
            for name, content in contents.items()
        ]
        self._want(files=files)

    def serve_model(self, path):
        """Have the server offer the file of this name that the engine wants anyway."""
        self._server.files[path.name] = path.read_bytes()
        files = self._wanted()["files"]
        for file in files:
            file["url"] = self._server.url(file["name"])
        self._want(files=files)

    def offer_instead(self, path):
        """Have the server offer this file, and the engine want it in place of one with the same name."""
        content = path.read_bytes()
        self._server.files[path.name] = content
        files = self._wanted()["files"]
        for file in files:
            if file["name"] == path.name:
                file["size"], file["sha256"] = len(content), hashlib.sha256(content).hexdigest()
        self._want(files=files)

    def want_libraries(self, requirements, download=0, disk=0):
        """What pip is to install."""
        (self.folder / KOKORO / "requirements.txt").write_text(requirements)
        self._want(libraries={"download": download, "disk": disk})

    def _wanted(self):
        return json.loads((self.folder / KOKORO / "needs.json").read_text())

    def _want(self, **changes):
        wanted = {**self._wanted(), **changes}
        (self.folder / KOKORO / "needs.json").write_text(json.dumps(wanted))

    def have_libraries(self, data, environment=None):
        """Put an environment into the user's data folder; without one, what passes for one at a glance."""
        place = data / "tavin" / "kokoro" / "libraries"
        place.parent.mkdir(parents=True)
        if environment:
            place.symlink_to(environment)
            return
        (place / "bin").mkdir(parents=True)
        (place / "bin" / "python3").symlink_to(sys.executable)
        done = subprocess.run(
            [sys.executable, "-B", "-c", WANTED], cwd=self.folder, capture_output=True, text=True, check=True
        )
        (place / "built-for").write_text(done.stdout)

    def poison_libraries(self):
        """Libraries that no process but the neural voice's may load: each leaves a mark. The marks' folder."""
        marks = self.folder / "marks"
        marks.mkdir()
        for name in ("aiohttp", "attr", "attrs", "icu", "secretstorage", "jeepney", "typing_extensions"):
            package = self.folder / "site-packages" / name
            package.mkdir(parents=True)
            (package / "__init__.py").write_text(f"open({str(marks / name)!r}, 'w'); raise ImportError('stranger')")
        return marks

    def replace(self, module, source):
        (self.folder / "tavin" / module).write_text(source)

    def change(self, module, old, new):
        path = self.folder / "tavin" / module
        source = path.read_text()
        assert source.count(old) == 1
        path.write_text(source.replace(old, new))
