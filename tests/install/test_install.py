"""What `cmake --install` puts where, and that a run needs nothing else: the prefix may be anywhere and may move."""
import os
import re
import stat
import subprocess
import unittest

from installation import BUILD, LIMIT, ROOT, InstallationTest, files_below, install, read, write

HEADED_PATH = re.compile(rb"^(?:home|built|packages)='(.*)'$", re.MULTILINE)

IDENTITY = re.compile(r"^J_\d{4}-\d\d-\d\d_[1-9]\d{3}_")


class Installation(InstallationTest):

    def job(self, prefix=None, folder="job"):
        """Runs a job with the installed companion; answers its folder."""
        self.companion("run", "-q", "--cutoff", "0.75", "-o", folder, *self.examples(prefix), prefix=prefix)
        return self.path(folder)

    def assert_refers_to(self, job, prefix):
        """Every link of the job folder, and every path in its start script, is below the prefix."""
        links = [os.path.join(job, name) for name in ("motifs/weblogo-3.4", *files_below(job))
                 if os.path.islink(os.path.join(job, name))]
        paths = [os.readlink(link) for link in links] + [path.decode() for path in
                                                         HEADED_PATH.findall(read(os.path.join(job, "run")))]
        self.assertIn(os.path.join(prefix, "libexec/varnolix/weblogo-3.4"), paths)
        self.assertIn(os.path.join(prefix, "share/varnolix"), paths)
        self.assertIn(os.path.join(prefix, "bin/varnolix"), paths)
        for path in paths:
            self.assertTrue(path.startswith(prefix + "/"), path)
        self.assertTrue(os.access(os.path.join(job, "motifs/weblogo-3.4/weblogo"), os.X_OK))

    def test_a_job_runs_with_the_installed_files_alone(self):
        job = self.job()
        self.assert_refers_to(job, self.prefix)
        self.assertTrue(read(os.path.join(job, "matches.tsv")).count(b"\n") > 10)
        # The page needs its template.
        self.assertIn(read(os.path.join(self.prefix, "share/varnolix/tools/page/page.css")),
                      read(os.path.join(job, "index.html")))

    def test_the_start_script_repeats_the_job(self):
        job = self.job()
        first, result = os.path.join(job, "first"), os.path.join(job, "result")
        os.rename(result, first)
        os.mkdir(result)
        done = subprocess.run([os.path.join(job, "run"), os.path.join(job, "answers.txt")], cwd="/", check=False,
                              env=self.surroundings(), capture_output=True, text=True, timeout=LIMIT)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(*({IDENTITY.sub("", name) for name in os.listdir(folder)} for folder in (result, first)))
        self.assertIn("Results.txt", {IDENTITY.sub("", name) for name in os.listdir(result)})

    def test_the_prefix_can_be_moved(self):
        prefix, moved = self.path("first"), self.path("it's moved")
        install(prefix)
        before = read(os.path.join(self.job(prefix, "before"), "matches.tsv"))
        os.rename(prefix, moved)
        job = self.job(moved, "after")
        self.assertEqual(read(os.path.join(job, "matches.tsv")), before)
        # An apostrophe is written in another way in the start script.
        self.assertIn(b"it'\\''s moved/share/varnolix'", read(os.path.join(job, "run")))
        self.assertEqual(os.readlink(os.path.join(job, "motifs/weblogo-3.4")), moved + "/libexec/varnolix/weblogo-3.4")

    def test_a_prefix_within_the_sources_uses_its_own_files(self):
        write(self.path("tools", "prince.php"), "<?php\n")
        prefix = self.path("prefix")
        install(prefix)
        self.assert_refers_to(self.job(prefix), prefix)

    def test_destdir_holds_the_same_files(self):
        install("/usr", self.path("destination"))
        self.assertEqual(os.listdir(self.path("destination")), ["usr"])
        self.assertEqual(files_below(self.path("destination", "usr")), files_below(self.prefix))

    def test_everything_is_where_the_standard_wants_it(self):
        found = files_below(self.prefix)
        self.assertEqual({name.split("/")[0] for name in found}, {"bin", "libexec", "share"})
        for name in found:
            with self.subTest(name):
                path = os.path.join(self.prefix, name)
                mode = stat.S_IMODE(os.stat(path).st_mode)
                is_program = read(path).startswith((b"#!", b"\x7fELF"))
                self.assertEqual(mode, 0o755 if is_program else 0o644)
                # What depends on the machine is not shared between machines.
                self.assertFalse(name.startswith("share/") and read(path).startswith(b"\x7fELF"))
                if not read(path).startswith(b"\x7fELF"):
                    self.assertNotIn(os.fsencode(ROOT), read(path))
        for name in ("share/bash-completion/completions/varnolix-job", "share/doc/varnolix/docs/manual.md",
                     "share/varnolix/databases/README.md"):
            self.assertIn(name, found)

    def test_the_tools_of_the_sources_are_all_installed_or_left_out_on_purpose(self):
        tracked = files_below(os.path.join(ROOT, "tools"))
        left_out = re.compile(r"completion/|logo_client/|weblogo-3\.4/|.*__pycache__/")
        for name in tracked:
            if not left_out.match(name):
                with self.subTest(name):
                    self.assertTrue(os.path.exists(os.path.join(self.prefix, "share/varnolix/tools", name)))

    def test_collections_are_installed_for_the_user_and_the_nearest_is_used(self):
        sample = os.path.join(self.prefix, "share/doc/varnolix/examples/collection/sample_jaspar.txt")
        name, place = "jasparPlants", "databases/jaspar/jaspar_pfm_plants.txt"
        system = os.path.join(self.prefix, "share/varnolix", place)
        user = self.path("home/.local/share/varnolix", place)
        self.assertIn(f"{name} is not installed", self.companion("run", "--collection", name, *self.examples(),
                                                              status=1).stderr.replace("the collection ", ""))
        self.companion("collections", "install", name, sample)
        self.assertTrue(os.path.isfile(user))
        self.assertFalse(os.path.exists(system))
        self.companion("collections", "install", name, sample, "--to", os.path.join(self.prefix, "share/varnolix"))
        self.addCleanup(os.remove, system)

        # Each place has another number of motifs from now on.
        write(user, ">U1 u\nA [ 1 ]\nC [ 0 ]\nG [ 0 ]\nT [ 0 ]\n")
        listed = self.companion("collections").stdout
        self.assertRegex(listed, rf"(?m)^ +5  {name} +1 motif, user: {re.escape(user)}$")
        self.companion("folder", "job")
        self.assertEqual(os.readlink(self.path("job", place)), user)
        self.companion("run", "-q", "--collection", name, "-o", "with-collection", *self.examples())
        self.assertEqual(os.readlink(self.path("with-collection", place)), user)

        self.companion("collections", "install", name, sample, XDG_DATA_HOME=self.path("data"))
        self.assertTrue(os.path.isfile(self.path("data/varnolix", place)))
        os.remove(user)
        listed = self.companion("collections").stdout
        self.assertRegex(listed, rf"(?m)^ +5  {name} +\d+ motifs, system: {re.escape(system)}$")
        self.companion("folder", "job")
        self.assertEqual(os.readlink(self.path("job", place)), system)

    def test_the_build_tree_keeps_using_its_own_files(self):
        done = subprocess.run([os.path.join(BUILD, "varnolix-job"), "folder", self.path("job")], check=False,
                              env=self.surroundings(), capture_output=True, text=True, timeout=LIMIT)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(os.fsencode(ROOT), HEADED_PATH.findall(read(self.path("job", "run"))))


if __name__ == "__main__":
    unittest.main()
