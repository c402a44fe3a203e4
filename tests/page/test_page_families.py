"""The families on the page of a job, against its tables and motif files."""
import collections
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
    from page_job import HOSTILE, hostile_file, jaspar_file, planted_families

SHOWN_MEMBERS = 12                      # of a larger family, before its button is pressed
COLUMN_WIDTH = 20                       # pixels of a column in the picture of a family
MINUS = "\u2212"

setUpModule = skip_text_only  # pylint: disable=invalid-name

# What each card of a family shows. Of a line of its picture, the place and length of the base line tell the columns.
CARDS = """
drawAllNow();
const line = (svg) => svg.querySelector('.logo-line').getAttribute('d').match(/M (\\S+) \\S+ h (\\S+)/)
    .slice(1).map((text) => Number(text) / arguments[0]);
return [...document.querySelectorAll('#family-cards > li')].map((card) => {
    const [common, ...members] = [...card.querySelectorAll('.frame svg')].map(line);
    const names = [...card.querySelectorAll('.frame-name')].slice(1);
    return {
        head: card.querySelector('h3').innerText,
        facts: [...card.querySelectorAll('.facts > span')].map((fact) => fact.innerText.trim()),
        columns: common[1],
        members: names.map((name, place) => ({
            href: name.querySelector('a').getAttribute('href'),
            words: name.querySelector('small').innerText,
            offset: members[place][0] - common[0],
            length: members[place][1],
            label: card.querySelectorAll('.frame svg')[place + 1].getAttribute('aria-label'),
        })),
    };
});
"""


def shown_at_first(size):
    """How many of the members a card shows: a button for a single one would take as much room as that."""
    return size if size <= SHOWN_MEMBERS + 1 else SHOWN_MEMBERS


def split_files(motifs):
    """Two files, each with a half of the motifs."""
    half = len(motifs) // 2
    return {"one.jaspar": jaspar_file(motifs[:half]), "other.jaspar": jaspar_file(motifs[half:])}


class FamilyTest(PageTest):
    """Helpers for pages with families."""

    def members(self):
        """Name of a family -> rows of family_members.tsv, the nearest first as on the page."""
        rows = collections.defaultdict(list)
        for row in self.job.table("family_members.tsv"):
            rows[row["family"]].append(row)
        return {name: sorted(found, key=lambda row: float(row["distance"])) for name, found in rows.items()}

    def sizes(self):
        """Name of a family -> its size, as in families.tsv."""
        return {row["family"]: int(row["size"]) for row in self.job.table("families.tsv")}

    def shown_families(self):
        return self.js("return [...document.querySelectorAll('#family-cards > li')].map((card) => card.id.slice(7))")

    def singles_shown(self):
        return self.js("return [...document.querySelectorAll('#single-cards > li')].map((card) => card.id.slice(7))")

    def show_all(self):
        self.js("for (const id of ['all-families']) if (!byId(id).hidden) byId(id).click();"
                "byId('single-motifs').open = true")
        wait_for(lambda: self.singles_shown() or not self.js("return families.some(isSingle)"), "the single motifs")


