#!/usr/bin/env python3
"""Tests of the case files: how they are read and written, what they share, and that nothing in them lies idle."""
import glob
import os
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import cases                                                                    # noqa: E402
import jobs                                                                     # noqa: E402

TABLE = b"""the cutoff @CUTOFF@ and the format @FORMAT@

=== cases
case | CUTOFF | FORMAT
low  | 0.5    | Text
high | 0.9    | Text
page | 0.9    | HTML
=== answers
@CUTOFF@
@FORMAT@
=== tree motifs/a.txt | no last line end
>one
=== environment | FORMAT = HTML
STAND_IN_PDF=1
=== text HEAD
VARNOLIX
@FORMAT@ of it
"""


class GroupTest(unittest.TestCase):
    def group(self, text=TABLE):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        path = os.path.join(folder.name, "some.case")
        jobs.write(path, text)
        return cases.Group(path)

    def rewritten(self, lefts, text=TABLE):
        """The sections of the file after it was written anew with what the cases left."""
        group = self.group(text)
        group.rewrite({case: {"status": b"exit 0\n", **left} for case, left in lefts.items()})
        return [section for section in cases.Group(group.path).sections if section.kind == "expected"]

    def test_a_file_without_a_table_is_one_case_of_its_name(self):
        group = self.group(b"words\n\n=== answers\n1\n=== expected stdout\nout\n")
        self.assertEqual([row["case"] for row in group.rows], ["some"])
        self.assertEqual(group.pins("some"), "words")
        self.assertEqual(group.expected("some"), {"status": b"exit 0\n", "stdout": b"out\n"})

    def test_job_of_a_case(self):
        group = self.group()
        for case, files in (("low", {"answers.txt": b"0.5\nText\n"}),
                            ("page", {"answers.txt": b"0.9\nHTML\n", "environment": b"STAND_IN_PDF=1\n"})):
            with tempfile.TemporaryDirectory() as folder:
                group.lay_out(case, os.path.join(folder, "job"))
                self.assertEqual(jobs.snapshot(os.path.join(folder, "job")),
                                 {"tree/": b"", "tree/motifs/": b"", "tree/motifs/a.txt": b">one", **files})
        self.assertEqual(group.pins("page"), "the cutoff 0.9 and the format HTML")

    def test_equal_files_are_written_once(self):
        written = self.rewritten(dict.fromkeys(("low", "high", "page"), {"a": b"1\n"}))
        self.assertEqual([(section.name, section.body, section.conditions) for section in written],
                         [("a", b"1\n", {})])

    def test_values_are_named_where_files_differ(self):
        written = self.rewritten({case: {"a": b"0.9 stays\ncutoff %s\n" % cutoff}
                                  for case, cutoff in (("low", b"0.5"), ("high", b"0.9"), ("page", b"0.9"))})
        self.assertEqual([section.body for section in written], [b"0.9 stays\ncutoff @CUTOFF@\n"])

    def test_other_differences_give_sections_with_conditions(self):
        written = self.rewritten({"low": {"a": b"1\n"}, "high": {"a": b"2\n"}, "page": {"a": b"2\n", "b": b"3"}})
        self.assertEqual([(section.name, section.body, section.conditions) for section in written],
                         [("a", b"1\n", {"CUTOFF": ["0.5"]}), ("a", b"2\n", {"CUTOFF": ["0.9"]}),
                          ("b", b"3", {"FORMAT": ["HTML"]})])

    def test_cases_are_named_where_no_columns_pick_them(self):
        written = self.rewritten({"low": {"a": b"1\n"}, "high": {"a": b"2\n"}, "page": {"a": b"1\n"}})
        self.assertEqual([section.conditions for section in written],
                         [{"case": ["low", "page"]}, {"CUTOFF": ["0.9"], "FORMAT": ["Text"]}])

    def test_texts_stand_for_whole_lines(self):
        written = self.rewritten({"page": {"a": b"VARNOLIX\nHTML of it\n1\n", "b": b"no VARNOLIX\nHTML of it\n"}})
        self.assertEqual([section.body for section in written], [b"@HEAD@\n1\n", b"no VARNOLIX\nHTML of it\n"])

    def test_what_would_not_read_back_is_refused(self):
        for left in ({"a": b"a\n=== expected b\n"}, {"a": b"@CUTOFF@\n"}):
            with self.assertRaises(ValueError):
                self.rewritten({"low": left})

    def test_two_contents_and_unknown_sections_are_refused(self):
        with self.assertRaises(ValueError):
            self.group(TABLE + b"=== expected a\n1\n=== expected a | CUTOFF = 0.5\n2\n").expected("low")
        with self.assertRaises(ValueError):
            self.group(TABLE + b"=== expcted a\n1\n")


