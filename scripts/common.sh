# shellcheck shell=bash disable=SC2034
# Shared by the scripts in this folder: paths, messages, the build, the companion. To be sourced, not run.

project="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
program="${VARNOLIX_PROGRAM:-$project/build/release/varnolix}"
# The companion program, which does the work of some scripts.
companion="${VARNOLIX_JOB:-$project/build/release/varnolix-job}"
# Where setup.sh puts R packages that this release of the system does not have; DIR/run and prove.sh look there.
r_library="$project/build/R-library"

# say TEXT...: announces one step of a script.
say() {
    printf '== %s\n' "$*"
}

# fail TEXT...: prints one plain sentence on standard error and exits with status 1.
fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# usage_of FILE: prints the comment block at the top of a script, without the comment signs.
usage_of() {
    sed -n '2,/^[^#]/{/^#/{s/^# \{0,1\}//p}}' "$1"
}

# wrong_use TEXT...: prints what was wrong and how to use the script, and exits with status 2.
wrong_use() {
    { printf '%s: %s\n\n' "$(basename "$0")" "$*"; usage_of "$0"; } >&2
    exit 2
}

# build_target TARGET [PRESET]: builds a target in build/release; this is quick if it is up to date. The default preset
# is release. The preset program leaves out the tests, which need GoogleTest, and does not configure the folder again if
# it has been configured before.
build_target() {
    local preset="${2:-release}"
    cd "$project" || exit
    if [[ $preset == release || ! -f build/release/build.ninja ]]; then
        say "Configuring (cmake --preset $preset)"
        cmake --preset "$preset"
    fi
    say "Building (cmake --build --preset $preset --target $1)"
    cmake --build --preset "$preset" --target "$1"
}

# run_companion ARGUMENT...: becomes the companion, which is built first if it is missing.
run_companion() {
    [[ -x $companion ]] || (build_target varnolix-job program) >&2
    VARNOLIX_HOME="$project" VARNOLIX_PROGRAM="$program" exec "$companion" "$@"
}

# with_candidate PACKAGE...: lists those that apt can install, by its current package lists.
with_candidate() {
    LC_ALL=C apt-cache policy "$@" |
        awk '/^[^ ]/ { sub(/:$/, ""); name = $0 } $1 == "Candidate:" && $2 != "(none)" { print name }'
}