class Families(EveryPage, FamilyTest):
    """Two data sets with planted families and single motifs."""

    files = split_files(planted_families(90, 3)) if not TEXT_ONLY else {}
    arguments = ("--families", "--tree", "--best=3", "--cutoff=0.8", "one.jaspar", "other.jaspar")

    def prepare(self):
        super().prepare()
        self.js("byId('single-motifs').open = true; drawFamilyCards(); drawAllNow()")

    def test_cards_equal_the_tables(self):
        self.show_all()
        self.js("for (const button of document.querySelectorAll('#family-cards .card > .buttons button'))"
                "button.click()")
        lengths = {row["motif_number_1based"]: int(row["length"]) for row in self.job.table("motifs.tsv")}
        rows = self.job.table("families.tsv")
        joined = [row for row in rows if int(row["size"]) > 1]
        cards = self.js(CARDS, COLUMN_WIDTH)
        self.assertGreater(len(joined), 5)
        self.assertEqual(len(cards), len(joined))
        signs = set()
        for card, row in zip(cards, joined):
            wanted = self.members()[row["family"]]
            self.assertEqual(card["head"], f"{row['family']} {row['size']} motifs like {wanted[0]['motif_id']}")
            self.assertEqual(card["columns"], int(row["length"]))
            self.assertEqual(card["facts"][:2],
                             [row["consensus"], f"{float(row['information_bits']):.1f} bits"])
            self.assertAlmostEqual(float(card["facts"][2].removeprefix("joined at ")), float(row["cut_height"]),
                                   delta=0.05 * float(row["cut_height"]))
            self.assertEqual(len(card["members"]), int(row["size"]))
            for member, place in zip(card["members"], wanted):
                self.assertEqual(member["href"], f"#motif={place['motif_number_1based']}")
                sign, distance = re.fullmatch(r"(.) strand, distance (\S+)", member["words"]).groups()
                self.assertEqual(sign, "+" if place["orientation"] == "forward" else MINUS)
                self.assertIn(f", {place['orientation']}, consensus", member["label"])
                self.assertAlmostEqual(float(distance), float(place["distance"]),
                                       delta=max(0.05 * float(place["distance"]), 0.00005001))
                self.assertEqual(member["offset"], int(place["offset_0based"]))
                self.assertEqual(member["length"], lengths[place["motif_number_1based"]])
                signs.add(sign)
        self.assertEqual(signs, {"+", MINUS})

    def test_members_lie_where_they_are_like_the_common_motif(self):
        # A member turned or moved the wrong way would be about 0.3 off in a value.
        errors = self.js("""return families.filter((family) => !isSingle(family)).map((family) =>
            family.members.map((member) => {
                const drawn = member.motif.strand(member.strand, true);
                const pairs = drawn.map((values, place) => [values, family.positions[place + member.offset]])
                    .filter(([, other]) => other).flatMap(([one, other]) => one.map((x, base) => x - other[base]));
                return pairs.reduce((sum, x) => sum + Math.abs(x), 0) / pairs.length;
            })).flat()""")
        self.assertGreater(len(errors), 40)
        self.assertLess(sorted(errors)[int(len(errors) * 0.9)], 0.1)

    def test_letters_are_those_of_the_strand(self):
        orientations = {row["motif_number_1based"]: row["orientation"] for row in self.job.table("family_members.tsv")}
        wrong = self.js("""drawAllNow();
            const [orientations, width] = arguments;
            const paths = (group) => [...group.querySelectorAll('[class^=base]')].map((one) => one.getAttribute('d'));
            return [...document.querySelectorAll('#family-cards .frame-name a')].filter((link) => {
                const number = link.getAttribute('href').slice(7);
                const {positions} = motifByNumber.get(Number(number));
                const turned = positions.map((values) => [...values].reverse()).reverse();
                const wanted = orientations[number] === 'forward' ? positions : turned;
                const picture = link.closest('.frame-name').nextElementSibling;
                const x = Number(picture.querySelector('.logo-line').getAttribute('d').split(' ')[1]);
                return paths(picture).join() !== paths(logoLetters(wanted, width, 38, x / width)).join();
            }).map((link) => link.innerText)""", orientations, COLUMN_WIDTH)
        self.assertEqual(wrong, [])

    def test_single_motifs_are_in_a_list(self):
        single = [name for name, size in self.sizes().items() if size == 1]
        self.assertGreater(len(single), 3)
        self.assertEqual(self.singles_shown(), [])
        self.assertEqual(self.one("#single-count").text, f"{len(single)} single motifs")
        self.click("#single-motifs summary")
        wait_for(self.singles_shown, "the single motifs")
        self.assertEqual(self.singles_shown(), single)
        names = self.js("return [...document.querySelectorAll('#single-cards h3 a')].map((link) => link.innerText)")
        self.assertEqual(names, [self.members()[name][0]["motif_id"] for name in single])

    def test_large_families_show_their_nearest_members_first(self):
        name, size = next(iter(self.sizes().items()))
        self.assertGreater(size, SHOWN_MEMBERS + 1)
        self.open(f"#family={name}")
        hrefs = "return [...document.querySelectorAll(`#family-${arguments[0]} .frame-name a`)].map((a) => a.hash)"
        wanted = [f"#motif={row['motif_number_1based']}" for row in self.members()[name]]
        wait_for(lambda: self.js(hrefs, name), "the members")
        self.assertEqual(self.js(hrefs, name), wanted[:SHOWN_MEMBERS])
        button = self.one(f"#family-{name} > .buttons button")
        self.assertEqual(button.text, f"Show all {size} members")
        button.send_keys(Keys.ENTER)
        wait_for(lambda: len(self.js(hrefs, name)) == size, "all members")
        self.assertEqual(self.js(hrefs, name), wanted)
        self.assertEqual(self.js("return document.activeElement.id"), f"family-{name}")

    def test_search(self):
        self.show_all()
        last = self.members()[next(iter(self.sizes()))][-1]
        self.fill("#family-name", last["motif_id"].upper())
        found = {name for name, rows in self.members().items()
                 if any(last["motif_id"].lower() in (row["motif_id"] + "\n" + row["motif_name"]).lower()
                        for row in rows)}
        self.assertEqual(set(self.shown_families() + self.singles_shown()), found)
        # The member is marked and shown, though it is the farthest of its family.
        marked = self.js("drawAllNow(); return [...document.querySelectorAll('.frame-name.found a')]"
                         ".map((link) => link.textContent)")
        self.assertIn(last["motif_id"], marked)
        self.fill("#family-name", "family_2")
        self.assertEqual(self.shown_families() + self.singles_shown(),
                         [name for name in self.sizes() if name.startswith("family_2")])
        self.fill("#family-name", "no such motif")
        self.assertEqual(self.shown_families() + self.singles_shown(), [])
        self.assertTrue(self.one("#family-meme").get_attribute("disabled"))
        self.fill("#family-name", "")
        self.fill("#family-dataset", "one")
        found = {row["family"] for row in self.job.table("family_members.tsv") if row["dataset"] == "one"}
        self.assertEqual(self.shown_families() + self.singles_shown(), [name for name in self.sizes() if name in found])

    def test_search_opens_the_list_of_single_motifs(self):
        single = [name for name, size in self.sizes().items() if size == 1][2]
        self.fill("#family-name", self.members()[single][0]["motif_id"])
        self.assertEqual(self.shown_families(), [])
        self.assertIn(single, self.singles_shown())

    def blocks(self, extension):
        """The name of each common motif -> its text in the file of the job."""
        text = self.job.text(f"family_motifs.{extension}")
        parts = re.split(r"(?m)^(?=MOTIF |>)", text)[1:]
        return {re.match(r"(?:MOTIF |>)(\S+)", part)[1]: part for part in parts}

    def assert_same_motifs(self, ours, names, extension):
        """The text has these common motifs, with the numbers of the job's file."""
        wanted = "".join(self.blocks(extension)[name] for name in names)
        ours = ours[re.search(r"(?m)^(MOTIF |>)", ours).start():]
        heads = re.compile(r"(?m)^(?:MOTIF |>).*$")
        self.assertEqual(heads.findall(ours), heads.findall(wanted))
        numbers = re.compile(r"\b\d+\.\d+\b")
        pairs = list(zip(numbers.findall(ours), numbers.findall(wanted), strict=True))
        self.assertGreater(len(pairs), 20)
        for mine, theirs in pairs:
            self.assertAlmostEqual(float(mine), float(theirs), places=12)

    def test_downloads_equal_the_files_of_the_job(self):
        for extension in ("meme", "jaspar"):
            self.assertIn(f"all {len(self.sizes())} as", self.one(f"#family-{extension}").text)
            self.click(f"#family-{extension}")
            ours = self.browser.downloaded(f"family_motifs.{extension}").decode()
            self.assert_same_motifs(ours, list(self.sizes()), extension)

    def test_download_of_what_is_chosen(self):
        names = list(self.sizes())
        self.show_all()
        chosen = [names[1], names[4], names[-1]]
        for name in reversed(chosen):
            self.click(f"#family-{name} .chooser input")
        self.fill("#family-name", names[2])             # a filter does not change the choice
        self.assertEqual(self.one("#chosen-families").text, "3 chosen")
        self.assertEqual(self.one("#family-meme").text, "Download the 3 chosen as MEME")
        self.click("#family-meme")
        self.assert_same_motifs(self.browser.downloaded("family_motifs.meme").decode(), chosen, "meme")
        self.click("#choose-none")
        found = [name for name in names if names[2] in name]
        self.assertEqual(self.one("#family-jaspar").text, f"Download the {len(found)} found as Jaspar")
        self.click("#choose-found")
        self.fill("#family-name", "")
        self.assertEqual(self.one("#chosen-families").text, f"{len(found)} chosen")
        self.click("#family-jaspar")
        self.assert_same_motifs(self.browser.downloaded("family_motifs.jaspar").decode(), found, "jaspar")

    def test_download_of_one(self):
        for place, extension in ((1, "meme"), (2, "jaspar")):
            self.click(f"#family-family_2 .buttons button:nth-of-type({place})")
            ours = self.browser.downloaded(f"family_2.{extension}").decode()
            self.assert_same_motifs(ours, ["family_2"], extension)

    def test_overview(self):
        text = self.one("#overview").text
        sizes = self.sizes().values()
        self.assertRegex(text, rf"\b{sum(size > 1 for size in sizes)}\s+families\b")
        self.assertRegex(text, rf"\b{sum(size == 1 for size in sizes)}\s+single motifs\b")
        self.assertIn("joined at 0.5 or below, by average linkage; flanks of a common motif that fewer than 33 %", text)

    def test_links_to_files(self):
        links = self.js("return [...document.querySelectorAll('#family-files a')].map((a) => a.getAttribute('href'))")
        self.assertEqual(sorted(links), ["families.tsv", "family_members.tsv", "family_motifs.jaspar",
                                         "family_motifs.meme", "family_motifs.transfac"])
        for link in links:
            self.assertTrue(os.path.exists(self.job.path(link)), link)
        self.assertIn("tree_matching.nwk",
                      self.js("return [...document.querySelectorAll('#links a')].map((a) => a.getAttribute('href'))"))

    def test_addresses(self):
        single = [name for name, size in self.sizes().items() if size == 1][-1]
        for name in ("family_3", single):
            self.open(f"#family={name}")
            self.assertEqual(self.js("return document.activeElement.id"), f"family-{name}")
            self.assertTrue(self.js("const box = document.activeElement.getBoundingClientRect();"
                                    "return box.top >= 0 && box.top < innerHeight"))
        # A filter that hides the family gives way.
        self.fill("#family-name", "no such motif")
        self.js("location.hash = '#family=family_2'")
        wait_for(lambda: self.js("return document.activeElement.id") == "family-family_2", "the family")
        self.assertEqual(self.one("#family-name").get_attribute("value"), "")
        self.open("#family=family_0")
        self.assertIn("no such family", self.one("#message").text)

    def test_the_window_of_a_motif_leads_to_its_family(self):
        member = self.members()["family_2"][1]
        self.open(f"#motif={member['motif_number_1based']}")
        link = self.one("#motif-dialog a[href='#family=family_2']")
        self.assertIn(f"family_2, {self.sizes()['family_2']} motifs", self.one("#motif-dialog").text)
        link.click()
        wait_for(lambda: self.js("return document.activeElement.id") == "family-family_2", "the family")
        self.assertFalse(self.js("return byId('motif-dialog').open"))

    def test_common_motifs_alone(self):
        self.fill("#family-view", "common")
        self.show_all()
        self.assertEqual(self.shown_families() + self.singles_shown(), list(self.sizes()))
        self.assertEqual(self.browser.find_elements(By.CSS_SELECTOR, "#families .frame"), [])
        self.js("drawAllNow()")
        consensus = [row["consensus"] for row in self.job.table("families.tsv")]
        labels = self.js("return [...document.querySelectorAll('#families svg.logo')].map((one) => "
                         "one.getAttribute('aria-label'))")
        self.assertEqual([label.rpartition(" ")[2] for label in labels], consensus)

    def test_tree_marks_families(self):
        self.assertEqual(self.js("return job.trees.map((tree) => tree.name)")[0], "the families")
        self.js("byId('tree').scrollIntoView({behavior: 'instant'})")
        wait_for(lambda: self.browser.find_elements(By.CSS_SELECTOR, "a.leaf"), "the tree")
        leaves = re.findall(r"[(,]I(\d+)_", self.job.text("tree.nwk"))
        self.assertEqual(self.js("return [...document.querySelectorAll('a.leaf')].map((a) => a.getAttribute('href'))"),
                         [f"#motif={leaf}" for leaf in leaves])
        family = {row["motif_number_1based"]: row["family"] for row in self.job.table("family_members.tsv")}
        titles = self.js("return [...document.querySelectorAll('a.leaf title')].map((one) => one.textContent)")
        self.assertEqual([title.rpartition(", ")[2] for title in titles], [family[leaf] for leaf in leaves])
        # A tree has two branches for each join; those within a family of n motifs are 2 (n - 1).
        count = "return document.querySelector(arguments[0]).getAttribute('d').split('M').length - 1"
        within = sum(2 * (size - 1) for size in self.sizes().values())
        for shape in ("rectangular", "circular"):
            self.click(f"input[value={shape}]")
            self.assertEqual(self.js(count, ".branches.within"), within)
            self.assertEqual(self.js(count, ".branches:not(.within)"), 2 * (len(leaves) - 1) - within)

    def test_heat_map_frames_families(self):
        self.js("byId('heat-map').scrollIntoView({behavior: 'instant'})")
        canvas = wait_for(lambda: self.browser.find_elements(By.CSS_SELECTOR, "canvas.heat"), "the heat map")[0]
        leaves = re.findall(r"[(,]I(\d+)_", self.job.text("tree.nwk"))
        family = {row["motif_number_1based"]: row["family"] for row in self.job.table("family_members.tsv")}
        names = {row["motif_number_1based"]: row["id"] for row in self.job.table("motifs.tsv")}
        large = next(iter(self.sizes()))
        places = [place for place, leaf in enumerate(leaves) if family[leaf] == large]
        self.assertEqual(places, list(range(places[0], places[-1] + 1)))
        self.assertEqual(self.js("return familyBlocks(mapOrder(job.trees[0].newick)).map((block) => "
                                 "[block.family.name, block.end - block.begin]).sort()"),
                         sorted([name, size] for name, size in self.sizes().items() if size > 1))
        # The corner of its frame has the colour of the frame; the middle has that of near motifs.
        cell = self.js("return arguments[0].width", canvas) / len(leaves)
        corner, middle = self.js("""const [canvas, ...places] = arguments;
            const {data, width} = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
            return places.map((place) => [...data.slice(4 * (place * width + place)).slice(0, 3)]);""",
                                 canvas, round(places[0] * cell), int((places[0] + 2.5) * cell))
        self.assertEqual(corner, [224, 123, 0])
        self.assertLess(middle[0], 100)
        side = canvas.size["width"] / len(leaves)
        other = next(place for place, leaf in enumerate(leaves) if family[leaf] != large)
        self.js("arguments[0].scrollIntoView({block: 'center', behavior: 'instant'})", canvas)
        for row, column in ((places[0], places[-1]), (places[0], other)):
            ActionChains(self.browser).move_to_element_with_offset(
                canvas, (column + 0.5 - len(leaves) / 2) * side, (row + 0.5 - len(leaves) / 2) * side).perform()
            words = f"{names[leaves[row]]} and {names[leaves[column]]}: distance "
            wait_for(lambda: words in self.one(".pair-words").text, words)  # pylint: disable=cell-var-from-loop
            homes = [family[leaves[row]], family[leaves[column]]]
            self.assertTrue(self.one(".pair-words").text.endswith(
                f"both in {large}" if homes[0] == homes[1] else f"in {homes[0]} and {homes[1]}"))
            self.assertNotIn("no match", self.one(".pair-words").text)

    def test_two_motifs_are_joined_at_their_distance_in_the_map(self):
        # A family of two is cut at the distance of its members.
        pairs = [row for row in self.job.table("families.tsv") if row["size"] == "2"]
        self.assertGreater(len(pairs), 0)
        for row in pairs:
            ends = [int(member["motif_number_1based"]) for member in self.members()[row["family"]]]
            distance = self.js("return distanceBetween(job.trees[0].distances, ...arguments[0])", ends)
            self.assertAlmostEqual(distance, float(row["cut_height"]), delta=0.0000501)

    def test_keyboard(self):
        self.js("byId('family-jaspar').focus()")
        reached = []
        for _ in range(30):
            self.browser.switch_to.active_element.send_keys(Keys.TAB)
            active = self.browser.switch_to.active_element
            self.assertNotEqual(self.js("return getComputedStyle(arguments[0]).outlineStyle", active), "none")
            reached.append(active.get_attribute("aria-label") or active.text)
            if reached[-1] == "Choose family_1":
                active.send_keys(Keys.SPACE)
        for name in ("families.tsv", "Choose family_1", "MEME", "Jaspar", "Members of family_1", "Link to this family",
                     "Choose family_2"):
            self.assertIn(name, [text.replace("\u200b", "") for text in reached])
        self.assertEqual(self.one("#chosen-families").text, "1 chosen")

    def test_printing(self):
        path = os.path.join(self.job.top, "page.pdf")
        with open(path, "wb") as file:
            file.write(self.browser.printed())
        text = subprocess.run(["pdftotext", "-layout", path, "-"], check=True, capture_output=True).stdout.decode()
        for name, rows in self.members().items():
            if len(rows) > 1:
                self.assertIn(f"{name} {len(rows)} motifs", text)
                for row in rows[:shown_at_first(len(rows))]:
                    self.assertIn(row["motif_id"], text)
        self.assertNotIn("Choose", text)

    @unittest.skipUnless(not TEXT_ONLY and FIREFOX, "Firefox is not installed")
    def test_in_firefox(self):
        firefox = Firefox()
        self.addCleanup(firefox.quit)
        firefox.get(self.job.address + "#family=family_2")
        self.assertEqual(firefox.execute_script("return document.activeElement.id"), "family-family_2")
        found = firefox.execute_script("""
            const page = window.wrappedJSObject || window;
            document.querySelector('#single-motifs').open = true;
            page.drawFamilyCards();
            page.drawAllNow();
            return {families: [...document.querySelectorAll('#family-cards > li, #single-cards > li')]
                        .map((card) => card.id.slice(7)),
                    members: document.querySelectorAll('#family-family_2 .frame svg').length - 1,
                    within: document.querySelectorAll('.branches.within').length,
                    heat: document.querySelectorAll('canvas.heat').length};""")
        self.assertEqual(found, {"families": list(self.sizes()), "members": shown_at_first(self.sizes()["family_2"]),
                                 "within": 1, "heat": 1})


