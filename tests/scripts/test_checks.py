"""The rules that scripts/checks reads from sources."""
import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts" / "checks"))

import layers  # noqa: E402
import lengths  # noqa: E402
import words  # noqa: E402


def lengths_of(text):
    return [(head, count) for _, count, head in lengths.functions(text)]


class Lengths(unittest.TestCase):
    def test_counts_from_the_signature_to_the_closing_brace(self):
        self.assertEqual(lengths_of("void F() {\n    G();\n}\n"), [("void F()", 3)])
        self.assertEqual(lengths_of("void F(int a,\n       int b) {\n}\n"), [("void F(int a, int b)", 3)])

    def test_tells_the_first_line(self):
        self.assertEqual(lengths.functions("int a;\n\nvoid F() {\n}\n")[0][0], 3)

    def test_looks_into_scopes(self):
        text = "namespace a {\nclass B final : public C {\n  public:\n    int D() const { return 1; }\n};\n}\n"
        self.assertEqual(lengths_of(text), [("int D() const", 1)])

    def test_counts_what_a_function_holds_as_part_of_it(self):
        text = "void F() {\n    struct S {\n        void G() {\n        }\n    };\n    auto l = [] {\n    };\n}\n"
        self.assertEqual(lengths_of(text), [("void F()", 8)])

    def test_knows_constructors_with_initializers(self):
        for text in ("A::A() : b_{1}, c_(2) {\n}\n", "A::A()\n    : b_(1), c_{2} {\n}\n"):
            self.assertEqual(len(lengths_of(text)), 1, text)

    def test_takes_tables_for_no_functions(self):
        text = "constexpr std::array<A, Size(3)> kTable{{\n    {1, F(2)},\n    {2, F(3)},\n}};\nint a[] = {\n1};\n"
        self.assertEqual(lengths_of(text), [])

    def test_knows_templates_and_trailing_returns(self):
        text = "template <class T, std::size_t N = (1)>\nauto F(T t) -> std::vector<T> {\n}\n"
        self.assertEqual([count for _, count in lengths_of(text)], [3])

    def test_is_not_misled_by_comments_literals_and_directives(self):
        text = ("// }\n#define M() {\nvoid F() {\n    /* } */ char c = '}';\n"
                "    const char* s = \"}\\\"}\";\n    auto r = R\"x(})\" } )x\";\n    int n = 1'000;\n}\n")
        self.assertEqual([count for _, count in lengths_of(text)], [6])

    def test_fails_only_above_the_limit(self):
        with tempfile.TemporaryDirectory() as folder:
            name = pathlib.Path(folder, "a.cpp")
            for inner, expected in ((lengths.MAX_LINES - 2, 0), (lengths.MAX_LINES - 1, 1)):
                name.write_text("void F() {\n" + "    G();\n" * inner + "}\n", encoding="utf-8")
                with open("/dev/null", "w", encoding="utf-8") as nowhere:
                    out, sys.stdout = sys.stdout, nowhere
                    try:
                        self.assertEqual(lengths.main([str(name)]), expected)
                    finally:
                        sys.stdout = out


class Layers(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.allowed = {"state": set(), "hw": {"state"}, "ui": {"state", "hw"}}

    def tearDown(self):
        self.folder.cleanup()

    def faults(self, layer, text):
        # The rule looks at "src/LAYER/file"; a relative name keeps that form.
        import os
        here = os.getcwd()
        os.chdir(self.folder.name)
        try:
            path = pathlib.Path("src", layer, "A.cpp")
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
            return list(layers.faults(str(path), self.allowed, {"ui"}))
        finally:
            os.chdir(here)

    def test_allows_what_the_table_allows(self):
        self.assertEqual(self.faults("hw", '#include "hw/A.h"\n#include "state/B.h"\n#include <array>\n'), [])

    def test_finds_a_forbidden_layer(self):
        self.assertEqual(len(self.faults("state", '#include "hw/A.h"\n')), 1)

    def test_finds_qt_below_the_windows(self):
        self.assertEqual(len(self.faults("hw", "#include <QString>\n#include <QtCore/QString>\n")), 2)
        self.assertEqual(self.faults("ui", "#include <QString>\n"), [])


class Words(unittest.TestCase):
    def test_finds_what_must_not_stand_in_the_project(self):
        # Put together here, so that this file passes its own rule.
        for text in ("/ro" + "ot/main", "/ho" + "me/me/zu", "/tmp" + "/tree-1/src"):
            self.assertTrue(words.EVERYWHERE.search(text), text)
        for text in ("TO" + "DO later", "FIX" + "ME", "XX" + "X: x"):
            self.assertTrue(words.IN_FILES.search(text), text)

    def test_lets_ordinary_words_pass(self):
        for text in ("special", "XXXXXXXX", "a word XXX", "root/", "/usr/share", "/home/user/x"):
            self.assertFalse(words.EVERYWHERE.search(text) or words.IN_FILES.search(text), text)


if __name__ == "__main__":
    unittest.main()
