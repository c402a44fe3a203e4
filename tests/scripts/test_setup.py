"""What setup.sh decides, with stand-ins for apt and for root; and what its proof says of missing tools."""
import os
import re
import shutil
import unittest

from script_project import ScriptTest, read, write

REAL = ("awk", "bash", "basename", "cat", "dirname", "env", "grep", "head", "mkdir", "mktemp", "od", "rm", "sed", "sh",
        "tail", "timeout", "tr", "xargs")
# No test lacks these.
LIBRARIES = {"parallel", "libcli11-dev", "nlohmann-json3-dev", "zlib1g-dev", "libssl-dev"}
TEXT_SET = {"g++", "cmake", "ninja-build", "python3"} | LIBRARIES
DEFAULT_SET = TEXT_SET | {"python3-weblogo", "ghostscript", "php-cli", "weasyprint", "fonts-liberation",
                          "fonts-dejavu-core", "r-base-core", "r-cran-ggplot2", "r-cran-ggdendro",
                          "r-cran-dendextend", "r-cran-ape", "libjs-jquery", "libjs-jquery-datatables", "node-d3"}
SMALLEST_BLAS = {"libblas-dev"}     # keeps a dependency of WebLogo small
GOOGLE_TEST = {"libgtest-dev", "libgmock-dev"}
PACKAGES = {"dpkg-dev", "file", "help2man", "lowdown", "lintian"}
TOOL_TESTS = {"help2man", "lowdown", "man-db", "poppler-utils", "python3-biopython", "python3-pil", "python3-selenium",
              "chromium-driver", "slurm-wlm", "munge"}
