"""The source archive of package.sh, and what try-package.sh does, with stand-ins for debootstrap and the chroot."""
import hashlib
import os
import shutil
import subprocess
import tarfile
import unittest

from script_project import LIMIT, ScriptTest, read, write
from test_try_fresh import STAND_INS

GIT = shutil.which("git")


class Package(ScriptTest):

    def git(self, *arguments):
        """Runs git in the copy of the project."""
        subprocess.run([GIT, "-c", "user.name=test", "-c", "user.email=test@example.com", *arguments],
                       cwd=self.project, check=True, capture_output=True, timeout=LIMIT)

    def repository(self):
        """Makes the copy of the project a repository with one commit, with the little that the archive needs."""
        write(self.path("project/CMakeLists.txt"), "project(varnolix VERSION 7.8.9 LANGUAGES CXX)\n")
        write(self.path("project/packaging/source_commit.txt"), "$Format:%H %ct$\n")
        write(self.path("project/.gitattributes"), "/packaging/source_commit.txt export-subst\n")
        self.git("init", "-q")
        self.git("add", ".")
        self.git("commit", "-q", "-m", "first")

    @unittest.skipUnless(GIT, "git is not installed")
    def test_the_archive_has_the_commit_and_the_same_bytes_each_time(self):
        self.repository()
        write(self.path("project/CMakeLists.txt"), "project(varnolix VERSION 0.0.0 LANGUAGES CXX)\n")
        sums = set()
        for folder in ("one", "two"):
            done = self.script("package.sh", "--source", self.path(folder))
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertIn("Changes that are not committed are left out", done.stdout)
            with open(self.path(folder, "varnolix-7.8.9.tar.gz"), "rb") as file:
                data = file.read()
            sums.add(hashlib.sha256(data).hexdigest())
        self.assertEqual(len(sums), 1)
        with tarfile.open(self.path("one/varnolix-7.8.9.tar.gz")) as archive:
            named = archive.extractfile("varnolix-7.8.9/packaging/source_commit.txt").read().decode()
        self.assertRegex(named, r"\A[0-9a-f]{40} \d+\n\Z")

    @unittest.skipUnless(GIT, "git is not installed")
    def test_sources_without_a_repository_make_no_archive(self):
        done = self.script("package.sh", "--source", self.path("packages"))
        self.assertEqual((done.returncode, "these sources are no repository" in done.stderr), (1, True), done.stderr)

    def test_refuses_wrong_use(self):
        for script, arguments, message in (("package.sh", ["--from"], "--from needs an archive"),
                                           ("package.sh", ["a", "b"], "one folder at a time"),
                                           ("package.sh", ["--fast"], "unknown option --fast"),
                                           ("try-package.sh", [], "a release must be named"),
                                           ("try-package.sh", ["--packages"], "--packages needs a folder"),
                                           ("try-package.sh", ["trixie", "bookworm"], "one release at a time")):
            with self.subTest(arguments):
                done = self.script(script, *arguments)
                self.assertEqual(done.returncode, 2)
                self.assertIn(message, done.stderr)

    def try_package(self, *arguments, **variables):
        """Runs try-package.sh with stand-ins; answers the finished process and what was done."""
        for name, body in STAND_INS.items():
            write(self.path("bin", name), f"#!/usr/bin/env bash\n{body}\n", executable=True)
        write(self.path("log"), "")
        os.makedirs(self.path("chroots"), exist_ok=True)
        write(self.path("packages/varnolix_1_amd64.deb"), "package\n")
        done = self.script("try-package.sh", "trixie", "--packages", self.path("packages"), *arguments,
                           env={**os.environ, "PATH": f"{self.path('bin')}:{os.environ['PATH']}",
                                "LOG": self.path("log"), "TMPDIR": self.path("chroots"), **variables})
        return done, [" ".join("ROOT" if word.startswith(self.path("chroots")) else word for word in line.split())
                      for line in read(self.path("log")).splitlines()]

    def test_packages_are_tried_in_a_chroot_that_is_removed(self):
        for arguments, text_only in (([], "false"), (["--text"], "true")):
            done, lines = self.try_package(*arguments)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertEqual(lines, ["debootstrap trixie http://mirror.test/somewhere/",
                                     f"inside ROOT bash /root/scripts/try-package.sh --installed {text_only}"])
            self.assertEqual(os.listdir(self.path("chroots")), [])

    def test_the_chroot_gets_the_packages_and_the_scripts(self):
        self.try_package("--keep")
        root, = os.listdir(self.path("chroots"))
        self.assertEqual(read(self.path("chroots", root, "root/packages/varnolix_1_amd64.deb")), "package\n")
        self.assertEqual(sorted(os.listdir(self.path("chroots", root, "root/scripts"))),
                         ["common.sh", "fresh_system.sh", "try-package.sh"])

    def test_a_trial_that_fails_fails_it(self):
        done, _ = self.try_package(BAD="--installed")
        self.assertEqual(done.returncode, 1)
        self.assertNotIn("installed, run and removed", done.stdout)


if __name__ == "__main__":
    unittest.main()
