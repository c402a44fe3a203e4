"""Looks at a page in headless Chromium: a measuring script goes into a copy of the page, the page tells in its text."""
import json
import re
import shutil
import subprocess
import tempfile
from pathlib import Path
from urllib.parse import unquote

LIMIT = 60      # seconds

# Where every picture is loaded and how wide the lines in Courier New are; errors of scripts count too.
MEASURE = """
<script>
window.addEventListener('load', function () {
  var pictures = Array.from(document.images).map(function (picture) {
    return [picture.getAttribute('src'), picture.complete && picture.naturalWidth > 0];
  });
  var lines = Array.from(document.querySelectorAll("font[face='Courier New']")).map(function (line) {
    return [line.textContent.trim(), line.getBoundingClientRect().width];
  });
  var told = document.createElement('pre');
  told.id = 'measured';
  told.textContent = encodeURIComponent(JSON.stringify({pictures: pictures, lines: lines,
      text: document.body.innerText}));
  document.body.appendChild(told);
});
</script>
"""


def installed():
    """Whether Chromium is at hand; it is optional."""
    return shutil.which("chromium") is not None


def look_at(page):
    """What the page shows: pictures (source, loaded), lines (text, width), text, and what the console said."""
    copy = page.with_name("measured_" + page.name)
    copy.write_text(page.read_text().replace("</body>", MEASURE + "</body>"))
    with tempfile.TemporaryDirectory(prefix="varnolix-chromium-") as profile:
        try:
            run = subprocess.run(
                ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--enable-logging=stderr",
                 f"--user-data-dir={profile}", "--virtual-time-budget=5000", "--dump-dom", Path(copy).as_uri()],
                capture_output=True, text=True, timeout=LIMIT, check=True, stdin=subprocess.DEVNULL)
        finally:
            copy.unlink()
    told = re.search(r'<pre id="measured">([^<]*)</pre>', run.stdout)
    if told is None:
        raise ValueError("the page told nothing: " + run.stderr[-2000:])
    seen = json.loads(unquote(told.group(1)))
    seen["console"] = [line for line in run.stderr.splitlines() if "CONSOLE" in line]
    return seen