CHECKS = {"clang", "libomp-dev", "libclang-rt-dev", "clang-format", "clang-tidy", "shellcheck"}


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

    def machine(self, *installed, root=False, sudo=None, release_lacks=()):
        """What stands on the machine: packages, who asks, and whether sudo works (None: there is none).

        The release has all packages but those that it lacks. The first of these has a name there and no candidate.
        """
        lacking = "".join(f"    {package}) {':' if place else 'policy none'} ;;\n"
                          for place, package in enumerate(release_lacks))
        write(os.path.join(self.bin, "apt-cache"),
              '#!/usr/bin/env bash\n[[ $1 == policy && $LC_ALL == C ]] || exit 9\nshift\n'
              'policy() { printf \'%s:\\n  Installed: (none)\\n  Candidate: %s\\n  Version table:\\n     1.0 500\\n\' '
              '"$package" "${1/none/(none)}"; }\n'
              'for package in "$@"; do case $package in\n' + lacking + '    *) policy 1.0 ;;\nesac; done\n',
              executable=True)
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
        self.machine("g++", "python3", *LIBRARIES, root=True)
        done, lines = self.run_setup("--text", "--if-missing")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(lines[0], "apt-get -q update")
        self.assertEqual(self.asked_for(lines), {"cmake", "ninja-build"})
        self.assertEqual(lines[-1], "prove --text")

    def test_each_choice_has_its_packages(self):
        self.machine(root=True)
        for arguments, expected in ((["--text"], TEXT_SET), ([], DEFAULT_SET),
                                    (["--chromium"], DEFAULT_SET | {"chromium"}),
                                    (["--firefox"], DEFAULT_SET | {"firefox-esr"}),
                                    (["--text", "--tests"], TEXT_SET | GOOGLE_TEST),
                                    (["--text", "--checks"], TEXT_SET | CHECKS),
                                    (["--text", "--packages"], TEXT_SET | PACKAGES),
                                    (["--tests"], DEFAULT_SET | GOOGLE_TEST | TOOL_TESTS)):
            with self.subTest(arguments):
                write(self.log, "")
                _, lines = self.run_setup(*arguments)
                self.assertEqual(self.asked_for(lines) - SMALLEST_BLAS, expected)
                self.assertEqual(SMALLEST_BLAS <= self.asked_for(lines), "python3-weblogo" in expected)

    def test_what_the_release_lacks_is_named_and_the_rest_installed(self):
        lacking = ("r-cran-dendextend", "chromium")
        self.machine(root=True, release_lacks=lacking)
        done, lines = self.run_setup("--chromium")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.asked_for(lines), (DEFAULT_SET | SMALLEST_BLAS) - set(lacking))
        self.assertRegex(done.stdout, "(?m)^  r-cran-dendextend +not to be had: trees are drawn with the stand-in of")
        self.assertRegex(done.stdout, "(?m)^  chromium +not to be had: WeasyPrint makes the PDF files")
        self.assertEqual(done.stdout.count("not to be had"), 2)

    def test_every_package_has_a_word_on_what_goes_without_it(self):
        everything = DEFAULT_SET | GOOGLE_TEST | CHECKS | TOOL_TESTS | PACKAGES | {"chromium", "firefox-esr"}
        self.machine(root=True, release_lacks=sorted(everything))
        done, lines = self.run_setup("--chromium", "--firefox", "--tests", "--checks", "--packages")
        told = dict(re.findall(r"(?m)^  (\S+) +not to be had: (\w.+)$", done.stdout))
        self.assertEqual(set(told), everything)
        self.assertEqual(lines, ["apt-get -q update", "prove"])

    def test_nobody_is_told_to_install_what_the_release_lacks(self):
        self.machine("g++", "cmake", *LIBRARIES, release_lacks=["python3"])
        done, _ = self.run_setup("--text")
        self.assertEqual(done.returncode, 1)
        self.assertIn("--no-install-recommends ninja-build\n", done.stderr)

    def with_r(self, has_dendextend=False):
        """An R that can install packages and has the real dendextend or not."""
        write(os.path.join(self.bin, "Rscript"), f"#!/bin/sh\nexit {0 if has_dendextend else 1}\n", executable=True)
        self.stand_in("R", 'echo R "$@"; mkdir "${4#--library=}/dendextend"')

    def test_the_stand_in_is_installed_where_r_lacks_the_real_package(self):
        library = self.path("project", "build", "R-library")
        command = f"R CMD INSTALL --no-docs --library={library} {self.path('project', 'tools', 'R', 'dendextend')}"
        self.machine(*DEFAULT_SET - {"r-cran-dendextend"}, release_lacks=["r-cran-dendextend"])
        self.with_r()
        for arguments, expected in ((["--if-missing"], [command, "prove"]),     # neither root nor sudo is asked for
                                    (["--if-missing"], []),
                                    ([], [command, "prove"])):
            with self.subTest(arguments):
                write(self.log, "")
                done, lines = self.run_setup(*arguments)
                self.assertEqual((done.returncode, lines), (0, expected), done.stderr)

    def test_the_real_package_takes_the_place_of_the_stand_in(self):
        stand_in = self.path("project", "build", "R-library", "dendextend")
        os.makedirs(stand_in)
        self.machine(*DEFAULT_SET)
        self.with_r(has_dendextend=True)
        done, lines = self.run_setup()
        self.assertEqual((done.returncode, lines), (0, ["prove"]), done.stderr)
        self.assertFalse(os.path.exists(stand_in))

    def test_a_real_package_from_elsewhere_will_do(self):
        self.machine(*DEFAULT_SET - {"r-cran-dendextend"}, release_lacks=["r-cran-dendextend"])
        self.with_r(has_dendextend=True)
        self.assertEqual(self.run_setup("--if-missing")[1], [])

    def test_text_needs_no_stand_in(self):
        self.machine(*TEXT_SET)
        self.with_r()
        self.assertEqual(self.run_setup("--text")[1], ["prove --text"])

    def test_others_install_through_sudo(self):
        self.machine("g++", sudo=True)
        done, lines = self.run_setup("--text")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("sudo -n apt-get -q update", lines)
        self.assertEqual(self.asked_for(lines), TEXT_SET - {"g++"})

    def test_without_root_and_sudo_the_one_command_is_printed(self):
        for sudo in (None, False):
            with self.subTest(sudo=sudo):
                self.machine("g++", "cmake", "python3", *LIBRARIES, sudo=sudo)
                done, lines = self.run_setup("--text")
                self.assertEqual(done.returncode, 1)
                self.assertIn("    apt-get update && apt-get install -y --no-install-recommends "
                              "ninja-build\n", done.stderr)
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
        self.assertIn("g++ cmake ninja-build python3", done.stderr)

    def test_check_tells_what_is_missing(self):
        self.machine(*DEFAULT_SET - {"r-cran-dendextend", "php-cli"}, release_lacks=["r-cran-dendextend"])
        self.with_r()
        done, lines = self.run_setup("--check")
        self.assertEqual((done.returncode, lines), (0, ["prove"]), done.stderr)
        self.assertRegex(done.stdout, "(?m)^  r-cran-dendextend +not to be had: trees are drawn with the stand-in")
        self.assertRegex(done.stdout, "(?m)^  php-cli +not installed: no PDF files are made$")

    def test_check_tells_nothing_where_all_is_there(self):
        self.machine(*DEFAULT_SET)
        self.assertEqual(self.run_setup("--check")[0].stdout, "")

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
