"""try-fresh.sh with stand-ins for debootstrap, the chroot and git: what is run, what is told, what is left."""
import os
import signal
import subprocess
import time
import unittest

from script_project import ScriptTest, read, write

STAND_INS = {
    "id": "echo 0",
    "debootstrap": 'echo "debootstrap $2 $4" >> "$LOG"; mkdir -p "$3"/{etc/apt/apt.conf.d,var/cache/apt/archives,root}',
    "apt-get": "echo 'http://mirror.test/updates/ Other'; echo 'http://mirror.test/somewhere/ Debian'",
    "apt-config": "echo 'Acquire::http::Proxy \"http://proxy.test:1\";'; echo 'DPkg::Post-Invoke:: \"true\";'",
    "git": 'case "$*" in *archive*) tar -c -T /dev/null ;; *) echo " M changed" ;; esac',
    "unshare": 'shift 8; echo "inside $*" >> "$LOG"; [[ -z ${SLOW:-} ]] || sleep 60; [[ $* != *"${BAD:-none}"* ]]',
}


class TryFresh(ScriptTest):

    def setUp(self):
        super().setUp()
        for name, body in STAND_INS.items():
            write(self.path("bin", name), f"#!/usr/bin/env bash\n{body}\n", executable=True)
        self.log = self.path("log")
        write(self.log, "")
        self.chroots = self.path("chroots")
        os.makedirs(self.chroots)

    def surroundings(self, **variables):
        """Environment with the stand-ins first on the path."""
        kept = {name: value for name, value in os.environ.items() if not name.lower().endswith("_proxy")}
        return {**kept, "PATH": f"{self.path('bin')}:{os.environ['PATH']}", "LOG": self.log, "TMPDIR": self.chroots,
                **variables}

    def try_fresh(self, *arguments, **variables):
        """Runs the script; answers the finished process and what was done, chroots by the name ROOT."""
        done = self.script("try-fresh.sh", *arguments, env=self.surroundings(**variables))
        lines = read(self.log).splitlines()
        return done, [" ".join("ROOT" if word.startswith(self.chroots) else word for word in line.split())
                      for line in lines]

    def test_both_scripts_run_in_a_bare_system_that_is_removed(self):
        done, lines = self.try_fresh("trixie")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(lines, ["debootstrap trixie http://mirror.test/somewhere/",
                                 "inside ROOT /root/varnolix/scripts/demo.sh",
                                 "inside ROOT /root/varnolix/scripts/test.sh"])
        self.assertEqual(os.listdir(self.chroots), [])
        self.assertRegex(done.stdout, r"(?m)^  trixie demo.sh: passed after \d+ s; by then \d+ MB fetched, \d+ MB more")
        self.assertRegex(done.stdout, r"(?m)^  trixie test.sh: passed after")
        self.assertIn("Changes that are not committed are left out", done.stdout)

    def test_choices_are_handed_on(self):
        done, lines = self.try_fresh("--demo-only", "--text", "--mirror", "http://own.test/", "bookworm")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(lines, ["debootstrap bookworm http://own.test/",
                                 "inside ROOT /root/varnolix/scripts/demo.sh --text"])

    def test_apt_in_the_chroot_gets_the_settings_of_this_machine_but_no_hooks(self):
        done, _ = self.try_fresh("trixie", "--demo-only", "--keep", https_proxy="http://other.test:2")
        root, = os.listdir(self.chroots)
        self.assertIn(f"Kept: {self.chroots}/{root}", done.stdout)
        self.assertEqual(read(os.path.join(self.chroots, root, "etc/apt/apt.conf.d/90mirror")).splitlines(),
                         ['Acquire::http::Proxy "http://proxy.test:1";',
                          'Acquire::https::Proxy "http://other.test:2";'])
        self.assertEqual(read(os.path.join(self.chroots, root, "etc/apt/sources.list")),
                         "deb http://mirror.test/somewhere/ trixie main\n")

    def test_a_script_that_fails_fails_it_and_the_other_is_tried(self):
        for bad in ("demo.sh", "test.sh"):
            with self.subTest(bad):
                write(self.log, "")
                done, lines = self.try_fresh("trixie", BAD=bad)
                self.assertEqual((done.returncode, len(lines)), (1, 3))
                self.assertIn(f"  trixie {bad}: FAILED (status 1) after", done.stdout)
                self.assertEqual(done.stdout.count("passed after"), 1)
                self.assertEqual(os.listdir(self.chroots), [])

    def test_a_system_that_cannot_be_made_ends_it(self):
        write(self.path("bin", "debootstrap"), "#!/bin/sh\necho no such release\nexit 1\n", executable=True)
        done, lines = self.try_fresh("trixie")
        self.assertEqual((done.returncode, lines, os.listdir(self.chroots)), (1, [], []))
        self.assertIn("no such release", done.stderr)

    def test_a_signal_ends_it_and_leaves_nothing(self):
        process = subprocess.Popen([self.path("project/scripts/try-fresh.sh"), "trixie"], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                                   env=self.surroundings(SLOW="1"))
        self.addCleanup(os.killpg, process.pid, signal.SIGKILL)
        end = time.monotonic() + 60
        while "inside" not in read(self.log) and time.monotonic() < end:
            time.sleep(0.05)
        process.terminate()
        self.assertEqual(process.wait(30), 143)
        self.assertEqual(os.listdir(self.chroots), [])

    def test_only_root_can(self):
        write(self.path("bin", "id"), "#!/bin/sh\necho 1000\n", executable=True)
        done, _ = self.try_fresh("trixie")
        self.assertEqual((done.returncode, done.stderr), (1, "try-fresh.sh: only root can make a chroot\n"))

    def test_refuses_wrong_use(self):
        for arguments, message in (([], "a release must be named"), (["trixie", "bookworm"], "one release at a time"),
                                   (["../x"], "../x is no name of a release"), (["--mirror"], "--mirror needs"),
                                   (["--fast", "trixie"], "unknown option --fast")):
            with self.subTest(arguments):
                done, lines = self.try_fresh(*arguments)
                self.assertEqual((done.returncode, lines), (2, []))
                self.assertIn(message, done.stderr)


if __name__ == "__main__":
    unittest.main()
