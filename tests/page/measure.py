"""Measures how long the page of a job takes to open, to filter and to scroll: measure.py PAGE [COUNT]

Prints medians of COUNT runs (default 5) in headless Chromium, in milliseconds.
"""
import statistics
import sys
import tempfile

from browser import Chromium

# Frames while the page is scrolled from the top of an area for three seconds.
SCROLL = """
const done = arguments[0];
document.documentElement.style.scrollBehavior = 'auto';
byId('%s').scrollIntoView();
const times = [];
const begin = performance.now();
requestAnimationFrame(function frame(now) {
    times.push(now);
    window.scrollBy(0, 60);
    if (now - begin < 3000) requestAnimationFrame(frame);
    else done(times.slice(1).map((time, place) => time - times[place]));
});
"""


# How long it takes to filter families, and to show them all.
FAMILIES = """
const timed = (action) => {
    const begin = performance.now();
    action();
    document.body.getBoundingClientRect();
    return performance.now() - begin;
};
const search = (text) => { byId('family-name').value = text; readFamilyFilters(); redrawFamilies(); };
return {'filter families': timed(() => search('a 1')), 'no filter of families': timed(() => search('')),
    'all families': timed(() => byId('all-families').click()),
    'all single motifs': timed(() => { byId('single-motifs').open = true; drawFamilyCards(); })};
"""


def measured(browser, address):
    """One run: name -> milliseconds."""
    browser.get("about:blank")
    browser.get(address)
    found = browser.execute_script("""
        const load = performance.getEntriesByType('navigation')[0];
        const timed = (action) => { const begin = performance.now(); action(); return performance.now() - begin; };
        const heads = [...document.querySelectorAll('#match-table th')];
        const head = heads.find((cell) => cell.innerText.startsWith('Similarity'));
        return {'ready': load.domContentLoadedEventEnd,
            'painted': performance.getEntriesByName('first-contentful-paint')[0]?.startTime ?? 0,
            'sort': timed(() => head.click()),
            'filter': timed(() => { byId('filter-name').value = 'a 1'; applyFilters(); }),
            'no filter': timed(resetFilters), 'tree and heat map': timed(drawAllNow)};""")
    scrolled = []
    for rows in (50, 500, 1000):
        scrolled.append((f"{rows} rows", "match-area", f"jQuery('#match-table').DataTable().page.len({rows}).draw()"))
    if browser.execute_script("return families.length > 0"):
        found |= browser.execute_script(FAMILIES)
        scrolled.append(("all families", "families", ""))
    for what, area, prepare in scrolled:
        browser.execute_script(prepare)
        frames = browser.execute_async_script(SCROLL % area)
        found[f"frame, {what}"] = statistics.median(frames)
        found[f"slow frames of {what}, 95 %"] = sorted(frames)[int(len(frames) * 0.95)]
    return found


def main():
    runs = []
    with tempfile.TemporaryDirectory() as downloads:
        browser = Chromium(downloads)
        browser.set_script_timeout(120)
        try:
            for _ in range(int(sys.argv[2]) if len(sys.argv) > 2 else 5):
                runs.append(measured(browser, "file://" + sys.argv[1]))
        finally:
            browser.quit()
    for name in runs[0]:
        values = [run[name] for run in runs]
        print(f"{name:32} {statistics.median(values):8.1f}  ({min(values):.1f} to {max(values):.1f})")


if __name__ == "__main__":
    main()
