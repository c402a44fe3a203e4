"""The sample motifs and the sample collections keep what the program and the demo need of them."""
import os
import re
import unittest

from script_project import ROOT, ScriptTest, read

EXAMPLES = os.path.join(ROOT, "examples")


def files_of(folder):
    """Paths of the text files of a folder below examples/."""
    top = os.path.join(EXAMPLES, folder)
    return [os.path.join(top, name) for name in sorted(os.listdir(top)) if name.endswith(".txt")]


class Samples(ScriptTest):

    def test_every_motif_file_is_closed_by_an_empty_line(self):
        for path in files_of("motifs"):
            with self.subTest(path):
                self.assertTrue(read(path).endswith("\n\n"))

    def test_no_block_is_longer_than_a_block_may_be(self):
        for path in files_of("motifs"):
            for block in read(path).strip().split("\n\n"):
                with self.subTest(path=path, block=block):
                    self.assertLessEqual(block.count("\n") + 1, 31)

    def test_names_fit_beside_the_tree(self):
        # R cuts the labels of the fan at the edge of the picture, at its top and foot first.
        for path in files_of("motifs"):
            for name in re.findall(r"(?m)^(?:>|DE +)(\S+)", read(path)):
                with self.subTest(path=path, name=name):
                    self.assertLessEqual(len(name), 10)

    def test_a_whole_file_name_has_no_blank(self):
        self.assertFalse([path for path in files_of("motifs") if " " in os.path.basename(path)])

    def test_every_header_of_a_collection_says_sample(self):
        for path in files_of("collection"):
            headers = re.findall(r"(?m)^(?:>|AC|ID|NA|BF|Protein).*", read(path))
            self.assertTrue(headers)
            for header in headers:
                with self.subTest(header):
                    self.assertIn("sample", header.lower())

    def test_every_collection_can_be_installed(self):
        for name, file, motifs in (("jasparAll", "sample_jaspar.txt", 20), ("transfac", "sample_transfac.txt", 12),
                                   ("uniprobeMouse", "sample_uniprobe.txt", 10)):
            with self.subTest(name):
                done = self.script("install-collection.sh", name, os.path.join(EXAMPLES, "collection", file))
                self.assertIn(f"{name}: {motifs} motifs in ", done.stdout, done.stderr)


if __name__ == "__main__":
    unittest.main()
