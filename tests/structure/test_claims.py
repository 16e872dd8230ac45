"""Each absolute sentence of the README and of docs names the test that shows it, in claims.txt."""
import unittest
from pathlib import Path

import claims

ROOT = Path(__file__).resolve().parents[2]
PAGES = ["README.md", *(f"docs/{path.name}" for path in sorted((ROOT / "docs").glob("*.md")))]
TABLE = claims.read((Path(__file__).parent / "claims.txt").read_text())


def all_tests():
    found = set()
    for folder in ("tests", "speech/tests"):
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in (".cpp", ".py"):
                found |= claims.tests_in(path.relative_to(ROOT).as_posix(), path.read_text())
    return found


class ClaimsTest(unittest.TestCase):
    maxDiff = None

    def test_the_table_has_each_page(self):
        self.assertEqual(sorted(TABLE), sorted(PAGES))

    def test_each_absolute_sentence_is_in_the_table_and_none_that_is_gone(self):
        for page in PAGES:
            with self.subTest(page):
                self.assertEqual(sorted(TABLE[page]), sorted(claims.absolute((ROOT / page).read_text())))

    def test_each_sentence_has_a_test_or_a_reason_for_having_none(self):
        bare = [sentence for page in TABLE.values() for sentence, lines in page.items() if not lines]
        self.assertEqual(bare, [])

    def test_each_test_that_is_named_is_there(self):
        named = {line for page in TABLE.values() for lines in page.values() for line in lines
                 if not claims.is_reason(line)}
        self.assertEqual(sorted(named - all_tests()), [])


class ReadingTest(unittest.TestCase):
    def absolute(self, page):
        return claims.absolute(page)

    def test_a_sentence_of_the_text_is_found(self):
        self.assertEqual(self.absolute("It works.\nIt never\nfails. It stops."), ["It never fails."])

    def test_a_line_of_a_list_is_found(self):
        self.assertEqual(self.absolute("- one\n- nothing else\n1. any other"), ["nothing else", "any other"])

    def test_a_cell_of_a_table_is_found(self):
        self.assertEqual(self.absolute("| a | no wake-up |\n|---|---|\n| b | c |"), ["no wake-up"])

    def test_code_and_headings_are_none(self):
        self.assertEqual(self.absolute("# Nothing\n\n    any --command\n\nSay `none` here."), [])

    def test_a_test_is_known_by_its_name(self):
        self.assertEqual(claims.tests_in("a/FooTest.cpp", "TEST_F(FooTest, Works) {\nTEST_P(Bar,\n     Runs) {"),
                         {"FooTest.Works", "Bar.Runs"})
        self.assertEqual(claims.tests_in("a/test_b.py", "def test_c(x):\n    def test_d(self):\n"),
                         {"a/test_b.py test_c", "a/test_b.py test_d"})


if __name__ == "__main__":
    unittest.main()