class MadeTest(unittest.TestCase):
    CALLS = b"weblogo [x]\n    PO\n    1 0\nweblogo [y]\n    PO\n    1 1\nphp5 [z]\n    <?php\n"
    LEFT = {"calls": CALLS, "i/1.jpeg": b"logo\nPO\n1 0\n", "i/2.jpeg": b"logo\nPO\n1 1\n",
            "a.html": b"<a>\n", "a.pdf": b"%PDF-1.4\n<a>\n%%EOF\n", "b.pdf": b"%PDF-1.4\n<b>\n%%EOF\n",
            "c.html.unconverted": b"<c>\n"}

    def test_files_that_follow_from_others_become_lines(self):
        self.assertEqual(cases.folded(self.LEFT), {
            "calls": self.CALLS, "a.html": b"<a>\n", "b.html": b"<b>\n", "c.html": b"<c>\n",
            "made": b"pdf a.pdf\npdf-alone b.pdf\nrenamed c.html.unconverted\nlogo 1 i/1.jpeg\nlogo 2 i/2.jpeg\n"})

    def test_they_come_back(self):
        self.assertEqual(cases.unfolded(cases.folded(self.LEFT)), self.LEFT)

    def test_any_other_content_stays(self):
        for changed in ({"a.pdf": b"%PDF-1.4\n<A>\n%%EOF\n"}, {"a.pdf": b"%PDF-1.4\n<a>\n"},
                        {"i/1.jpeg": b"logo\nPO\n2 0\n"}, {"i/1.jpeg": b""},
                        {"c.html": b"<c>\n"}, {"calls": b""}):
            left = {**self.LEFT, **changed}
            self.assertLessEqual(changed.items(), cases.folded(left).items())
            self.assertEqual(cases.unfolded(cases.folded(left)), left)

    def test_pictures_of_one_matrix_are_of_calls_of_their_own(self):
        calls = b"weblogo [x]\n    1 0\nweblogo [y]\n    1 0\n"
        folded = cases.folded({"calls": calls, "1.jpeg": b"logo\n1 0\n", "2.jpeg": b"logo\n1 0\n"})
        self.assertEqual(folded["made"], b"logo 1 1.jpeg\nlogo 2 2.jpeg\n")


class CaseFilesTest(unittest.TestCase):
    """Of all files: what no case uses would seem to be tested."""

    @classmethod
    def setUpClass(cls):
        cls.groups = list({group.path: group for group in cases.all_cases().values()}.values())

    def test_every_section_is_for_some_case(self):
        for group in self.groups:
            for section in group.sections:
                self.assertTrue(any(section.holds_for(row) for row in group.rows), (group.path, section.name))

    def test_every_text_is_used(self):
        bodies = {group.path: b"".join(section.body for section in group.sections) for group in self.groups}
        for group in self.groups:
            for section in group.sections:
                if section.kind == "text":
                    self.assertIn(b"@%s@\n" % section.name.encode(), bodies[group.path], group.path)
        for text in cases.shared_texts():
            self.assertTrue(any(b"@%s@\n" % text.name.encode() in body for body in bodies.values()), text.name)

    def test_every_input_is_shared(self):
        used = [source for group in self.groups for source in {section.source for section in group.sections}]
        for path in glob.glob(os.path.join(HERE, "inputs", "*")):
            self.assertGreater(used.count(os.path.relpath(path, HERE)), 1, path)


if __name__ == "__main__":
    unittest.main()
