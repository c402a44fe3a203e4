"""The manual pages: they are there for every command, man shows them, and they name every option of --help."""
import gzip
import os
import re
import shutil
import subprocess
import unittest

from installation import LIMIT, ROOT, InstallationTest, read

NEEDED = ("help2man", "lowdown", "man", "lexgrog")
MISSING = [tool for tool in NEEDED if shutil.which(tool) is None]
OPTION = re.compile(r"(?m)^ +(-\w, |)(--[a-z][a-z-]*)(=\S+)?")
COMMAND = re.compile(r"(?m)^  ([a-z][a-z-]*)")


def commands_in(text):
    """The names in the section of a help that lists commands."""
    section = re.search(r"(?m)^(?:Subc|C)ommands:\n((?:.+\n)+)", text)
    return COMMAND.findall(section.group(1)) if section else []


@unittest.skipIf(MISSING and os.environ.get("VARNOLIX_TEXT_ONLY") == "1", f"not installed: {', '.join(MISSING)}")
class ManualPages(InstallationTest):

    def page(self, name):
        """The path of an installed page."""
        return os.path.join(self.prefix, "share/man/man1", name + ".1.gz")

    def shown(self, name):
        """What man shows of a page, in one column of words."""
        done = subprocess.run(["man", "-E", "UTF-8", "-l", self.page(name)], check=True, capture_output=True, text=True,
                              timeout=LIMIT, env={**os.environ, "MANWIDTH": "300", "LC_ALL": "C.UTF-8"})
        return re.sub(r".\x08", "", done.stdout)

    def helps(self, *words):
        """The help of a command and of all commands below it, by the words that call them."""
        text = self.companion(*words, "--help").stdout
        found = {words: text}
        for name in commands_in(text):
            found.update(self.helps(*words, name))
        return found

    def test_every_command_has_a_page_with_all_of_its_options(self):
        helps = self.helps()
        self.assertIn(("collections", "install"), helps)
        self.assertGreater(len(helps), 5)
        for words, text in helps.items():
            name = "-".join(("varnolix-job", *words))
            with self.subTest(name):
                shown = self.shown(name)
                options = OPTION.findall(text)
                self.assertTrue(options)
                for short, long, value in options:
                    self.assertRegex(shown, rf"(?m)^ +{short}{re.escape(long + value)}(\s|$)")
                for command in commands_in(text):
                    self.assertRegex(shown, rf"(?m)^ +{command}(\s|$)")
                self.assertIn(text.splitlines()[0].removeprefix("Usage: "), shown)
        pages = {name.removesuffix(".1.gz") for name in os.listdir(os.path.dirname(self.page("")))}
        self.assertEqual(pages, {"varnolix"} | {"-".join(("varnolix-job", *words)) for words in helps})

    def test_the_page_of_the_dialogue_is_the_manual(self):
        shown = re.sub(r"\s+", " ", self.shown("varnolix"))
        with open(os.path.join(ROOT, "docs", "manual.md"), encoding="utf-8") as file:
            text = file.read()
        for heading in re.findall(r"(?m)^##+ (.*)$", text):
            self.assertIn(heading.replace("`", ""), shown)
        questions = re.findall(r"(?m)^Please, enter .*:$", text)
        self.assertGreater(len(questions), 5)
        for question in questions:
            self.assertIn(question, shown)
        self.assertNotIn(".md>", shown)

    def test_mandb_finds_what_the_pages_are_about(self):
        for path in os.listdir(os.path.dirname(self.page(""))):
            name = path.removesuffix(".1.gz")
            with self.subTest(name):
                done = subprocess.run(["lexgrog", self.page(name)], check=False, capture_output=True, text=True,
                                      timeout=LIMIT)
                self.assertRegex(done.stdout, rf': "{name} - \w.+"')

    def test_compressed_pages_have_no_name_and_no_time(self):
        data = read(self.page("varnolix"))
        self.assertTrue(gzip.decompress(data).startswith(b"'\\\" t\n"))
        self.assertEqual((data[3], data[4:8]), (0, b"\0\0\0\0"))


if __name__ == "__main__":
    unittest.main()
