"""The rules that scripts/checks reads from sources, and how the cases of a run are counted."""
import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "scripts" / "checks"), str(ROOT / "scripts")]

import cases  # noqa: E402
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
            return [*layers.faults(str(path), self.allowed, {"ui"}), *layers.own_header_late(str(path))]
        finally:
            os.chdir(here)

    def test_allows_what_the_table_allows(self):
        self.assertEqual(self.faults("hw", '#include "hw/A.h"\n#include "state/B.h"\n#include <array>\n'), [])

    def test_finds_a_forbidden_layer(self):
        self.assertEqual(len(self.faults("state", '#include "hw/A.h"\n')), 1)

    def test_finds_qt_below_the_windows(self):
        self.assertEqual(len(self.faults("hw", "#include <QString>\n#include <QtCore/QString>\n")), 2)
        self.assertEqual(self.faults("ui", "#include <QString>\n"), [])


    def test_wants_the_header_of_a_source_before_all_others(self):
        header = pathlib.Path(self.folder.name, "src", "hw", "A.h")
        header.parent.mkdir(parents=True)
        header.write_text("", encoding="utf-8")
        self.assertEqual(self.faults("hw", '#include "hw/A.h"\n#include <array>\n'), [])
        self.assertEqual(len(self.faults("hw", '#include <array>\n#include "hw/A.h"\n')), 1)
        self.assertEqual(len(self.faults("hw", "int a;\n")), 1)


class Cases(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.reports = pathlib.Path(self.folder.name)

    def tearDown(self):
        self.folder.cleanup()

    def counted(self, name, status, report=None):
        if report is not None:
            (self.reports / f"{name}.xml").write_text(f"<testsuites>{report}</testsuites>", encoding="utf-8")
        entry = cases.ElementTree.Element("testcase", name=name, status=status)
        return tuple(map(int, cases.of_entry(entry, self.reports)))

    PASSED = '<testcase name="a" status="run" result="completed"/>'
    FAILED = '<testcase name="b" status="run" result="completed"><failure message="m"/></testcase>'
    SKIPPED = '<testcase name="c" status="run" result="skipped"><skipped message="m"/></testcase>'
    DISABLED = '<testcase name="d" status="notrun" result="suppressed"/>'

    def test_counts_the_cases_of_an_executable(self):
        report = self.PASSED * 3 + self.FAILED * 2 + self.SKIPPED + self.DISABLED
        self.assertEqual(self.counted("test_a.1of2", "fail", report), (3, 2, 2))
        self.assertEqual(self.counted("test_a.1of2", "run", self.PASSED), (1, 0, 0))

    def test_an_executable_that_ends_badly_is_a_failure(self):
        self.assertEqual(self.counted("test_a.2of2", "fail", self.PASSED), (1, 1, 0))

    def test_no_report_is_a_failure(self):
        self.assertEqual(self.counted("test_b.1of2", "run"), (0, 1, 0))
        self.assertEqual(self.counted("test_c.1of2", "fail", "<testcase"), (0, 1, 0))

    def test_other_entries_count_as_one(self):
        self.assertEqual(self.counted("Scripts.Checks", "run"), (1, 0, 0))
        self.assertEqual(self.counted("Scripts.Checks", "fail"), (0, 1, 0))
        self.assertEqual(self.counted("Scripts.Checks", "disabled"), (0, 0, 1))

    def test_shows_what_failed_and_what_never_ended(self):
        text = ("[ RUN      ] A.Passes\nnoise\n[       OK ] A.Passes (0 ms)\n[ RUN      ] A.Fails\nwhy\n"
                "[  FAILED  ] A.Fails (0 ms)\n[ RUN      ] A.Dies\nlast words\n")
        shown = cases.unfinished(text)
        self.assertNotIn("noise", shown)
        for line in ("why", "[ RUN      ] A.Dies", "last words"):
            self.assertIn(line, shown)


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
