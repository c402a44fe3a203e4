"""Tests of tools/bin/php5 with the real PHP."""
import subprocess

from support import TOOLS, ToolCase


class Php5Test(ToolCase):
    needs = {"php": "php-cli"}

    def test_runs_the_script_with_its_arguments_and_status(self):
        script = self.folder / "script's name.php"
        script.write_text("<?php echo $argv[1] . '|' . $argv[2]; exit(7);")
        run = subprocess.run([TOOLS / "bin/php5", script, "two words", "$x'"],
                             capture_output=True, timeout=30)
        self.assertEqual(run.stdout, b"two words|$x'")
        self.assertEqual(run.returncode, 7)
