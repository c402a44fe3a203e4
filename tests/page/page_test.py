"""What the tests of the page share: a browser with the page of a job, and what holds for every page."""
import os
import re
import shutil
import tempfile
import unittest

TEXT_ONLY = os.environ.get("VARNOLIX_TEXT_ONLY")
if not TEXT_ONLY:
    from selenium.webdriver.common.by import By

    from browser import Chromium
    from page_job import Job

SIZES = ((390, 844), (1280, 900), (1920, 1080))
LEAST_CONTRAST = 4.5
MOST_BYTES = 10_000_000                 # of the page of a large job
MOST_SECONDS = 2                        # until it is open


def skip_text_only():
    """For setUpModule: skips tests that need a browser where there is none."""
    if TEXT_ONLY:
        raise unittest.SkipTest("VARNOLIX_TEXT_ONLY is set")


# The texts whose contrast with the nearest background is too weak: relative luminance as the WCAG has it.
CONTRAST = """
const parse = (text) => (text.match(/[\\d.]+/g) || []).map(Number);
const luminance = (colour) => colour.slice(0, 3).map((c) => c / 255)
    .map((c) => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4)
    .reduce((sum, c, place) => sum + c * [0.2126, 0.7152, 0.0722][place], 0);
const behind = (node) => {
    for (; node; node = node.parentElement) {
        const colour = parse(getComputedStyle(node).backgroundColor);
        if (colour.length === 3 || colour[3] === 1) return colour;
    }
    return [255, 255, 255];
};
const weak = [];
for (const node of document.querySelectorAll('body *')) {
    const hasText = [...node.childNodes].some((child) => child.nodeType === 3 && child.data.trim());
    if (!hasText || !node.getClientRects().length || node.closest('script, .offscreen, .skip')) continue;
    const style = getComputedStyle(node);
    const isSvg = node.namespaceURI.endsWith('svg');
    const colours = [parse(isSvg ? style.fill : style.color), behind(node)];
    const [one, other] = colours.map(luminance).sort((a, b) => b - a);
    const contrast = (one + 0.05) / (other + 0.05);
    if (contrast < arguments[0]) weak.push(`${node.tagName} ${contrast.toFixed(2)} ${node.textContent.slice(0, 40)}`);
}
return [...new Set(weak)];
"""


class PageTest(unittest.TestCase):
    """A browser with the page of one job, which each test opens anew."""

    arguments = ()
    files = {}
    env = None

    @classmethod
    def setUpClass(cls):
        cls.job = Job(*cls.arguments, files=cls.files, env=cls.env)
        cls.addClassCleanup(cls.job.remove)
        downloads = tempfile.mkdtemp(prefix="varnolix-downloads-")
        cls.addClassCleanup(shutil.rmtree, downloads)
        cls.browser = Chromium(downloads)
        cls.addClassCleanup(cls.browser.quit)

    def setUp(self):
        self.browser.resize(1280, 900)
        self.open()

    def tearDown(self):
        self.assertEqual([entry["message"] for entry in self.browser.get_log("browser")], [])
        for address in self.browser.requests():
            self.assertRegex(address.partition("#")[0],
                             rf"^(file://{re.escape(self.job.folder)}/(index|more)\.html|about:blank|data:.*|blob:.*)$")

    def open(self, hash_=""):
        """Loads the page afresh."""
        self.browser.get("about:blank")
        self.browser.get(self.job.address + hash_)
        self.assertEqual(self.js("return document.documentElement.dataset.ready"), "yes")

    def js(self, script, *arguments):
        return self.browser.execute_script(script, *arguments)

    def one(self, selector):
        return self.browser.find_element(By.CSS_SELECTOR, selector)

    def click(self, selector):
        element = self.one(selector)
        self.js("arguments[0].scrollIntoView({block: 'center', behavior: 'instant'})", element)
        element.click()

    def fill(self, selector, text):
        """Types into a field, or chooses from a list, and waits until the filter has worked."""
        self.js("const [field, text] = arguments; field.value = text;"
                "field.dispatchEvent(new Event('input', {bubbles: true}))", self.one(selector), text)
        self.js("return new Promise((done) => setTimeout(done, 250))")

    def assert_small_and_quick(self):
        """For large jobs: the page may be sent by e-mail, and opens at once."""
        self.assertLess(os.path.getsize(self.job.path("index.html")), MOST_BYTES)
        seconds = []
        for _ in range(3):
            self.open()
            seconds.append(self.js(
                "return performance.getEntriesByType('navigation')[0].domContentLoadedEventEnd / 1000"))
        self.assertLess(min(seconds), MOST_SECONDS)

    def shown(self):
        """The rows of the data that the table shows, as it has sorted them."""
        return self.js("return [...document.querySelectorAll('#match-table tr[data-row]')].map((r) => +r.dataset.row)")

    def all_shown(self):
        return self.js("return matchView.rows()")

    def matching(self, condition):
        """The places of those rows of matches.tsv for which the condition holds."""
        return [place for place, row in enumerate(self.job.table("matches.tsv")) if condition(row)]


class EveryPage:
    """Tests of a PageTest that hold for the page of any job."""

    def prepare(self):
        """Shows what is not seen at first."""
        self.js("document.querySelector('.opener').click(); drawAllNow()")

    def test_fields_and_pictures_have_names(self):
        self.prepare()
        unnamed = self.js("""return [...document.querySelectorAll('input, select, button')].filter((field) =>
            !field.labels?.length && !field.innerText.trim() && !field.getAttribute('aria-label'))
            .map((field) => field.outerHTML)""")
        self.assertEqual(unnamed, [])
        self.assertTrue(self.js(
            "return [...document.querySelectorAll('svg[role=img]')].every((one) => one.getAttribute('aria-label'))"))

    def test_no_size_scrolls_sideways(self):
        for width, height in SIZES:
            self.browser.resize(width, height)
            self.prepare()
            self.assertLessEqual(self.js("return document.documentElement.scrollWidth"), width)

    def test_contrast(self):
        # Every text against what is behind it, in light and dark.
        for scheme in ("light", "dark"):
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                         {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
            self.open("")
            self.prepare()
            weak = self.js(CONTRAST, LEAST_CONTRAST)
            self.assertEqual(weak, [], scheme)
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": []})
