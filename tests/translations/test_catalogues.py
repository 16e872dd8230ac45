"""Each text of the program has its entry in each catalogue, with the same places to fill."""
import os
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ET
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CATALOGUES = sorted((ROOT / "translations").glob("tavin_*.ts"))
LANGUAGES = ["ar", "de", "en", "es", "fr", "it", "nl", "pl", "pt", "pt_BR"]
PLACE = re.compile(r"%\d")
MNEMONIC = re.compile(r"&(?=\S)")
SIGNS = "⌥⌃⇧"
# A path or a shortcut.
ISOLATED = re.compile(r"(?:(?<=in )|(?<=folder )|(?<=Shortcut: )|(?<=⚠︎ ))%\d"
                      r"|^%\d(?= (?:cannot|could not) be (?:written|removed): )")


def messages(path):
    """What the catalogue has: (context, text, situation) to its translation element."""
    return {(context.findtext("name"), message.findtext("source"), message.findtext("comment") or ""):
            message.find("translation")
            for context in ET.parse(path).getroot().iter("context")
            for message in context.iter("message")}


def in_the_source():
    """The same of what lupdate finds in the source."""
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder, "tavin_en.ts")
        subprocess.run([os.environ["TAVIN_LUPDATE"], "-silent", "-locations", "none", ROOT / "src",
                        "-ts", path], check=True, timeout=50)
        return messages(path)


class CataloguesTest(unittest.TestCase):
    maxDiff = None

    def each(self):
        for path in CATALOGUES:
            for key, translation in messages(path).items():
                with self.subTest(path.name, text=key[1], situation=key[2]):
                    yield path, key, translation.text or ""

    def test_each_language_is_built(self):
        self.assertEqual([path.stem.removeprefix("tavin_") for path in CATALOGUES], LANGUAGES)
        built = (ROOT / "translations/CMakeLists.txt").read_text()
        self.assertEqual(sorted(re.search(r"set\(languages (.*)\)", built)[1].split()), LANGUAGES)

    def test_each_catalogue_has_an_entry_for_each_text_and_none_beside(self):
        texts = set(in_the_source())
        self.assertGreater(len(texts), 50)
        for path in CATALOGUES:
            with self.subTest(path.name):
                self.assertEqual(set(messages(path)), texts)

    def test_each_entry_is_finished(self):
        for path in CATALOGUES:
            for key, translation in messages(path).items():
                with self.subTest(path.name, text=key[1]):
                    self.assertTrue(translation.text)
                    self.assertIsNone(translation.get("type"))

    def test_translations_have_the_same_places_to_fill(self):
        for _, (_, text, _), translation in self.each():
            self.assertEqual(sorted(PLACE.findall(translation)), sorted(PLACE.findall(text)))

    def test_translations_have_as_many_access_keys(self):
        for _, (_, text, _), translation in self.each():
            self.assertEqual(len(MNEMONIC.findall(translation)), len(MNEMONIC.findall(text)))

    def test_translations_begin_with_the_same_warning_sign_and_have_no_tab_or_line_break(self):
        for _, (_, text, _), translation in self.each():
            self.assertEqual(translation.startswith("⚠︎ "), text.startswith("⚠︎ "))
            self.assertNotRegex(translation, r"[\t\n]|^\s|\s$")

    def test_the_note_explains_the_signs_of_the_presets(self):
        for _, (_, text, _), translation in self.each():
            if text == "Hear a second, robotic voice too?":
                self.assertEqual([sign for sign in SIGNS if sign in translation], list(SIGNS))

    def test_no_line_begins_with_a_sign_that_belongs_to_the_word_before(self):
        """French, German and Spanish write a space there, which must not break."""
        for path, _, translation in self.each():
            self.assertNotRegex(translation, r" (?:[:;?!»]|%(?!\d))|« ", path.name)

    def test_arabic_keeps_a_path_and_a_shortcut_in_their_order(self):
        """The signs at their ends would go to the other side."""
        for path, (_, text, _), translation in self.each():
            for place in ISOLATED.findall(text) if path.stem == "tavin_ar" else ():
                self.assertIn(f"\u2066{place}\u2069", translation)

    def test_no_catalogue_speaks_of_another_system(self):
        for _, _, translation in self.each():
            self.assertNotRegex(translation, "macOS|Keychain|Spoken Content|Privacy & Security")

    def test_the_names_of_the_presets_are_in_no_catalogue(self):
        for _, (_, text, _), _ in self.each():
            self.assertNotIn(text, {"⌥ Esc", "⌃ Esc", "⌃⌥ R"})

    def test_a_catalogue_that_lacks_a_text_is_found(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "tavin_de.ts")
            shutil.copy(ROOT / "translations/tavin_de.ts", path)
            path.write_text(re.sub(r"<message>.*?</message>", "", path.read_text(), 1, re.DOTALL))
            self.assertNotEqual(set(messages(path)), set(in_the_source()))


class SourceTest(unittest.TestCase):
    def test_the_logic_has_no_sentence_that_the_catalogues_do_not_see(self):
        """What is shown is marked; what is logged or a fault is said in one of these calls."""
        for folder in ("app", "menu"):
            for path in (ROOT / "src" / folder).glob("*.cpp"):
                for literal in re.findall(r'QStringLiteral\(\s*"([^"]*)"', path.read_text()):
                    with self.subTest(path.name):
                        self.assertNotRegex(literal, r"[A-Za-z]{2,} |^[A-Z][a-z]+$(?<!Tavin)(?<!OpenAI)")


if __name__ == "__main__":
    unittest.main()
