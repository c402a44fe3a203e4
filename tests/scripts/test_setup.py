"""What setup.sh decides, with stand-ins for apt and for root; and what its proof says of missing tools."""
import os
import shutil
import unittest

from script_project import ScriptTest, read, write

REAL = ("bash", "basename", "cat", "dirname", "env", "grep", "head", "mkdir", "mktemp", "od", "rm", "sed", "sh", "tail",
        "timeout", "tr", "xargs")
TEXT_SET = {"g++", "cmake", "ninja-build", "libgtest-dev", "libgmock-dev", "python3"}


class Setup(ScriptTest):

    def setUp(self):
        super().setUp()
        self.bin = self.path("bin")
        os.makedirs(self.bin)
        for tool in REAL:
            os.symlink(shutil.which(tool), os.path.join(self.bin, tool))
        self.log = self.path("log")
        write(self.log, "")
        self.stand_in("apt-get", 'printf "apt-get"; printf " %s" "$@"; echo')
        self.script_stand_in("prove.sh", 'echo prove "$@"')

    def stand_in(self, name, body):
        """A command that logs what its body prints."""
        write(os.path.join(self.bin, name), f"#!/usr/bin/env bash\n{{ {body}\n}} >> '{self.log}'\n", executable=True)

    def script_stand_in(self, name, body):
        """The same in place of one of the scripts."""
        write(self.path("project", "scripts", name), f"#!/usr/bin/env bash\n{{ {body}\n}} >> '{self.log}'\n",
              executable=True)

    def machine(self, *installed, root=False, sudo=None):
        """What stands on the machine: packages, who asks, and whether sudo works (None: there is none)."""
        known = "".join(f"    {package}) echo '{package} installed' ;;\n" for package in installed)
        write(os.path.join(self.bin, "dpkg-query"),
              '#!/usr/bin/env bash\nfor package in "$@"; do case $package in\n' + known +
              "    cmake) echo 'cmake config-files' ;;\nesac; done\nexit 1\n", executable=True)
        write(os.path.join(self.bin, "id"), f"#!/bin/sh\necho {0 if root else 1000}\n", executable=True)
        if sudo is not None:
            write(os.path.join(self.bin, "sudo"),
                  f"#!/bin/sh\necho \"sudo $*\" >> '{self.log}'\n" + ('shift; exec "$@"\n' if sudo else "exit 1\n"),
                  executable=True)
            write(os.path.join(self.bin, "true"), "#!/bin/sh\n", executable=True)

    def run_setup(self, *arguments):
        """Runs setup.sh on that machine; answers the finished process and the lines of the log."""
        done = self.script("setup.sh", *arguments, env={"PATH": self.bin})
        return done, read(self.log).splitlines()

    def asked_for(self, lines):
        """The packages of the one install command."""
        commands = [line for line in lines if " install " in line and line.startswith("apt-get")]
        self.assertEqual(len(commands), 1, lines)
        self.assertIn("--no-install-recommends", commands[0])
        return set(commands[0].partition("--no-install-recommends ")[2].split())

    def test_with_all_packages_there_apt_is_not_called(self):
        self.machine(*TEXT_SET)
        done, lines = self.run_setup("--text")
        self.assertEqual((done.returncode, lines), (0, ["prove --text"]), done.stderr)

    def test_no_proof_is_asked_for_when_nothing_was_missing(self):
        self.machine(*TEXT_SET)
        done, lines = self.run_setup("--text", "--if-missing")
        self.assertEqual((done.returncode, lines), (0, []), done.stderr)

    def test_root_installs_only_what_is_missing(self):
        self.machine("g++", "python3", root=True)
        done, lines = self.run_setup("--text", "--if-missing")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(lines[0], "apt-get -q update")
        self.assertEqual(self.asked_for(lines), {"cmake", "ninja-build", "libgtest-dev", "libgmock-dev"})
        self.assertEqual(lines[-1], "prove --text")

    def test_each_choice_has_its_packages(self):
        self.machine(root=True)
        asked = {}
        for choice in ("--text", "", "--chromium"):
            write(self.log, "")
            _, lines = self.run_setup(*filter(None, [choice]))
            asked[choice] = self.asked_for(lines)
        self.assertEqual(asked["--text"], TEXT_SET)
        self.assertEqual(asked[""] - asked["--text"], {
            "python3-weblogo", "ghostscript", "php-cli", "weasyprint", "fonts-liberation", "fonts-dejavu-core",
            "poppler-utils", "r-base-core", "r-cran-ggplot2", "r-cran-ggdendro", "r-cran-dendextend", "r-cran-ape"})
        self.assertEqual(asked["--chromium"] - asked[""], {"chromium"})

    def test_others_install_through_sudo(self):
        self.machine("g++", sudo=True)
        done, lines = self.run_setup("--text")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("sudo -n apt-get -q update", lines)
        self.assertEqual(self.asked_for(lines), TEXT_SET - {"g++"})

    def test_without_root_and_sudo_the_one_command_is_printed(self):
        for sudo in (None, False):
            with self.subTest(sudo=sudo):
                self.machine("g++", "cmake", "python3", sudo=sudo)
                done, lines = self.run_setup("--text")
                self.assertEqual(done.returncode, 1)
                self.assertIn("    apt-get update && apt-get install -y --no-install-recommends "
                              "ninja-build libgtest-dev libgmock-dev\n", done.stderr)
                self.assertFalse([line for line in lines if line.startswith(("apt-get", "prove"))])

    def test_a_failed_installation_ends_it(self):
        self.machine(root=True)
        self.stand_in("apt-get", 'echo "apt-get $2"; [[ $2 == update ]]')
        done, lines = self.run_setup("--text")
        self.assertNotEqual(done.returncode, 0)
        self.assertFalse([line for line in lines if line.startswith("prove")])

    def test_a_source_that_is_down_does_not_end_it(self):
        self.machine(root=True)
        self.stand_in("apt-get", 'echo "apt-get $*"; [[ $2 != update ]]')
        done, lines = self.run_setup("--text")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(lines[-1], "prove --text")

    def test_check_installs_nothing(self):
        self.machine(root=True)
        for arguments, proof in ((["--check"], "prove"), (["--text", "--check"], "prove --text")):
            with self.subTest(arguments):
                write(self.log, "")
                done, lines = self.run_setup(*arguments)
                self.assertEqual((done.returncode, lines), (0, [proof]))

    def test_a_failed_proof_is_the_exit_status(self):
        self.machine(*TEXT_SET)
        self.script_stand_in("prove.sh", "exit 1")
        self.assertEqual(self.run_setup("--text")[0].returncode, 1)

    def test_a_system_without_debian_packages_gets_their_names(self):
        done, _ = self.run_setup("--text")
        self.assertEqual(done.returncode, 1)
        self.assertIn("g++ cmake ninja-build libgtest-dev libgmock-dev python3", done.stderr)

    def test_refuses_unknown_options(self):
        for script in ("setup.sh", "demo.sh", "test.sh"):
            with self.subTest(script):
                done = self.script(script, "--pdf", env={"PATH": self.bin})
                self.assertEqual(done.returncode, 2)
                self.assertIn("unknown option --pdf", done.stderr)


class Proof(ScriptTest):

    def test_names_what_to_look_at_for_each_tool_that_fails(self):
        shutil.rmtree(self.path("project", "tools"))
        write(self.path("bin", "Rscript"), "#!/bin/sh\necho 'no package called ape' >&2\nexit 1\n", executable=True)
        done = self.script("prove.sh", env={**os.environ, "PATH": f"{self.path('bin')}:{os.environ['PATH']}"})
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stdout, r"compiler +ok\n")
        self.assertRegex(done.stdout, r"logo +FAILED: look at the packages python3-weblogo and ghostscript")
        self.assertRegex(done.stdout, r"pdf +FAILED: look at the packages php-cli and weasyprint")
        self.assertRegex(done.stdout, r"tree +FAILED: look at the packages r-base-core")
        self.assertIn("| no package called ape", done.stdout)

    def test_text_needs_the_compiler_alone(self):
        shutil.rmtree(self.path("project", "tools"))
        done = self.script("prove.sh", "--text")
        self.assertEqual((done.returncode, done.stdout), (0, "== Proof\n  compiler   ok\n"))


if __name__ == "__main__":
    unittest.main()
