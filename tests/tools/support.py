"""What the tests of the outside tools share."""
import os
import shutil
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TOOLS = ROOT / "tools"
AWKWARD_NAME = "a job's \"own\" & folder"


class ToolCase(unittest.TestCase):
    """A test with real outside tools and a folder of its own, of an awkward name.

    A missing tool fails the test, since the reports need it. Only where the
    surroundings say VARNOLIX_TEXT_ONLY=1 is it skipped, and says so.
    """
    needs = {}   # command: the Debian package that has it

    def setUp(self):
        missing = [f"{command} (package {package})"
                   for command, package in self.needs.items()
                   if not shutil.which(command)]
        if missing:
            text = "not installed: " + ", ".join(missing)
            if os.environ.get("VARNOLIX_TEXT_ONLY") == "1":
                self.skipTest("VARNOLIX_TEXT_ONLY=1; " + text)
            self.fail(text)
        holder = tempfile.TemporaryDirectory(prefix="varnolix-tools-")
        self.addCleanup(holder.cleanup)
        self.holder = Path(holder.name)
        self.folder = self.holder / AWKWARD_NAME
        self.folder.mkdir()
