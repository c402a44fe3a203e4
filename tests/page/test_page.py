"""The page of a job in real browsers: Chromium, and Firefox where it is installed."""
import itertools
import json
import os
import re
import subprocess
import unittest

from page_test import TEXT_ONLY, EveryPage, PageTest, skip_text_only

if not TEXT_ONLY:
    from selenium.webdriver.common.action_chains import ActionChains
    from selenium.webdriver.common.by import By
    from selenium.webdriver.common.keys import Keys

    from browser import FIREFOX, Firefox, wait_for
    from page_job import COLLECTION, HOSTILE, SAMPLES, hostile_file, random_file

setUpModule = skip_text_only  # pylint: disable=invalid-name


class WholeJob(EveryPage, PageTest):
    """A job with everything: two data sets, a collection, merged motifs and trees."""

    arguments = ("--top=3", "--best=2", "--cutoff=0.75", "--merge", "--tree",
                 *([f"--collection={COLLECTION}", *SAMPLES] if not TEXT_ONLY else ()))

    def test_head_names_the_job(self):
        record = json.loads(self.job.text("job.json"))
        text = self.js("return document.querySelector('.masthead').innerText + byId('overview').innerText")
        for part in ("job", record["version"], "promoters", "enhancers", COLLECTION, *SAMPLES,
                     str(record["counts"]["motifs"])):
            self.assertIn(part, text)

    def test_links_lead_to_all_that_was_written(self):
        links = self.js("return [...document.querySelectorAll('#links a')].map((a) => a.getAttribute('href'))")
        for name in ("matches.tsv", "matches.json", "motifs.tsv", "skipped.tsv", "combined_motifs.tsv", "tree.nwk",
                     "combined_motifs.meme", "tree_global.nwk", "job.json"):
            self.assertIn(name, links)
        reports = [name for name in os.listdir(self.job.path("result"))
                   if name.startswith("J_") and "image" not in name]
        self.assertGreater(len(reports), 5)
        self.assertLessEqual({f"result/{name}" for name in reports}, set(links))
        for link in links:
            self.assertTrue(os.path.exists(self.job.path(link)), link)

    def test_download_equals_the_table_of_the_job(self):
        self.click("#download-matches")
        self.assertEqual(self.browser.downloaded("matches.tsv").decode(), self.job.text("matches.tsv"))

    def test_cells_equal_the_table_of_the_job(self):
        self.js("jQuery('#match-table').DataTable().page.len(-1).draw()")
        heads = self.js("return [...document.querySelectorAll('#match-table th .head')].map((h) => h.innerText)")
        cells = self.js("return [...document.querySelectorAll('#match-table tr[data-row]')].map("
                        "(r) => [...r.cells].slice(1).map((c) => c.innerText))")
        rows = self.job.table("matches.tsv")
        self.assertEqual(len(cells), len(rows))
        for line, row in zip(cells, rows):
            shown = dict(zip(heads, line))
            self.assertEqual(shown["Query"].split()[0], row["query_id"].split()[0])
            self.assertIn(row["target_dataset"], shown["Target"])
            self.assertEqual(shown["Overlap"], row["overlap"])
            self.assertEqual(shown["Strand"], {"+": "+ same", "-": "\u2212 opposite"}[row["orientation"]])
            self.assertAlmostEqual(float(shown["Similarity"]), float(row["similarity"]), delta=0.00005001)
            for head, name in (("Combined score", "combined_score"), ("p", "p_value"), ("E", "e_value"),
                               ("q", "q_value")):
                self.assertEqual(shown[head] == "", row[name] == "")
                if row[name]:
                    value = float(row[name])
                    self.assertAlmostEqual(float(shown[head]), value,
                                           delta=0.0501 * abs(value) if abs(value) < 0.001 else 0.00005001)

    def test_sorting_by_any_column(self):
        rows = self.job.table("matches.tsv")
        for checkbox in self.browser.find_elements(By.CSS_SELECTOR, "#column-choices input:not(:checked)"):
            self.js("arguments[0].click()", checkbox)
        for place, column in enumerate(rows[0]):
            head = self.js("return document.querySelectorAll('#match-table th')[arguments[0]]", place + 1)
            isnumber = all(re.fullmatch(r"-?[\d.]+(e-?\d+)?|", row[column]) for row in rows) and column != "query_name"
            for direction in ("ascending", "descending"):
                self.js("arguments[0].click()", head)
                self.assertEqual(head.get_attribute("aria-sort"), direction, column)
                if column == "list":
                    continue
                values = [rows[row][column] for row in self.all_shown()]
                if isnumber:                    # what has no value comes last
                    keys = [float(value) for value in values if value]
                    self.assertEqual(values[len(keys):], [""] * (len(values) - len(keys)), column)
                else:
                    keys = [value.lower() for value in values]
                self.assertEqual(keys, sorted(keys, reverse=direction == "descending"), column)

    def test_filters(self):
        rows = self.job.table("matches.tsv")
        self.fill("#filter-name", "cre")
        self.assertEqual(self.all_shown(), self.matching(
            lambda row: any("cre" in row[name].lower()
                            for name in ("query_id", "query_name", "target_id", "target_name"))))
        self.assertEqual(self.one("#match-count").text, f"{len(self.all_shown())} of {len(rows)} matches")
        self.click("#filter-reset")
        self.assertEqual(self.all_shown(), list(range(len(rows))))
        self.fill("#filter-list", "collection")
        self.assertEqual(self.all_shown(), self.matching(lambda row: row["list"] == "collection"))
        self.fill("#filter-similarity", "0.9")
        self.assertEqual(self.all_shown(), self.matching(
            lambda row: row["list"] == "collection" and float(row["similarity"]) >= 0.9))
        self.click("#filter-reset")
        self.fill("#filter-dataset", "enhancers")
        self.assertEqual(self.all_shown(), self.matching(
            lambda row: "enhancers" in (row["query_dataset"], row["target_dataset"])))
        self.fill("#filter-name", "no such motif")
        self.assertEqual(self.all_shown(), [])
        self.assertIn("No match", self.one("#match-table tbody").text)

    def test_download_of_what_is_filtered(self):
        self.fill("#filter-list", "each_motif")
        self.click("#download-matches")
        lines = self.job.text("matches.tsv").split("\n")
        wanted = [line for line in lines[1:] if line.startswith("each_motif\t")]
        self.assertEqual(self.browser.downloaded("matches.tsv").decode(), "\n".join([lines[0], *wanted]) + "\n")

    def test_copy(self):
        self.browser.execute_cdp_cmd("Browser.grantPermissions",
                                     {"permissions": ["clipboardReadWrite", "clipboardSanitizedWrite"]})
        self.fill("#filter-list", "top_global")
        self.click("#copy-matches")
        wait_for(lambda: "copied" in self.one("#message").text, "the message")
        copied = self.browser.execute_async_script(
            "const done = arguments[0]; navigator.clipboard.readText().then(done, (error) => done(String(error)))")
        lines = self.job.text("matches.tsv").split("\n")
        self.assertEqual(copied.replace("\r\n", "\n"),
                         "\n".join([lines[0], *[line for line in lines if line.startswith("top_global\t")]]) + "\n")

    def test_a_row_opens_its_alignment(self):
        rows = self.job.table("matches.tsv")
        self.click("#match-table tr[data-row='1'] td:last-child")
        panel = self.one(".alignment")
        self.assertEqual(self.one("tr[data-row='1'] .opener").get_attribute("aria-expanded"), "true")
        bars = panel.find_elements(By.CSS_SELECTOR, ".agrees, .differs")
        self.assertEqual(len(bars), int(rows[1]["overlap"]))
        lines = [line.get_attribute("textContent") for line in panel.find_elements(By.CSS_SELECTOR, ".consensus-line")]
        self.assertEqual(lines[0], rows[1]["query_consensus"])
        self.assertEqual(lines[2], rows[1]["target_consensus"])
        self.assertIn(rows[1]["target_id"], panel.text)
        self.click("#match-table tr[data-row='1'] .opener")
        self.assertEqual(self.browser.find_elements(By.CSS_SELECTOR, ".alignment"), [])

    def test_alignments_have_the_similarity_of_the_table(self):
        # The strands and shifts that are drawn are those that were compared.
        means = self.js("""return Array.from({length: matches.rows}, (_, row) => {
            const at = placementOf(row);
            let sum = 0;
            for (let column = at.overlapFirst; column < at.overlapEnd; ++column) sum += similarityAt(at, column);
            return [at.overlapEnd - at.overlapFirst, sum / (at.overlapEnd - at.overlapFirst)];
        })""")
        rows = self.job.table("matches.tsv")
        self.assertGreater(sum("reverse" in row["query_orientation"] + row["target_orientation"] for row in rows), 10)
        for (overlap, mean), row in zip(means, rows):
            self.assertEqual(overlap, int(row["overlap"]))
            self.assertAlmostEqual(mean, float(row["similarity"]), places=5)

    def test_merged_motifs_name_their_members(self):
        stored = self.js("return job.merged.map((merged) => [merged.id, merged.members.map((member) => member.motif)])")
        rows = [row for row in self.job.table("combined_motifs.tsv") if row["merged"] == "yes" and row["combined_id"]]
        groups = itertools.groupby(rows, lambda row: row["combined_id"])
        self.assertEqual(stored, [[name, [int(row["member_number_1based"]) for row in group]]
                                  for name, group in groups])

    def test_downloads_of_merged_motifs(self):
        numbers = re.compile(r"-?\d+\.?\d*(?:e-?\d+)?")
        for extension in ("meme", "jaspar"):
            self.click(f"#merged-{extension}")
            ours = self.browser.downloaded(f"merged_motifs.{extension}").decode()
            theirs = self.job.text(f"combined_motifs.{extension}")
            self.assertEqual(numbers.sub("#", ours).split(), numbers.sub("#", theirs).split())
            pairs = list(zip(numbers.findall(ours), numbers.findall(theirs)))
            self.assertGreater(len(pairs), 500)
            for mine, wanted in pairs:
                self.assertAlmostEqual(float(mine), float(wanted), places=12)

    def test_filter_by_q(self):
        self.fill("#filter-q", "0.001")
        wanted = self.matching(lambda row: float(row["q_value"]) <= 0.001)
        self.assertGreater(len(wanted), 5)
        self.assertEqual(self.all_shown(), wanted)

    def test_further_columns_are_shown_by_their_names(self):
        begin, data, end = re.fullmatch(r'(.*<script type="application/json" id="data">)(.*?)(</script>.*)',
                                        self.job.text("index.html"), re.DOTALL).groups()
        data = json.loads(data)
        table = data["matches"]["table"]
        values = [None, *(10.0 ** -place for place in range(1, table["rows"]))]
        table["columns"].append({"name": "strange_number", "meaning": "a number, and more", "range": "0 to 1",
                                 "cells": values})
        path = self.job.path("more.html")
        with open(path, "w", encoding="utf-8") as file:
            file.write(begin + json.dumps(data).replace("<", "\\u003c") + end)
        self.addCleanup(os.remove, path)
        self.browser.get("file://" + path)
        self.js("document.querySelector('#column-choices label:last-child input').click()")
        self.assertEqual(self.one("#match-table th:last-child").text.split("\n"), ["strange number", "a number"])
        self.assertEqual(self.one("#match-table tr[data-row='4'] td:last-child").text, "1.0e-4")
        self.click("#match-table th:last-child")
        self.assertEqual(self.shown()[0], table["rows"] - 1)
        self.open()

    def test_addresses(self):
        self.open("#motif=3")
        self.assertTrue(self.js("return byId('motif-dialog').open"))
        self.assertIn("CRE_CREB", self.one("#motif-dialog-title").text)
        self.assertIn("promoters.txt, line 7", self.one("#motif-dialog").text)
        self.browser.find_element(By.TAG_NAME, "body").send_keys(Keys.ESCAPE)
        self.assertFalse(self.js("return byId('motif-dialog').open"))
        self.assertEqual(self.js("return location.hash"), "")
        self.open("#match=each_motif.5.2")
        panel = self.one(".alignment-logo").get_attribute("aria-label")
        row = self.matching(lambda row: (row["list"], row["query_rank_1based"], row["match_rank_1based"]) ==
                            ("each_motif", "5", "2"))[0]
        self.assertIn(self.job.table("matches.tsv")[row]["target_id"], panel)
        self.open("#merged=each_motif_3")
        self.assertEqual(self.js("return document.activeElement.id"), "merged-each_motif_3")
        self.open("#motif=%E0%A4%A")
        self.assertIn("no such motif", self.one("#message").text)

    def test_motif_cards(self):
        motifs = self.job.table("motifs.tsv")
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, "#motif-cards > li")), len(motifs))
        self.fill("#motif-name", "gata")
        names = [motif["id"] for motif in motifs if "gata" in " ".join(
            (motif["id"], motif["name"], motif["consensus"], motif["reverse_consensus"])).lower()]
        cards = self.js("return [...document.querySelectorAll('#motif-cards h3 a')].map((a) => a.innerText)")
        self.assertEqual(cards, names)
        self.click("#motif-cards h3 a")
        dialog = self.one("#motif-dialog")
        self.assertIn(names[0], dialog.text)
        self.assertEqual(len(dialog.find_elements(By.CSS_SELECTOR, ".logos svg.logo")), 3)

    def test_tree(self):
        self.js("byId('tree').scrollIntoView({behavior: 'instant'})")
        wait_for(lambda: self.browser.find_elements(By.CSS_SELECTOR, "a.leaf"), "the tree")
        leaves = re.findall(r"I(\d+)_", self.job.text("tree.nwk"))
        for shape in ("rectangular", "circular"):
            self.click(f"input[value={shape}]")
            hrefs = self.js("return [...document.querySelectorAll('a.leaf')].map((a) => a.getAttribute('href'))")
            self.assertEqual(hrefs, [f"#motif={number}" for number in leaves])
        self.click("#tree-whole")
        leaf = self.one("a.leaf text")
        name = leaf.text
        ActionChains(self.browser).move_to_element(leaf).click().perform()
        wait_for(lambda: self.js("return byId('motif-dialog').open"), "the motif of the leaf")
        self.assertIn(name, self.one("#motif-dialog-title").text)

    def test_a_motif_is_shown_in_the_tree(self):
        for shape in ("rectangular", "circular"):
            self.open()
            self.js("document.querySelector(`input[value=${arguments[0]}]`).click()", shape)
            self.js("location.hash = '#motif=30'")
            wait_for(lambda: self.js("return byId('motif-dialog').open"), "the motif")
            self.click("#motif-dialog .toolbar button:last-child")
            leaf = self.js("return document.activeElement")
            self.assertEqual(leaf.get_dom_attribute("href"), "#motif=30")
            center = self.js("""const [leaf, picture] = [arguments[0], document.querySelector('.tree-picture')]
                .map((node) => node.getBoundingClientRect());
                return [(leaf.left + leaf.right - picture.left - picture.right) / picture.width,
                        (leaf.top + leaf.bottom - picture.top - picture.bottom) / picture.height].map(Math.abs);""",
                             leaf)
            self.assertLess(max(center), 0.5)

    def test_heat_map(self):
        self.js("byId('heat-map').scrollIntoView({behavior: 'instant'})")
        wait_for(lambda: self.browser.find_elements(By.CSS_SELECTOR, "canvas.heat"), "the heat map")
        leaves = [int(number) - 1 for number in re.findall(r"I(\d+)_", self.job.text("tree.nwk"))]
        cells = [line.split(",")[1:-1] for line in self.job.text("result", "Distance_Matrix.csv").split("\n")[1:-1]]
        names = [motif["id"] for motif in self.job.table("motifs.tsv")]
        canvas = self.one("canvas.heat")
        side = canvas.size["width"] / len(leaves)
        for row, column in ((0, 1), (3, 17), (29, 4)):
            ActionChains(self.browser).move_to_element_with_offset(
                canvas, (column + 0.5 - len(leaves) / 2) * side, (row + 0.5 - len(leaves) / 2) * side).perform()
            words = f"{names[leaves[row]]} and {names[leaves[column]]}: distance "
            wait_for(lambda: words in self.one(".pair-words").text, words)  # pylint: disable=cell-var-from-loop
            value = re.search(r"distance ([\d.e-]+)", self.one(".pair-words").text)[1]
            self.assertAlmostEqual(float(value), float(cells[leaves[row]][leaves[column]]), delta=0.0000501)
        self.js("arguments[0].focus()", canvas)
        canvas.send_keys(Keys.ARROW_LEFT)
        self.assertIn(f"{names[leaves[29]]} and {names[leaves[3]]}", self.one(".pair-words").text)

    def test_keyboard(self):
        body = self.one("body")
        body.send_keys(Keys.TAB)
        self.assertEqual(self.browser.switch_to.active_element.text, "Skip to the matches")
        self.js("byId('filter-reset').focus()")
        for _ in range(100):
            active = self.browser.switch_to.active_element
            active.send_keys(Keys.TAB)
            active = self.browser.switch_to.active_element
            self.assertNotEqual(self.js("return getComputedStyle(arguments[0]).outlineStyle", active), "none")
            if active.tag_name == "th" and active.text.startswith("Similarity"):
                break
        self.browser.switch_to.active_element.send_keys(Keys.ENTER)
        self.assertEqual(active.get_attribute("aria-sort"), "ascending")
        for _ in range(20):
            self.browser.switch_to.active_element.send_keys(Keys.TAB)
            if self.browser.switch_to.active_element.get_attribute("class") == "opener":
                break
        self.browser.switch_to.active_element.send_keys(Keys.ENTER)
        self.assertEqual(self.browser.switch_to.active_element.get_attribute("aria-expanded"), "true")
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, ".alignment")), 1)
        self.js("byId('tree').scrollIntoView({behavior: 'instant'})")
        wait_for(lambda: self.browser.find_elements(By.CSS_SELECTOR, "a.leaf"), "the tree")
        self.js("document.querySelector('a.leaf').focus()")
        self.browser.switch_to.active_element.send_keys(Keys.ENTER)
        wait_for(lambda: self.js("return byId('motif-dialog').open"), "the motif of the leaf")

    def test_table_has_the_parts_that_screen_readers_use(self):
        self.assertTrue(self.one("#match-table caption"))
        self.assertTrue(self.js(
            "return [...document.querySelectorAll('#match-table th')].every((head) => head.scope === 'col')"))

    def test_printing(self):
        pdf = self.browser.printed()
        self.assertTrue(pdf.startswith(b"%PDF"))
        path = os.path.join(self.job.top, "page.pdf")
        with open(path, "wb") as file:
            file.write(pdf)
        text = subprocess.run(["pdftotext", "-layout", path, "-"], check=True, capture_output=True).stdout.decode()
        for row in self.job.table("matches.tsv"):
            self.assertIn(row["target_id"], text)
        # On paper there are all rows; each has its strand in words.
        self.assertGreaterEqual(len(re.findall("\u2212 opposite|\\+ same", text)), len(self.job.table("matches.tsv")))
        self.assertNotIn("Download as TSV", text)
        self.assertEqual(len(self.shown()), 50)

    @unittest.skipUnless(not TEXT_ONLY and FIREFOX, "Firefox is not installed")
    def test_in_firefox(self):
        firefox = Firefox()
        self.addCleanup(firefox.quit)
        firefox.get(self.job.address)
        self.assertEqual(firefox.execute_script("return document.documentElement.dataset.ready"), "yes")
        found = firefox.execute_script("""
            const page = window.wrappedJSObject || window;
            const heads = [...document.querySelectorAll('#match-table th')];
            const similarity = heads.find((head) => head.innerText.startsWith('Similarity'));
            similarity.click();
            similarity.click();
            const best = document.querySelector('#match-table tr[data-row]').dataset.row;
            document.querySelector('.opener').click();
            const bars = document.querySelectorAll('.agrees, .differs').length;
            document.querySelector('#filter-list').value = 'collection';
            page.applyFilters();
            page.drawAllNow();
            return {best, bars, tsv: page.filteredTsv(), leaves: document.querySelectorAll('a.leaf').length,
                    requests: performance.getEntriesByType('resource').map((entry) => entry.name)};""")
        rows = self.job.table("matches.tsv")
        best = rows[int(found["best"])]
        self.assertEqual(float(best["similarity"]), max(float(row["similarity"]) for row in rows))
        self.assertEqual(found["bars"], int(best["overlap"]))
        self.assertEqual(sorted(found["tsv"].split("\n")[1:-1]),
                         sorted(line for line in self.job.text("matches.tsv").split("\n")
                                if line.startswith("collection\t")))
        self.assertEqual(found["leaves"], len(self.job.table("motifs.tsv")))
        self.assertEqual(found["requests"], [])


