"""A copy of the engine with files and libraries of the test's own for the neural voice."""

import hashlib
import json
import shutil
import sys

from engine_process import FOLDER

OWN_TAG = f"cp{sys.version_info.major}{sys.version_info.minor}"


class Tree:
    def __init__(self, folder, server=None):
        self.folder = folder
        self._server = server
        shutil.copytree(FOLDER / "tavin", folder / "tavin", ignore=shutil.ignore_patterns("__pycache__"))

    def offer(self, **contents):
        """Have the server offer these files (name without ending -> bytes), and the engine want them."""
        self._server.files.update(contents)
        pins = [
            {
                "name": name,
                "url": self._server.url(name),
                "size": len(content),
                "sha256": hashlib.sha256(content).hexdigest(),
            }
            for name, content in contents.items()
        ]
        path = self.folder / "tavin/synthesis/backends/kokoro/files.json"
        path.write_text(json.dumps({"files": pins}))

    def use_libraries(self, folder):
        (self.folder / "site-packages").symlink_to(folder)

    def claim_libraries(self, tag=OWN_TAG):
        """What an installation tells of itself, and nothing else of it."""
        libraries = self.folder / "site-packages"
        for name, content in (
            ("kokoro_onnx-1.dist-info/METADATA", "Metadata-Version: 2.1\nName: kokoro-onnx\nVersion: 1\n"),
            ("onnxruntime-1.dist-info/METADATA", "Metadata-Version: 2.1\nName: onnxruntime\nVersion: 1\n"),
            ("onnxruntime-1.dist-info/WHEEL", f"Wheel-Version: 1.0\nTag: {tag}-{tag}-linux_x86_64\n"),
        ):
            path = libraries / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(content)

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
