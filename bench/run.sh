#!/usr/bin/env bash
# Runs the whole program on generated motifs, through the dialogue, with a separate job folder for each run.
#
#   bench/run.sh [SIZE...]   runs with SIZE motifs (default: 100 500 1000 2000 5000), times by stage, and a check
#                            that the number of threads does not change the reports
#   bench/run.sh --big       one run with 10,000 motifs
#   bench/run.sh --pages     one job with pages, logos and PDF files against a collection, with the real outside tools,
#                            with a cold and a warm store of logos, on one thread and on two
#   bench/run.sh --store     10,000 logos from the store, on one thread and on two
#
# THREADS is the number of threads (default: all processors), BENCH_BUILD the build folder (default: build/bench). The
# motifs are in two files. Every run asks for 10 best matches and text reports.
#
# For --pages, BEFORE is an older checkout, with its program built in build/release, that is timed in turn with this
# one. MOTIFS (159) and COLLECTION (1082) are the sizes, ROUNDS (1) is how often everything is timed, THREAD_COUNTS
# ("1 2") the numbers of threads. The store of logos is the benchmark's own, and so are the workers.
set -euo pipefail

# shellcheck source=common.sh
source "$(cd "$(dirname "$0")" && pwd)/common.sh"
threads=${THREADS:-$(nproc)}

# runTable CUTOFF TYPE THREADS SIZE...
runTable() {
    local cutoff=$1 type=$2 count=$3 size seconds processor peak
    shift 3
    printf '\n## Whole runs, cutoff %s, Type %s, threads %s\n\n' "$cutoff" "$type" "$count"
    header motifs seconds 'processor seconds' 'peak MB' pairs/s 'bytes written'
    for size in "$@"; do
        job "$work/run" "$size" "$cutoff" "$type" "$count"
        read -r seconds processor peak < <(wholeRun "$work/run")
        row "$size" "$seconds" "$processor" "$peak" \
            "$(awk -v n="$size" -v t="$seconds" 'BEGIN { printf "%.0f", n * (n - 1) / 2 / (t > 0 ? t : 0.01) }')" \
            "$(bytesWritten "$work/run")"
        rm -rf "$work/run"
    done
}

# stages FOLDER: puts the seconds of stage_times into the array figures, and the processor seconds into
# processorFigures, both by name.
stages() {
    declare -gA figures=() processorFigures=()
    local folder=$1 name first second
    inJob "$folder" "$build/bench/stage_times" 2>"$folder/stages.txt" || die "stage_times failed in $folder"
    while IFS=$'\t' read -r name first second; do
        figures[$name]=$first
        processorFigures[$name]=$second
    done <"$folder/stages.txt"
}

# stageTable CUTOFF TYPE THREADS SIZE...
stageTable() {
    local cutoff=$1 type=$2 count=$3 size name cells
    local names=(reading plan 'forward scan' 'backward scan' bounds keys ranking 'ranking and reports'
        'bare kernel' 'kernel, alignments kept' 'kept alignments' 'motifs in a block')
    shift 3
    printf '\n## Seconds by stage, cutoff %s, Type %s, threads %s\n\n' "$cutoff" "$type" "$count"
    header motifs "${names[@]}"
    for size in "$@"; do
        job "$work/run" "$size" "$cutoff" "$type" "$count"
        stages "$work/run"
        cells=()
        for name in "${names[@]}"; do cells+=("${figures[$name]:--}"); done
        row "$size" "${cells[@]}"
        rm -rf "$work/run"
    done
}

# threadTable CUTOFF TYPE SIZE: scan and ranking compared with the bare kernel, for one and two threads.
threadTable() {
    local cutoff=$1 type=$2 size=$3 count seconds oneThread
    local toBare='scan and ranking / bare kernel' toKeeping='scan and ranking / kernel, alignments kept'
    printf '\n## Scan and ranking, %s motifs, cutoff %s, Type %s\n\n' "$size" "$cutoff" "$type"
    header threads 'scan and ranking' 'processor seconds' 'bare kernel' 'kernel, alignments kept' \
        'ratio to bare kernel' 'of processor seconds' 'ratio with alignments kept' 'of processor seconds' 'peak MB' \
        'times one thread'
    for count in 1 2; do
        job "$work/run" "$size" "$cutoff" "$type" "$count"
        stages "$work/run"
        seconds=${figures['scan and ranking']}
        ((count == 1)) && oneThread=$seconds
        row "$count" "$seconds" "${processorFigures['scan and ranking']}" \
            "${figures['bare kernel']}" "${figures['kernel, alignments kept']}" \
            "${figures["$toBare"]}" "${processorFigures["$toBare"]}" \
            "${figures["$toKeeping"]}" "${processorFigures["$toKeeping"]}" "${figures['peak memory, MB']}" \
            "$(awk -v one="$oneThread" -v now="$seconds" 'BEGIN { printf "%.2f", one / now }')"
        rm -rf "$work/run"
    done
}