class HostileNames(PageTest):
    """Names from files are data, never markup."""

    files = {"hostile </title><b>.jaspar": hostile_file(), "other.jaspar": hostile_file()} if not TEXT_ONLY else {}
    arguments = ("--tree", "--merge", "--cutoff=0.5", "hostile </title><b>.jaspar", "<i>=other.jaspar")

    def test_names_are_shown_as_text(self):
        self.js("drawAllNow(); document.querySelector('.opener').click()")
        self.assertIsNone(self.js("return window.hacked || null"))
        self.assertEqual(self.js("return document.querySelectorAll('img, b, i, main script').length"), 0)
        cards = self.js("return [...document.querySelectorAll('#motif-cards h3 a')].map((a) => a.textContent)")
        self.assertEqual(cards[:len(HOSTILE)], HOSTILE)
        names = self.js("return [...document.querySelectorAll('#match-table td:nth-child(4) a')]"
                        ".map((link) => link.textContent)")
        self.assertLessEqual(set(names), set(HOSTILE))

    def test_every_motif_opens(self):
        for number, name in enumerate(HOSTILE, 1):
            self.js("location.hash = arguments[0]", f"#motif={number}")
            title = "return byId('motif-dialog-title')?.firstChild.textContent === arguments[0]"
            wait_for(lambda: self.js(title, name), name)  # pylint: disable=cell-var-from-loop
        self.assertIsNone(self.js("return window.hacked || null"))

    def test_search_and_sorting_leave_names_alone(self):
        for text in ("<img", "</script>", "&lt;"):
            self.fill("#filter-name", text)
            self.assertEqual(self.all_shown(), self.matching(
                lambda row: text in row["query_id"] + "\n" + row["target_id"]))  # pylint: disable=cell-var-from-loop
        self.click("#match-table th:nth-child(4)")
        self.assertIsNone(self.js("return window.hacked || null"))

    def test_a_policy_forbids_everything_from_outside(self):
        policy = self.one("meta[http-equiv='Content-Security-Policy']").get_attribute("content")
        self.assertTrue(policy.startswith("default-src 'none';"))
        self.assertNotIn("unsafe", policy)
        # It works: a script that is put in does not run.
        self.js("const added = document.createElement('script'); added.textContent = 'window.hacked = 4';"
                "document.body.append(added)")
        self.assertIsNone(self.js("return window.hacked || null"))
        messages = [entry["message"] for entry in self.browser.get_log("browser")]
        self.assertEqual(len(messages), 1)
        self.assertIn("Content Security Policy", messages[0])


