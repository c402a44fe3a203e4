"""The companion and the dialogue give the same reports, byte for byte."""
import os
import sys
import unittest

from companion import ROOT, CompanionTest, read, reports, write

sys.path.insert(0, os.path.join(ROOT, "tests", "golden"))
import cases                                                                    # noqa: E402

# The smallest number of inputs of the golden cases that the companion must find two motifs in.
MOST_INPUTS_SKIPPED = 0.5


def golden_inputs():
    """The different inputs of the golden cases: motif files, and the collection if there is one."""
    found = {}
    for name, group in cases.all_cases().items():
        tree = group.contents("tree", name)
        files = tuple((path, data) for path, data in sorted(tree.items()) if path.startswith("motifs/"))
        collection = tuple((path, data) for path, data in sorted(tree.items()) if path.startswith("databases/"))[:1]
        if files:
            found.setdefault((files, collection), name)
    return found


class Dialogue(CompanionTest):

    def assert_same(self, job):
        """The dialogue with the job's answers writes what the companion wrote."""
        ours = reports(os.path.join(job, "result"))
        self.assertTrue(any(name.endswith(".txt") for name in ours))
        again = self.dialogue(job)
        self.assertEqual(set(ours), set(again))
        for name, text in ours.items():
            self.assertEqual(text, again[name], name)

    def test_golden_inputs(self):
        inputs, skipped = golden_inputs(), 0
        self.assertGreater(len(inputs), 30)
        for number, ((files, collection), name) in enumerate(inputs.items()):
            with self.subTest(name):
                folder = self.path("in", str(number))
                for path, data in files + collection:
                    write(os.path.join(folder, path), data)
                options = [f"--collection={os.path.join(folder, path)}" for path, _ in collection]
                options += ["--type=global-only"] if number % 4 == 3 else []
                done = self.companion("run", "--skip-bad", "--merge", "--cutoff=0.75", "-o", f"job{number}", *options,
                                      *[os.path.join(folder, path) for path, _ in files])
                if done.returncode == 1 and b"at least two motifs" in done.stderr:
                    skipped += 1
                    continue
                self.assertEqual(done.returncode, 0, done.stderr.decode())
                self.assert_same(self.path(f"job{number}"))
        self.assertLess(skipped, len(inputs) * MOST_INPUTS_SKIPPED)

    def test_every_format_and_type(self):
        samples = [os.path.join(ROOT, "examples", "motifs", name) for name in ("promoters.txt", "enhancers.txt")]
        collection = os.path.join(ROOT, "examples", "collection", "sample_transfac.txt")
        text_only = os.environ.get("VARNOLIX_TEXT_ONLY")
        for number, options in enumerate((["--format=text"], ["--format=text", "--type=global-only", "--cutoff=0.9"],
                                          ["--format=text", "--top=3", "--best=2", "--threads=1"],
                                          ["--format=text" if text_only else "--format=html", "--best=3"])):
            with self.subTest(options):
                self.assert_same(self.job(*options, "--merge", "--collection", collection, *samples,
                                          folder=f"job {number}"))

    def test_an_installed_collection(self):
        job = self.job("--collection", "none", os.path.join(ROOT, "examples", "motifs", "promoters.txt"))
        self.assertIn(b"\n14\n", read(os.path.join(job, "answers.txt")))
        self.assert_same(job)


if __name__ == "__main__":
    unittest.main()
