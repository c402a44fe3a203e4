"""The unit that names the commit: from git, from an archive of the sources, and written only if it has changed."""
import os
import re
import shutil
import subprocess
import tempfile
import unittest

from installation import LIMIT, ROOT, read, write

SCRIPT = os.path.join(ROOT, "packaging", "source_commit.cmake")
NAMED = re.compile(rb'return "(.*)";')
GIT = shutil.which("git")


class Commit(unittest.TestCase):

    def setUp(self):
        self.top = tempfile.mkdtemp(prefix="varnolix-commit-")
        self.addCleanup(shutil.rmtree, self.top)
        self.unit = os.path.join(self.top, "unit.cpp")
        self.sources = os.path.join(self.top, "sources")
        write(os.path.join(self.sources, "packaging/source_commit.txt"), "$Format:%H %ct$\n")
        write(os.path.join(self.sources, ".gitattributes"), "/packaging/source_commit.txt export-subst\n")
        write(os.path.join(self.sources, "file"), "first\n")

    def git(self, *arguments):
        """Runs git in the sources; answers what it printed."""
        return subprocess.run([GIT, "-c", "user.name=test", "-c", "user.email=test@example.com", *arguments],
                              cwd=self.sources, check=True, capture_output=True, timeout=LIMIT).stdout

    def commit(self, sources=None):
        """Writes the unit; answers the commit that it names."""
        subprocess.run(["cmake", "-D", f"SOURCE={sources or self.sources}", "-D", f"GIT={GIT or ''}", "-D",
                        f"OUTPUT={self.unit}", "-P", SCRIPT], check=True, capture_output=True, timeout=LIMIT)
        return NAMED.search(read(self.unit)).group(1).decode()

    def test_sources_without_git_and_without_a_commit(self):
        self.assertEqual(self.commit(), "unknown")

    @unittest.skipUnless(GIT, "git is not installed")
    def test_a_repository_and_its_archive(self):
        self.git("init", "-q")
        self.git("add", ".")
        self.git("commit", "-q", "-m", "first")
        head = self.git("rev-parse", "HEAD").decode()[:12]
        self.assertEqual(self.commit(), head)
        written = os.stat(self.unit).st_mtime_ns
        write(os.path.join(self.sources, "untracked"), "new\n")
        self.assertEqual(self.commit(), head)
        self.assertEqual(os.stat(self.unit).st_mtime_ns, written)
        write(os.path.join(self.sources, "file"), "second\n")
        self.assertEqual(self.commit(), head + "-dirty")

        self.git("archive", "--output", "../archive.tar", "HEAD")
        unpacked = os.path.join(self.top, "unpacked")
        shutil.unpack_archive(os.path.join(self.top, "archive.tar"), unpacked)
        self.assertEqual(self.commit(unpacked), head)

    @unittest.skipUnless(GIT, "git is not installed")
    def test_an_archive_within_another_repository_is_not_mistaken(self):
        self.git("init", "-q")
        self.git("commit", "-q", "--allow-empty", "-m", "of somebody else")
        inner = os.path.join(self.sources, "inner")
        write(os.path.join(inner, "packaging/source_commit.txt"), "0123456789abcdef0123 1700000000\n")
        self.assertEqual(self.commit(inner), "0123456789ab")


if __name__ == "__main__":
    unittest.main()
