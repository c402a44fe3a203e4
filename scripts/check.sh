#!/usr/bin/env bash
# Runs the static checks: only the checkers are run, and nothing is built.
#
#   check.sh [DIR]
#
# - clang-format: all sources are formatted as .clang-format says
# - clang-tidy: no findings in src/ and tools/ with the settings in .clang-tidy
# - shellcheck: no findings in the scripts
#
# DIR is the build folder for clang-tidy, configured with clang (default: build/tidy, made if it is missing). The
# exit status is 0 if no checker finds anything; a checker that is not installed counts as a failure.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

case ${1:-} in
    --help) usage_of "$0"; exit 0 ;;
    -*) wrong_use "unknown option $1" ;;
esac
(( $# <= 1 )) || wrong_use "one build folder at most"
cd "$project"
tidy_folder="${1:-build/tidy}"
failed=() lacking=()

# sources_in FOLDER...: lists the C++ files below the folders, separated by null bytes.
sources_in() {
    find "$@" \( -name '*.cpp' -o -name '*.h' \) -print0
}

# check_with CHECKER FUNCTION: runs the function and records whether it failed or the checker is missing.
check_with() {
    if ! command -v "$1" > /dev/null; then
        lacking+=("$1")
        return
    fi
    say "$1"
    "$2" || failed+=("$1")
}

check_format() {
    sources_in src tools tests bench fuzz | xargs -0 clang-format --dry-run -Werror
}

# The compile commands must be for clang, so that clang-tidy finds the OpenMP headers of clang.
check_tidy() {
    if [[ ! -f $tidy_folder/build.ninja ]]; then
        cmake --preset debug -B "$tidy_folder" -D CMAKE_CXX_COMPILER=clang++ -D VARNOLIX_TESTS=OFF > /dev/null || return
    fi
    find src tools -name '*.cpp' -print0 | xargs -0 -n 4 -P "$(nproc)" clang-tidy -p "$tidy_folder" --quiet
}

check_shell() {
    shellcheck scripts/*.sh .ci/run tools/job_folder/run tools/completion/varnolix-job
}

check_with clang-format check_format
check_with clang-tidy check_tidy
check_with shellcheck check_shell
verdict=""
(( ${#failed[@]} == 0 )) || verdict="findings of ${failed[*]}"
(( ${#lacking[@]} == 0 )) || verdict+="${verdict:+; }not installed: ${lacking[*]}"
[[ -z $verdict ]] || fail "$verdict"
say "No findings"