# The contents of all reports. Leaves out the job number in their names, and the lines with the date and the run time.
maskedResults() {
    local report
    for report in "$1"/result/*; do
        echo "== ${report##*/J_*_}"
        sed -E '/^(Results created by VARNOLIX on|Runtime:) /d' "$report"
    done
}

# threadCheck CUTOFF TYPE SIZE
threadCheck() {
    local count sum bytes reference=
    printf '\n## Reports of %s motifs by number of threads\n\n' "$3"
    for count in 1 2 3 7; do
        job "$work/run" "$3" "$1" "$2" "$count"
        wholeRun "$work/run" >/dev/null
        maskedResults "$work/run" >"$work/masked"
        bytes=$(wc -c <"$work/masked")
        sum=$(sha256sum <"$work/masked" | cut -c 1-16)
        echo "threads $count: $bytes bytes, sum $sum"
        : "${reference:=$sum}"
        [[ $sum == "$reference" ]] || die "the reports differ from those of one thread"
        rm -rf "$work/run"
    done
}

# pagesMotifs: the motifs of the job and of the collection, which are all different; else the store would already have
# logos of the collection after those of the input.
pagesMotifs() {
    "$build/bench/make_motifs" $((motifs + collection)) "$work/all.txt"
    awk -v first=$((motifs * 133 / 159)) -v motifs="$motifs" -v folder="$work" '
        /^>/ { ++n }
        { print > (folder (n <= first ? "/first.txt" : n <= motifs ? "/second.txt" : "/collection.txt")) }
    ' "$work/all.txt"
}

# pagesJob FOLDER CHECKOUT THREADS: a job folder with everything that the outside tools need, made by the checkout's own
# scripts.
pagesJob() {
    VARNOLIX_PROGRAM=$(pagesProgram "$2") "$2/scripts/new-job.sh" "$1" >/dev/null
    cp "$work/first.txt" "$work/second.txt" "$1/motifs/"
    "$2/scripts/install-collection.sh" jasparAll "$work/collection.txt" --to "$1" >/dev/null
    printf '%s\n' 2 10 5 0.75 "$3" "$1/motifs/" first.txt 4 second.txt 4 1 Y Y All All "$1/result/" >"$1/answers.txt"
}

# pagesProgram CHECKOUT
pagesProgram() {
    if [[ $1 == "$root" ]]; then echo "$build/varnolix"; else echo "$1/build/release/varnolix"; fi
}

# moment head|tail PATTERN: when the first or last of the job's files of that name was changed.
moment() {
    find "$work/pages/result" -name "$2" -printf '%T@\n' | sort -n | "$1" -n 1
}

# forTools COMMAND: runs it with a runtime folder and a cache folder of the benchmark's own.
forTools() {
    XDG_RUNTIME_DIR="$work/runtime" XDG_CACHE_HOME="$work/cache" "$@"
}

emptyStore() {
    rm -rf "$work/cache" "$work/runtime"
    mkdir -m 700 "$work/cache" "$work/runtime"
}

# pagesRow LABEL CHECKOUT THREADS: one run, timed by its files. The listing is written right before the first logo of
# the input, and the pages are closed right before the first conversion.
pagesRow() {
    local folder=$work/pages begin end
    pagesJob "$folder" "$2" "$3"
    begin=$(date +%s.%N)
    (
        cd "$folder"
        export PATH="$2/tools/bin:$PATH" VARNOLIX_TOOLS="$2/tools"
        [[ ! -d $root/build/R-library ]] || export R_LIBS="$root/build/R-library"
        forTools inJob "$folder" /usr/bin/time -o time.txt -f '%U %S' "$(pagesProgram "$2")"
    ) || die "the program failed in $folder"
    end=$(date +%s.%N)
    # A double holds nanoseconds since 1970 to a quarter of a microsecond.
    mapfile -t cells < <(awk -v begin="$begin" -v end="$end" \
        -v inputBegin="$(moment tail '*_input_motifs.txt')" -v inputEnd="$(moment tail 'J_*_M[0-9]*.jpeg')" \
        -v databaseBegin="$(moment head 'J_*_D[0-9]*.jpeg')" -v databaseEnd="$(moment tail 'J_*_D[0-9]*.jpeg')" \
        -v pages="$(moment tail 'J_*.html')" '{
            logos = inputEnd - inputBegin + databaseEnd - databaseBegin
            printf "%.1f\n%.1f\n%.1f\n%.1f\n%.1f\n%.1f\n", logos, end - pages, pages - begin - logos,
                pages - begin, end - begin, $1 + $2
        }' "$folder/time.txt")
    row "$1" "$3" "$(find "$folder/result" -name '*.jpeg' -size +0 | wc -l)" \
        "$(find "$folder/result" -name '*.pdf' | wc -l)" "${cells[@]}" "$(cut -d ' ' -f 1 /proc/loadavg)"
    sed 's/^.*converted by //' "$folder/prince.log" | sort | uniq -c >"$work/converters"
    rm -rf "$folder"
}

