"""Downloads made into motif files: the real program reads every motif of them back."""
import os
import re
import subprocess
import sys
import unittest

from script_project import LIMIT, PROGRAM, ScriptTest, read, write

COUNT = 12
JASPAR_DOWNLOAD = "".join(f">MA{number:04}.1 FOS::JUN Mus musculus; Homo sapiens\n"
                          "A [ 4 19 0 0 7 ]\nC [ 16 0 20 0 5 ]\nG [ 0 1 0 20 6 ]\nT [ 0 0 0 0 2 ]\n"
                          for number in range(COUNT))
TRANSFAC_DOWNLOAD = "".join(f"AC  M{number:05}\nXX\nID  V$SOX_2\nXX\nNA  Sox 2\nXX\nOS  Mus musculus\nXX\n"
                            "P0      A      C      G      T\n01 1 0 0 3 A\n02 0 1 0 0 C\n03 0 0 1 0 G\n04 1 1 0 0 M\n"
                            "XX\n//\n" for number in range(COUNT))
MEME_DOWNLOAD = "MEME version 4\n\n" + "".join(
    f"MOTIF M{number} a name of many words\nletter-probability matrix: alength= 4 w= 4\n"
    "1 0 0 0\n0 1.0e+00 0 0\n0 0 1 0\n.5 .5 0 0\n\n" for number in range(COUNT))


class ConvertCollection(ScriptTest):

    def convert(self, *arguments):
        """Converts; answers the finished process."""
        script = os.path.join(self.project, "scripts", "convert_collection.py")
        return subprocess.run([sys.executable, script, *arguments], capture_output=True, text=True, timeout=LIMIT,
                              check=False)

    def motifs_read(self, text):
        """What the program's table counts for a motif file of that text."""
        write(self.path("job", "motifs", "file.txt"), text)
        os.makedirs(self.path("job", "result"), exist_ok=True)
        answers = ["1", "1", "1", "0.9", "1", self.path("job", "motifs", ""), "file.txt", "10", "14", "N", "N", "All",
                   "Text", self.top]
        done = subprocess.run([PROGRAM], input="\n".join(answers) + "\n", cwd=self.top, capture_output=True, text=True,
                              timeout=LIMIT, check=False)
        found = re.search(r"(?m)^file\.txt(\d+) ", done.stdout)
        return int(found[1]) if found else 0

    def test_the_program_reads_every_converted_motif(self):
        for text in (JASPAR_DOWNLOAD, TRANSFAC_DOWNLOAD, MEME_DOWNLOAD):
            with self.subTest(text=text[:40]):
                write(self.path("download.txt"), text)
                self.assertLess(self.motifs_read(text), COUNT)
                done = self.convert("jaspar", self.path("download.txt"))
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertEqual(self.motifs_read(done.stdout), COUNT)

    def test_a_motif_file_has_two_words_in_a_header(self):
        write(self.path("download.txt"), JASPAR_DOWNLOAD)
        headers = re.findall("(?m)^>.*", self.convert("jaspar", self.path("download.txt")).stdout)
        self.assertEqual(headers[:2], [">MA0000.1 FOS::JUN", ">MA0001.1 FOS::JUN"])

    def test_a_collection_keeps_the_taxon(self):
        write(self.path("download.txt"), JASPAR_DOWNLOAD)
        self.assertIn(">MA0000.1 FOS::JUN Mus musculus; Homo sapiens\n",
                      self.convert("--taxon", "jaspar", self.path("download.txt")).stdout)
        self.assertIn("OS  Mus musculus; Homo sapiens\n",
                      self.convert("--taxon", "transfac", self.path("download.txt")).stdout)

    def test_refuses_wrong_use(self):
        write(self.path("download.txt"), JASPAR_DOWNLOAD)
        for arguments in ([], ["jaspar"], ["transfac", self.path("download.txt")], ["meme", self.path("download.txt")],
                          ["jaspar", self.path("download.txt"), "--taxon"]):
            with self.subTest(arguments):
                done = self.convert(*arguments)
                self.assertEqual((done.returncode, done.stdout), (2, ""))
                self.assertIn("convert_collection.py jaspar FILE", done.stderr)


if __name__ == "__main__":
    unittest.main()
