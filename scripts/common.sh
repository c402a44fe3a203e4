# shellcheck shell=bash disable=SC2034
# Shared by the scripts beside it: places, messages, the list of collections, the build. Sourced, never run.

project="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
program="${VARNOLIX_PROGRAM:-$project/build/release/varnolix}"
# Where setup.sh puts packages of R that this release of the system does not have; DIR/run and the proof look there.
r_library="$project/build/R-library"
catalogue="$project/databases/catalogue.txt"

# say TEXT...: one step of what a script does.
say() {
    printf '== %s\n' "$*"
}

# fail TEXT...: one plain sentence on standard error, exit status 1.
fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# usage_of FILE: the comment block at the head of a script, without its marks.
usage_of() {
    sed -n '2,/^[^#]/{/^#/{s/^# \{0,1\}//p}}' "$1"
}

# wrong_use TEXT...: what was wrong and how the script is used, exit status 2.
wrong_use() {
    { printf '%s: %s\n\n' "$(basename "$0")" "$*"; usage_of "$0"; } >&2
    exit 2
}

# motifs_in FILE: how many motifs an installed collection holds.
motifs_in() {
    case $1 in
        */transfac/*) grep -c '^AC' "$1" || true ;;
        *) grep -c '^>' "$1" || true ;;
    esac
}

# count_motifs FILE: the same in words.
count_motifs() {
    local count
    count="$(motifs_in "$1")"
    if (( count == 1 )); then echo "1 motif"; else echo "$count motifs"; fi
}

# build_target TARGET [PRESET]: builds a target in build/release; quick when it is up to date. The preset, with which
# a fresh folder is configured, is release; program leaves the tests out, which need GoogleTest, and keeps a folder as
# it is that was configured before.
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