pagesTable() {
    local count round
    printf '\n## A job with pages: %s motifs against %s\n\n' "$motifs" "$collection"
    header run threads 'logos there' 'PDF files there' 'logos, s' 'PDF files, s' 'rest, s' 'up to the PDF files, s' \
        'all, s' 'processor seconds' 'load at its end'
    pagesMotifs
    for ((round = 0; round < ${ROUNDS:-1}; ++round)); do
        for count in ${THREAD_COUNTS:-1 2}; do
            # The workers of the run before must not help a first run; they end when their folder is new.
            emptyStore
            [[ -z ${BEFORE:-} ]] || pagesRow before "$BEFORE" "$count"
            emptyStore
            pagesRow 'first run' "$root" "$count"
            pagesRow 'second run' "$root" "$count"
        done
    done
    printf '\nConverters of the last run:\n'
    cat "$work/converters"
}

# storeTable: 10,000 logos of 1,250 motifs, each of which comes four times, so that filling the store takes less long.
storeTable() {
    local folder=$work/pages count run
    printf '\n## 10,000 logos from the store\n\n'
    header threads 'logos there' 'seconds' 'load at its end'
    "$build/bench/make_motifs" 1250 "$work/quarter.txt"
    emptyStore
    for run in fill 1 2 1 2; do
        count=${run/fill/2}
        VARNOLIX_PROGRAM="$build/varnolix" "$root/scripts/new-job.sh" "$folder" >/dev/null
        cat "$work"/quarter.txt{,,,} >"$folder/motifs/first.txt"
        printf '%s\n' 1 10 1 0.9 "$count" "$folder/motifs/" first.txt 4 14 N N Global-Only HTML "$folder/result/" \
            >"$folder/answers.txt"
        (cd "$folder" && forTools inJob "$folder" "$build/varnolix") || die "the program failed in $folder"
        [[ $run == fill ]] || row "$count" "$(find "$folder/result" -name '*.jpeg' -size +0 | wc -l)" \
            "$(awk -v begin="$(moment tail '*_input_motifs.txt')" -v end="$(moment tail 'J_*_M[0-9]*.jpeg')" \
                'BEGIN { printf "%.1f", end - begin }')" "$(cut -d ' ' -f 1 /proc/loadavg)"
        rm -rf "$folder"
    done
}

[[ -x /usr/bin/time ]] || die "needs /usr/bin/time (Debian package time)"
buildPrograms varnolix weblogo_client make_motifs stage_times
machine
if [[ ${1:-} == --pages ]]; then
    motifs=${MOTIFS:-159}
    collection=${COLLECTION:-1082}
    BEFORE=${BEFORE:+$(realpath "$BEFORE")}
    [[ -z $BEFORE || -x $(pagesProgram "$BEFORE") ]] || die "no program in $BEFORE/build/release"
    pagesTable
    exit
fi
if [[ ${1:-} == --store ]]; then
    storeTable
    exit
fi
if [[ ${1:-} == --big ]]; then
    runTable 0.85 Global-Only "$threads" 10000
    stageTable 0.85 Global-Only "$threads" 10000
    exit
fi
sizes=("$@")
((${#sizes[@]})) || sizes=(100 500 1000 2000 5000)
runTable 0.75 All "$threads" "${sizes[@]}"
stageTable 0.75 All "$threads" "${sizes[@]}"
middle=${sizes[$((${#sizes[@]} > 1 ? ${#sizes[@]} - 2 : 0))]}
threadTable 0.75 All "$middle"
threadCheck 0.75 All "$middle"
