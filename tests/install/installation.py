"""Installs the build into a folder of its own, for tests of what is installed."""
import os
import shutil
import subprocess
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILD = os.path.dirname(os.path.abspath(os.environ.get("VARNOLIX_PROGRAM",
                                                       os.path.join(ROOT, "build", "release", "varnolix"))))
LIMIT = 120                             # seconds for any one command


def install(prefix, destination=""):
    """Runs cmake --install, without what it prints."""
    subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix], env={**os.environ, "DESTDIR": destination},
                   check=True, stdout=subprocess.DEVNULL, timeout=LIMIT)


def files_below(folder):
    """The paths of all files and links below a folder, relative to it."""
    return sorted(os.path.relpath(os.path.join(place, name), folder)
                  for place, _, names in os.walk(folder) for name in names)


def read(path):
    """The bytes of a file."""
    with open(path, "rb") as file:
        return file.read()


def write(path, text):
    """Writes a file and the folders above it."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


class InstallationTest(unittest.TestCase):
    """Installs once for all tests of a class, and gives each test an empty folder to work in."""

    @classmethod
    def setUpClass(cls):
        cls.base = os.path.realpath(tempfile.mkdtemp(prefix="varnolix-install-"))
        cls.addClassCleanup(shutil.rmtree, cls.base)
        cls.prefix = os.path.join(cls.base, "prefix")
        install(cls.prefix)

    def setUp(self):
        self.top = tempfile.mkdtemp(dir=self.base)

    def path(self, *parts):
        """A path in the test's folder."""
        return os.path.join(self.top, *parts)

    def surroundings(self, **variables):
        """An environment that names no other installation, with a home in the test's folder."""
        kept = {name: value for name, value in os.environ.items() if not name.startswith(("VARNOLIX_", "XDG_"))}
        return {**kept, "HOME": self.path("home"), **variables}

    def companion(self, *arguments, prefix=None, status=0, **variables):
        """Runs the installed companion in the test's folder; answers the finished process."""
        done = subprocess.run([os.path.join(prefix or self.prefix, "bin", "varnolix-job"), *arguments], cwd=self.top,
                              env=self.surroundings(**variables), stdin=subprocess.DEVNULL, capture_output=True,
                              text=True, timeout=LIMIT, check=False)
        self.assertEqual(done.returncode, status, done.stderr)
        return done

    def examples(self, prefix=None):
        """The installed motif files."""
        folder = os.path.join(prefix or self.prefix, "share", "doc", "varnolix", "examples", "motifs")
        return [os.path.join(folder, name) for name in ("promoters.txt", "enhancers.txt")]
