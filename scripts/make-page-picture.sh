#!/usr/bin/env bash
# Takes the picture of a job's page that the README shows (docs/page.png), with headless Chromium.
#
#   make-page-picture.sh [JOB_FOLDER [ADDRESS [PICTURE]]]
#
# JOB_FOLDER is a job of varnolix-job; the default is build/demo-short, which demo.sh makes. ADDRESS is what the page is
# opened at, as in its own links: the default, #match=top_global.1.1, shows the first match with its alignment.
# PICTURE is the file to write.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

case ${1:-} in
    --help) usage_of "$0"; exit 0 ;;
    -*) wrong_use "unknown option $1" ;;
esac
(( $# <= 3 )) || wrong_use "one job folder at a time"

job="${1:-$project/build/demo-short}"
address="${2:-#match=top_global.1.1}"
picture="${3:-$project/docs/page.png}"
width=1200 height=800   # CSS pixels
scale=0.75              # picture pixels for each CSS pixel
limit=60                # seconds
largest=150000          # bytes

[[ -s $job/index.html ]] || fail "there is no page in $job: run scripts/demo.sh first"
if ! command -v chromedriver > /dev/null || ! /usr/bin/python3 -c 'import selenium' 2> /dev/null; then
    fail "Chromium and its driver are not installed: run scripts/setup.sh --chromium --tests"
fi

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
# A picture by Chromium's own option is blank where the page is scrolled.
page="file://$(realpath "$job")/index.html"
FONTCONFIG_FILE="$project/tools/fonts/fonts.conf" timeout "$limit" \
    /usr/bin/python3 - "$page$address" "$work/page.png" "$width" "$height" "$scale" <<'PYTHON'
import os
import sys

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

address, picture, width, height, scale = sys.argv[1:]
options = webdriver.ChromeOptions()
for switch in ("headless=new", "disable-gpu", "disable-lcd-text", "hide-scrollbars", "force-prefers-reduced-motion"):
    options.add_argument("--" + switch)
if os.getuid() == 0:
    options.add_argument("--no-sandbox")        # it does not start for root otherwise
browser = webdriver.Chrome(service=Service("chromedriver"), options=options)
try:
    browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
        "width": int(width), "height": int(height), "deviceScaleFactor": float(scale), "mobile": False})
    browser.get(address)
    browser.execute_script("""
        document.activeElement.blur();
        document.querySelector('.opener[aria-expanded=true]')?.closest('section').scrollIntoView();""")
    browser.save_screenshot(picture)
finally:
    browser.quit()
PYTHON
bytes="$(stat -c %s "$work/page.png")"
(( bytes <= largest )) || fail "the picture has $bytes bytes, more than $largest"
mv "$work/page.png" "$picture"
say "$picture: $bytes bytes"
