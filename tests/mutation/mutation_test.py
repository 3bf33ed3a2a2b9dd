"""Checks that the mutants made by hand fit the program, and that the operators work."""

import re
import unittest

from mutants import EQUIVALENT, by_hand
from operators import generated, mutants_of


class Mutants(unittest.TestCase):
    def test_those_made_by_hand_fit_the_program(self):
        names = [mutant.name for mutant in by_hand()]  # raises if one does not
        self.assertEqual(len(names), len(set(names)))

    def test_the_equivalent_ones_are_made(self):
        names = [mutant.name for mutant in generated()]
        for pattern in EQUIVALENT:
            self.assertTrue(any(re.match(pattern, name) for name in names), pattern)

    def test_each_operator(self):
        for line, *wanted in [
            ("a < b;", "a <= b;"),
            ("a += b;", "a -= b;", ""),
            ("A | B;", "A & B;"),
            ("a && !b;", "a || !b;", "a && b;"),
            ("{0.0019, x};", "{0.0018, x};", "{0.0020, x};"),
            ("if (a(b)) {", "if (!(a(b))) {"),
            ("x = a ? f(b) : c;", "x = a ? c : f(b);", ""),
            ("return a.b(c);", "return {};"),
            # nothing to change
            ("std::vector<int> a = b;",),
            ('x(L"a + 1");  // a + 1', ""),
            ("static_assert(a == 1);",),
        ]:
            with self.subTest(line=line):
                made = mutants_of("file", f"{{\n  {line}\n}}\n")
                self.assertEqual(sorted(mutant.name.partition(" -> ")[2] for mutant in made), sorted(wanted))


if __name__ == "__main__":
    unittest.main()
