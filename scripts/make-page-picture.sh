#!/usr/bin/env bash
# Takes the picture of a report page that the README shows (docs/page.png), with headless Chromium.
#
#   make-page-picture.sh [JOB_FOLDER]
#
# JOB_FOLDER is a finished job with pages; the default is build/demo-job, which demo.sh makes. The picture shows
# the first top motif and its best match; the version and the box with the answers are left out.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

case ${1:-} in
    --help) usage_of "$0"; exit 0 ;;
    -*) wrong_use "unknown option $1" ;;
esac
(( $# <= 1 )) || wrong_use "one job folder at a time"

job="${1:-$project/build/demo-job}"
picture="$project/docs/page.png"
size=1010,718           # CSS pixels: one motif and one match
scale=0.64              # picture pixels for each CSS pixel
limit=60                # seconds

browser="$(command -v chromium || command -v chromium-browser || command -v google-chrome)" ||
    fail "Chromium is not installed: run scripts/setup.sh --chromium"
[[ -d $job/result ]] || fail "there is no job in $job: run scripts/demo.sh first"
page="$(find "$(realpath "$job/result")" -maxdepth 1 -name 'J_*_HTML_Results.html' | sort | tail -n 1)"
[[ -n $page ]] || fail "there is no page in $job/result: the job must have the format HTML or All"

# The page finds its logos by relative paths, so its shortened copy is put into a folder with a link to them.
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
ln -s "${page%HTML_Results.html}image" "$work/"
sed -e '/Version /d' -e "/<h3 class='sansserif'> INPUT/,/<h3 class='sansserif'> RESULTS/d" -e '/<hr>/,$d' "$page" \
    > "$work/page.html"

options=(--headless --disable-gpu --disable-lcd-text --hide-scrollbars "--user-data-dir=$work/profile"
         "--window-size=$size" "--force-device-scale-factor=$scale" "--screenshot=$work/page.png")
[[ $(id -u) != 0 ]] || options+=(--no-sandbox)      # Chromium does not start for root otherwise
FONTCONFIG_FILE="$project/tools/fonts/fonts.conf" \
    timeout "$limit" "$browser" "${options[@]}" "file://$work/page.html" > "$work/log" 2>&1 || true
if [[ ! -s $work/page.png ]]; then
    tail -n 5 "$work/log" >&2
    fail "Chromium took no picture"
fi
mv "$work/page.png" "$picture"
say "$picture: $(stat -c %s "$picture") bytes"