class WithoutLibraries(PageTest):
    """Where the libraries are not installed, the page still shows everything as plain tables."""

    arguments = ("--top=3", "--best=1", "--cutoff=0.75", "--merge", "--tree", *(SAMPLES if not TEXT_ONLY else ()))
    env = {"VARNOLIX_LIBRARIES": "/nonexistent"}

    def test_all_matches_are_there(self):
        rows = self.job.table("matches.tsv")
        self.assertEqual(self.shown(), list(range(len(rows))))
        self.fill("#filter-list", "each_motif")
        self.assertEqual(self.shown(), self.matching(lambda row: row["list"] == "each_motif"))
        self.click("#match-table .opener")
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, ".alignment svg")), 1)
        self.click("#match-table .opener")
        self.assertEqual(self.browser.find_elements(By.CSS_SELECTOR, ".alignment"), [])

    def test_members_lie_where_they_were_merged(self):
        # Of two members, the merged motif is the mean where both lie, and a copy elsewhere.
        errors = self.js("""return job.merged.filter((merged) => merged.members.length === 2).map((merged) => {
            const members = merged.members.map((m) => [motifByNumber.get(m.motif).strand(m.strand), m.offset]);
            return Math.max(...mergedPositions(merged).map((values, place) => {
                const parts = members.map(([matrix, offset]) => matrix[place - offset]).filter(Boolean);
                if (parts.length === 0) return 1;
                return Math.max(...values.map((value, base) =>
                    Math.abs(value - parts.reduce((sum, part) => sum + part[base], 0) / parts.length)));
            }));
        })""")
        self.assertGreater(len(errors), 2)
        self.assertLess(max(errors), 1e-5)

    def test_tree_and_distances_are_there(self):
        self.js("drawAllNow()")
        self.assertEqual(self.one(".newick").text.strip(), self.job.text("tree.nwk").strip())
        self.click("#heat-map summary")
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, "#heat-map tbody tr")),
                         len(self.job.table("motifs.tsv")))


class LargeJob(PageTest):
    """500 motifs, with 10 matches each, also in a collection: 20,000 matches."""

    files = {f"{name}.jaspar": random_file(count, count + len(name))
             for name, count in (("one", 250), ("other", 250), ("collection", 500))} if not TEXT_ONLY else {}
    arguments = ("--top=10", "--best=10", "--cutoff=0.75", "--merge", "--tree", "--collection=collection.jaspar",
                 "one.jaspar", "other.jaspar")

    def test_the_page_is_small_and_opens_quickly(self):
        self.assertGreater(len(self.job.table("matches.tsv")), 18_000)
        self.assert_small_and_quick()

    def test_filters_sorting_and_pages(self):
        self.fill("#filter-list", "by_significance")
        self.click("#match-table th:last-child")
        q = [float(row["q_value"]) for row in self.job.table("matches.tsv")]
        rows = self.all_shown()
        self.assertEqual(len(rows), len(self.matching(lambda row: row["list"] == "by_significance")))
        self.assertEqual([q[row] for row in rows], sorted(q[row] for row in rows))
        self.assertEqual(self.shown(), rows[:50])
        self.click(".paginate_button.next")
        self.assertEqual(self.shown(), rows[50:100])


if __name__ == "__main__":
    unittest.main()
