"""A copy of the project's scripts in a folder of its own, for tests that must not touch the real collections."""
import os
import shutil
import stat
import subprocess
import tempfile
import unittest
from unittest import mock

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PROGRAM = os.path.abspath(os.environ.get("VARNOLIX_PROGRAM", os.path.join(ROOT, "build", "release", "varnolix")))
COMPANION = os.path.join(os.path.dirname(PROGRAM), "varnolix-job")
LIMIT = 120                             # seconds for any one script


def write(path, text, executable=False):
    """Writes a file and the folders above it."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
    if executable:
        os.chmod(path, os.stat(path).st_mode | stat.S_IXUSR)


def read(path):
    """The text of a file."""
    with open(path, encoding="utf-8") as file:
        return file.read()


class ScriptTest(unittest.TestCase):
    """Gives each test a project folder: the scripts, empty stand-ins of the tools, no collection installed."""

    def setUp(self):
        environment = mock.patch.dict(os.environ)
        environment.start()
        self.addCleanup(environment.stop)
        for name in [name for name in os.environ if name.startswith("VARNOLIX_")]:
            del os.environ[name]
        os.environ["VARNOLIX_JOB"] = COMPANION
        self.top = os.path.realpath(tempfile.mkdtemp(prefix="varnolix-scripts-"))
        os.environ["XDG_DATA_HOME"] = os.path.join(self.top, "data")   # the user's own collections are not there
        self.addCleanup(shutil.rmtree, self.top)
        self.project = os.path.join(self.top, "project")
        shutil.copytree(os.path.join(ROOT, "scripts"), os.path.join(self.project, "scripts"),
                        ignore=shutil.ignore_patterns("__pycache__"))
        for tool in ("weblogo-3.4/weblogo", "bin/php5"):
            write(os.path.join(self.project, "tools", tool), "#!/bin/sh\n", executable=True)
        write(os.path.join(self.project, "tools", "prince.php"), "<?php\n")
        write(os.path.join(self.project, "tools", "prince-calls-may-overlap"), "yes\n")
        shutil.copytree(os.path.join(ROOT, "tools", "job_folder"), os.path.join(self.project, "tools", "job_folder"))
        os.makedirs(os.path.join(self.project, "databases"))

    def use_real_program(self):
        """Puts the real program where the scripts look for it."""
        os.makedirs(self.path("project", "build", "release"))
        os.symlink(PROGRAM, self.path("project", "build", "release", "varnolix"))

    def path(self, *parts):
        """A path below the test's folder."""
        return os.path.join(self.top, *parts)

    def script(self, name, *arguments, cwd=None, env=None):
        """Runs a script of the copy; answers the finished process, output as text."""
        return subprocess.run([os.path.join(self.project, "scripts", name), *arguments], cwd=cwd or self.top, env=env,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=LIMIT, check=False)
