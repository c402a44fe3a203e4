#!/usr/bin/env bash
# Runs the whole program on many generated motifs, through the dialogue: text reports, 10 top motifs, 5 best matches. It
# prints a row of a table for each run.
#
#   bench/scale.sh [SIZE|CUTOFF]...   sizes are whole numbers (default: 10000 20000 50000), cutoffs have a point
#                                     (default: 0.75 0.9)
#
# THREADS is the number of threads (default: all processors), BENCH_BUILD the build folder (default: build/bench).
set -euo pipefail

# shellcheck source=common.sh
source "$(cd "$(dirname "$0")" && pwd)/common.sh"
threads=${THREADS:-$(nproc)}
timeLimit=86400

sizes=() cutoffs=()
for argument in "$@"; do
    case $argument in
        *.*) cutoffs+=("$argument") ;;
        *[!0-9]*) die "$argument is neither a size nor a cutoff" ;;
        *) sizes+=("$argument") ;;
    esac
done
((${#sizes[@]})) || sizes=(10000 20000 50000)
((${#cutoffs[@]})) || cutoffs=(0.75 0.9)

[[ -x /usr/bin/time ]] || die "needs /usr/bin/time (Debian package time)"
buildPrograms varnolix make_motifs
machine
printf '\n'
header Motifs Cutoff 'Wall, s' 'Processor, s' 'Peak memory, MB' 'Largest file, MB'
for size in "${sizes[@]}"; do
    for cutoff in "${cutoffs[@]}"; do
        job "$work/run" "$size" "$cutoff" All "$threads" 5
        read -r seconds processor peak < <(wholeRun "$work/run")
        [[ -n $peak ]] || die "the program failed with $size motifs"
        largest=$(find "$work/run/result" -type f -printf '%s\n' | sort -n | tail -n 1)
        row "$size" "$cutoff" "$seconds" "$processor" "$peak" \
            "$(awk -v bytes="$largest" 'BEGIN { printf "%.1f", bytes / 1e6 }')"
        rm -rf "$work/run"
    done
done
