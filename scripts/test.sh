#!/usr/bin/env bash
# Builds VARNOLIX and runs all its tests: from a bare Debian system to the summary of ctest.
#
#   test.sh            all tests, with the real outside tools, and with pages in a real browser
#   test.sh --firefox  installs Firefox too, in which the page of a job is tested wherever it is installed
#   test.sh --text     without the tests of the outside tools: needs only a C++ toolchain
#
# Installs missing packages (setup.sh). The exit status is 0 if all tests pass.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

choice=(--chromium)
case ${1:-} in
    "") ;;
    --text) export VARNOLIX_TEXT_ONLY=1; choice=(--text) ;;
    --firefox) choice+=(--firefox) ;;
    --help) usage_of "$0"; exit 0 ;;
    *) wrong_use "unknown option $1" ;;
esac

"$here/setup.sh" --if-missing --tests "${choice[@]}"
build_target all
say "Testing (ctest --preset release)"
ctest --preset release
