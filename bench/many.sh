#!/usr/bin/env bash
# Runs many small jobs of a list, one at a time and two at a time, with one thread each; then kills everything in the
# middle of a run, and checks that the next one does only what is missing and gives the same table.
#
#   bench/many.sh
#
# JOBS (200) is the number of jobs, MOTIFS (30) that of motifs in each, ROUNDS (1) how often the runs are timed in turn.
# BENCH_BUILD is the build folder (default: build/bench).
set -euo pipefail

# shellcheck source=common.sh
source "$(cd "$(dirname "$0")" && pwd)/common.sh"
jobs=${JOBS:-200}
motifs=${MOTIFS:-30}
companion=$build/varnolix-job

# makeList: motif files and the list of jobs.
makeList() {
    local files=() number
    printf 'name\tfiles\n' >"$work/jobs.tsv"
    for ((number = 1; number <= jobs; ++number)); do
        files+=("$work/motifs$number.txt")
        printf 'job%s\tmotifs%s.txt\n' "$number" "$number" >>"$work/jobs.tsv"
    done
    "$build/bench/make_motifs" $((jobs * motifs)) "${files[@]}"
}

# manyJobs FOLDER AT-ONCE
manyJobs() {
    VARNOLIX_HOME=$root "$companion" many --quiet "$work/jobs.tsv" -o "$1" --jobs "$2" --threads 1
}

# secondsOfJobs FOLDER: what the jobs themselves took, all together.
secondsOfJobs() {
    awk -F '\t' 'NR == 1 { for (k = 1; k <= NF; ++k) if ($k == "seconds") column = k; next } { sum += $column }
        END { printf "%.1f", sum }' "$1/summary.tsv"
}

timeTable() {
    local round count seconds one=
    printf '\n## %s jobs of %s motifs, one thread each\n\n' "$jobs" "$motifs"
    header 'Jobs at once' Seconds 'Processor seconds' 'Jobs per second' 'Seconds within the jobs' 'Times one at a time'
    for ((round = 0; round < ${ROUNDS:-1}; ++round)); do
        for count in 1 2; do
            rm -rf "$work/at$count"
            VARNOLIX_HOME=$root /usr/bin/time -o "$work/time" -f '%e %U %S' "$companion" many --quiet \
                "$work/jobs.tsv" -o "$work/at$count" --jobs "$count" --threads 1 || die "jobs failed"
            read -r seconds user system <"$work/time"
            ((count > 1)) || one=$seconds
            row "$count" "$seconds" "$(awk -v u="$user" -v s="$system" 'BEGIN { printf "%.1f", u + s }')" \
                "$(awk -v n="$jobs" -v t="$seconds" 'BEGIN { printf "%.1f", n / t }')" \
                "$(secondsOfJobs "$work/at$count")" \
                "$(awk -v one="$one" -v now="$seconds" 'BEGIN { printf "%.2f", one / now }')"
        done
    done
    cmp "$work/at1/all_matches.tsv" "$work/at2/all_matches.tsv" || die "the tables differ"
}

# records FOLDER: the record of each job that is done, with the time when it was written.
records() {
    find "$1" -mindepth 2 -maxdepth 2 -name job.json -printf '%P %T@\n' | sort
}

# killAll: kills the processes that name our folder in their command, until there is none. This shell does not.
killAll() {
    local found
    while mapfile -t found < <(pgrep -f "$work/killed") && ((${#found[@]})); do
        kill -KILL "${found[@]}" 2>/dev/null || true
    done
}

killTable() {
    local round before
    printf '\n## Killed in the middle\n\n'
    header 'Done when killed' 'Done again or first' 'Same table'
    for round in 1 2 3; do
        rm -rf "$work/killed"
        manyJobs "$work/killed" 2 >/dev/null 2>&1 &
        while (($(records "$work/killed" 2>/dev/null | wc -l) < jobs * round / 4)); do sleep 0.01; done
        killAll
        wait $! 2>/dev/null || true
        records "$work/killed" >"$work/before"
        manyJobs "$work/killed" 2 || die "the second run failed"
        records "$work/killed" >"$work/after"
        before=$(wc -l <"$work/before")
        [[ -z $(comm -23 "$work/before" "$work/after") ]] || die "jobs that were done were done again"
        cmp "$work/at1/all_matches.tsv" "$work/killed/all_matches.tsv" || die "the table is another one"
        row "$before" "$(comm -13 "$work/before" "$work/after" | wc -l)" yes
    done
}

[[ -x /usr/bin/time ]] || die "needs /usr/bin/time (Debian package time)"
buildPrograms varnolix-job make_motifs
machine
makeList
timeTable
killTable
