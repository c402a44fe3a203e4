#!/usr/bin/env bash
# Tests VARNOLIX in other ways than test.sh does: with another compiler, with sanitizers, and by static checks.
#
#   more-tests.sh [JOB...]   the named jobs, or all of them:
#
# - clang: clang builds everything that the unit tests need, with warnings as errors, and they pass
# - asan: address and undefined-behaviour sanitizers find nothing in unit tests, golden cases, the stored inputs of the
#   fuzz targets, and random jobs
# - checks: check.sh finds nothing
#
# Installs what is missing (setup.sh). Says of each job whether it passed and how long it took, and at the end how many
# jobs passed and failed. All that a job prints is in build/more-tests/JOB.log; if it fails, the end of that is shown.
# Exit status 0 when all jobs pass.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

# build_and_test PRESET LABELS TARGET...: builds the targets, then runs the tests with one of the labels.
build_and_test() {
    local preset=$1 labels=$2
    shift 2
    cmake --preset "$preset" &&
        cmake --build --preset "$preset" --target "$@" &&
        ctest --preset "$preset" -L "^($labels)\$"
}

job_clang() {
    build_and_test clang unit unit_tests
}

# A sandbox may forbid the tracing that the search for leaks needs; the process ends soon after anyway.
job_asan() {
    ASAN_OPTIONS=detect_leaks=0 build_and_test asan "unit|golden|corpus|twin" varnolix unit_tests fuzz_replay
}

job_checks() {
    "$here/check.sh"
}

jobs=("$@")
case ${1:-} in
    --help) usage_of "$0"; exit 0 ;;
    "") jobs=(clang asan checks) ;;
esac
for job in "${jobs[@]}"; do
    [[ $(type -t "job_$job") == function ]] || wrong_use "no job is named $job"
done

"$here/setup.sh" --if-missing --text --tests --checks
cd "$project"
logs="build/more-tests"
mkdir -p "$logs"
failed=()
for job in "${jobs[@]}"; do
    say "$job: running, see $logs/$job.log"
    start=$SECONDS verdict=passed
    if ! "job_$job" > "$logs/$job.log" 2>&1 < /dev/null; then
        verdict=FAILED
        failed+=("$job")
        tail -n 60 "$logs/$job.log"
    fi
    say "$job: $verdict after $((SECONDS - start)) s"
done
echo "$((${#jobs[@]} - ${#failed[@]})) passed, ${#failed[@]} failed"
(( ${#failed[@]} == 0 )) || fail "failed: ${failed[*]}"
