# shellcheck shell=bash disable=SC2034
# Shared by the scripts in this folder: paths, the build, job folders, timing, tables. To be sourced, not run. `work` is
# a folder for the script's files, which goes when the script ends.

root=$(cd "$(dirname "$0")/.." && pwd)
build=${BENCH_BUILD:-$root/build/bench}
timeLimit=3600
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

die() {
    echo "${0##*/}: $*" >&2
    exit 1
}

# buildPrograms TARGET...
buildPrograms() {
    if ! { cmake --preset bench -S "$root" -B "$build" &&
        cmake --build "$build" --target "$@"; } >"$work/build.log" 2>&1; then
        tail -n 20 "$work/build.log" >&2
        die "the build failed"
    fi
}

# job FOLDER MOTIFS CUTOFF TYPE THREADS [BEST]: makes a job folder with motifs and answers, for BEST matches of a motif
# (default: 10).
job() {
    mkdir -p "$1/motifs" "$1/result"
    "$build/bench/make_motifs" "$2" "$1/motifs/first.txt" "$1/motifs/second.txt"
    printf '%s\n' 2 10 "${6:-10}" "$3" "$5" "$1/motifs/" first.txt 4 second.txt 4 14 N N "$4" Text "$1/result/" \
        >"$1/answers.txt"
}

# inJob FOLDER PROGRAM [WORD]: runs a program on the answers of the job, without a time limit. More threads than
# processors are allowed.
inJob() {
    local folder=$1
    shift
    OMP_NUM_THREADS=64 timeout "$timeLimit" "$@" <"$folder/answers.txt" >"$folder/console.txt"
}

# wholeRun FOLDER: runs the program and prints seconds, processor seconds and peak memory in megabytes.
wholeRun() {
    inJob "$1" /usr/bin/time -o "$1/time.txt" -f '%e %U %S %M' "$build/varnolix" || die "the program failed in $1"
    awk '{ printf "%.2f %.2f %.0f\n", $1, $2 + $3, $4 / 1000 }' "$1/time.txt"
}

bytesWritten() {
    cat "$1"/result/* | wc -c
}

row() {
    local cells
    printf -v cells ' %s |' "$@"
    echo "|$cells"
}

# header NAME...: the column titles of a Markdown table.
header() {
    row "$@"
    row "${@//*/---}"
}

cacheValue() {
    sed -n "s/^$1:[^=]*=//p" "$build/CMakeCache.txt"
}

machine() {
    echo "$(date +%F), $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(nproc) processors," \
        "$(awk '/MemTotal/ { printf "%.0f GB", $2 / 1e6 }' /proc/meminfo)"
    echo "$("$(cacheValue CMAKE_CXX_COMPILER)" --version | head -n 1)," \
        "flags $(cacheValue CMAKE_CXX_FLAGS_RELEASE) -ffp-contract=off -fopenmp"
    echo "load average at the start:$(uptime | sed 's/.*average://')"
}
