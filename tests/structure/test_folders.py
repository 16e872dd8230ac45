"""The folders of src use each other as docs/architecture.md draws it."""
import os
import tempfile
import unittest
from pathlib import Path

import folders

ROOT = Path(__file__).resolve().parents[2]
SRC = ROOT / "src"
DOCUMENT = (ROOT / "docs/architecture.md").read_text()


class FoldersTest(unittest.TestCase):
    maxDiff = None

    def test_the_logic_and_the_back_ends_know_only_the_contracts_of_each_other(self):
        self.assertEqual(folders.trespasses(SRC), [])

    def test_the_drawing_shows_who_uses_whom(self):
        self.assertEqual(folders.drawing(DOCUMENT), folders.uses(SRC))

    def test_each_folder_uses_only_what_stands_below_it(self):
        self.assertEqual(folders.upward(folders.drawing(DOCUMENT)), [])

    def test_a_folder_that_uses_one_above_it_is_found(self):
        self.assertEqual(folders.upward({"menu": {"engine"}, "engine": {"menu", "platform"}}),
                         [("engine", "menu")])

    def test_one_folder_alone_uses_qts_libraries_for_windows(self):
        headers = folders.gui_headers(Path(os.environ["TAVIN_QT_HEADERS"]))
        self.assertLessEqual({"QImage", "QGuiApplication", "QWidget", "QMenu"}, headers)
        self.assertEqual(folders.shows_windows(SRC, headers), {"widgets"})

    def test_the_logic_has_no_lock(self):
        self.assertEqual(folders.locks(SRC), [])

    def test_the_table_describes_each_folder(self):
        self.assertEqual(sorted(folders.described(DOCUMENT)), folders.folders(SRC))


class TrespassTest(unittest.TestCase):
    def found(self, look, file, text):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, file)
            path.parent.mkdir(parents=True)
            path.write_text(text)
            return look(Path(folder))

    def trespasses(self, file, include):
        return self.found(folders.trespasses, file, f'#include <string>\n#include "{include}"\n')

    def test_a_lock_of_the_logic_is_found(self):
        text = "const std::lock_guard lock(mutex_);\n"
        self.assertEqual(self.found(folders.locks, "menu/Menu.cpp", text), ["menu/Menu.cpp"])
        self.assertEqual(self.found(folders.locks, "platform/x11/Key.cpp", text), [])

    def test_back_end_must_not_include_the_logic(self):
        self.assertEqual(self.trespasses("platform/x11/Key.cpp", "hotkeys/HotkeyCenter.h"),
                         [("platform/x11/Key.cpp", "hotkeys")])

    def test_contract_must_not_include_the_logic(self):
        self.assertEqual(self.trespasses("platform/Platform.h", "engine/UrlSession.h"),
                         [("platform/Platform.h", "engine")])

    def test_logic_must_not_include_a_back_end(self):
        self.assertEqual(self.trespasses("engine/EngineClient.cpp", "platform/http/LoopbackSession.h"),
                         [("engine/EngineClient.cpp", "platform/http")])

    def test_logic_may_include_contracts_and_other_logic(self):
        self.assertEqual(self.trespasses("menu/MenuItems.h", "platform/Menu.h"), [])
        self.assertEqual(self.trespasses("menu/MenuItems.h", "engine/EngineStatus.h"), [])


if __name__ == "__main__":
    unittest.main()
