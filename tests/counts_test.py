"""Holds the numbers of docs/testing.md to what counts.py counts.

    python3 tests/counts_test.py
"""

import unittest

import counts


class Counts(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.numbers = counts.numbers()

    def test_the_document_says_what_is_counted(self):
        text = counts.DOCUMENT.read_text()
        told = counts.NUMBER.findall(text)
        self.assertTrue({"portable", "windows", "e2e", "release", "fuzz", "mutants.windows"} <= set(told), told)
        self.assertEqual(text, counts.with_numbers(text, self.numbers), "tests/counts.py writes them anew")

    def test_nothing_that_is_counted_is_missing(self):
        self.assertEqual([name for name, number in self.numbers.items() if number == 0], [])

    def test_a_number_is_written_between_its_marks(self):
        text = "<!--a-->7<!----> tests, <!--b.c/d.tsv--><!----> rows"
        written = "<!--a-->8<!----> tests, <!--b.c/d.tsv-->1,234<!----> rows"
        self.assertEqual(counts.with_numbers(text, {"a": 8, "b.c/d.tsv": 1234, "unused": 1}), written)

    def test_a_number_that_nobody_counts_is_refused(self):
        with self.assertRaisesRegex(counts.CannotCount, "nobody counts: b"):
            counts.with_numbers("<!--a-->7<!----> <!--b-->8<!---->", {"a": 7})

    def test_each_test_of_a_source_counts_once(self):
        self.assertEqual(counts.google_tests("TEST(A, B) {}\nTEST_F(A, C) {}\n// TEST(A, D)\nTESTED(1)\n"), 2)

    def test_tests_that_are_made_from_a_list_are_refused(self):
        for text in ("TEST_P(A, B) {}", "TYPED_TEST(A, B) {}", "TEST(A, B) {}\nINSTANTIATE_TEST_SUITE_P(A, B, C);"):
            with self.assertRaises(counts.CannotCount):
                counts.google_tests(text)


if __name__ == "__main__":
    unittest.main()