class HostileFamilies(FamilyTest):
    """Names of members, and of the motif that a family is like, are data."""

    files = {"a.jaspar": hostile_file(), "b.jaspar": hostile_file()} if not TEXT_ONLY else {}
    arguments = ("--families", "--family-cut=0.9", "--cutoff=0.5", "<i>=a.jaspar", "b.jaspar")

    def test_names_are_shown_as_text(self):
        self.assertGreater(max(self.sizes().values()), 2)
        self.js("byId('single-motifs').open = true; drawFamilyCards();"
                "families.forEach((family) => wholeFamilies.add(family)); drawFamilyCards(); drawAllNow()")
        names = self.js("return [...document.querySelectorAll('#families .frame-name a, #single-cards h3 a')]"
                        ".map((link) => link.textContent)")
        self.assertEqual(sorted(names), sorted(2 * HOSTILE))
        heads = self.js("return [...document.querySelectorAll('#family-cards h3')].map((head) => head.textContent)")
        for name, head in zip(self.shown_families(), heads):
            self.assertIn(f" motifs like {self.members()[name][0]['motif_id'][:5]}", head)
        self.assertIsNone(self.js("return window.hacked || null"))
        self.assertEqual(self.js("return document.querySelectorAll('img, b, i, main script').length"), 0)

    def test_search_takes_them_as_they_are(self):
        for text in ("<img", "</script>", "&lt;", "__proto__"):
            self.fill("#family-name", text)
            found = self.js("return families.filter(isWanted).flatMap((family) => "
                            "family.members.filter(isMemberFound)).map((member) => member.motif.name)")
            self.assertEqual(set(found), {name for name in HOSTILE if text in name})


class WithoutFamilies(PageTest):
    """Without --families there is no such section."""

    files = {"a.jaspar": hostile_file()} if not TEXT_ONLY else {}
    arguments = ("--cutoff=0.5", "a.jaspar")

    def test_there_is_no_section(self):
        self.assertEqual(self.js("return ['#families', 'nav a[href=\"#families\"]']"
                                 ".map((one) => document.querySelector(one).hidden)"), [True, True])
        self.open("#family=family_1")
        self.assertIn("no such family", self.one("#message").text)


class ManyFamilies(FamilyTest):
    """1,000 motifs in some hundred families."""

    files = split_files(planted_families(1000, 7)) if not TEXT_ONLY else {}
    arguments = ("--families", "--best=5", "--cutoff=0.8", "one.jaspar", "other.jaspar")

    def test_the_page_is_small_and_opens_quickly(self):
        self.assertGreater(len(self.sizes()), 200)
        self.assert_small_and_quick()

    def test_heat_map_and_tree_have_all_motifs(self):
        self.js("drawAllNow()")
        self.assertEqual(self.js("return document.querySelectorAll('a.leaf').length"), 1000)
        self.assertEqual(self.one("canvas.heat").get_attribute("width"), "1000")
        self.assertEqual(self.browser.find_elements(By.CSS_SELECTOR, "#heat-map details"), [])

    def test_pictures_are_drawn_when_they_come_near(self):
        joined = [name for name, size in self.sizes().items() if size > 1]
        self.click("#all-families")
        self.assertEqual(self.shown_families(), joined)
        drawn = "return document.querySelectorAll('#family-cards svg.logo').length"
        before = self.js(drawn)
        self.assertLess(before, 200)
        # A card has its height before it is drawn, so that it stays where it is.
        last = f"#family-{joined[-1]}"
        self.js("document.querySelector(arguments[0]).scrollIntoView({behavior: 'instant'})", last)
        wait_for(lambda: self.browser.find_elements(By.CSS_SELECTOR, f"{last} svg.logo"), "the last family")
        height = "return Math.round(document.querySelector(arguments[0] + ' .plate').getBoundingClientRect().height)"
        guess = self.js("const plate = document.querySelector(arguments[0] + ' .plate');"
                        "return Math.round(parseFloat(plate.style.minHeight))", last)
        self.assertLessEqual(self.js(height, last) - guess, 30)
        self.assertGreater(self.js(drawn), before)


if __name__ == "__main__":
    unittest.main()
