#!/usr/bin/env bash
# Runs a complete job on the sample motifs: from a bare Debian system to finished reports.
#
#   demo.sh              with logos, pages, PDF files and the tree
#   demo.sh --text       text reports only: needs only a C++ toolchain
#   demo.sh --chromium   like demo.sh, but Chromium makes the PDF files
#
# Installs missing packages (setup.sh), builds the program, makes a new job folder build/demo-job, answers the
# dialogue, and lists the reports. The exit status is 0 if all of them exist.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

text_only=false
case ${1:-} in
    "" | --chromium) ;;
    --text) text_only=true ;;
    --help) usage_of "$0"; exit 0 ;;
    *) wrong_use "unknown option $1" ;;
esac

job="$project/build/demo-job"
# In seconds: many times what the job needs. Most of its time goes into the PDF files.
limit=600

"$here/setup.sh" --if-missing "$@"
build_target programs program

say "Making the job folder"
rm -rf "$job"
"$here/new-job.sh" "$job" > /dev/null
cp "$project"/examples/motifs/*.txt "$job/motifs/"
"$here/install-collection.sh" jasparAll "$project/examples/collection/sample_jaspar.txt" --to "$job"
"$here/install-collection.sh" transfac "$project/examples/collection/sample_transfac.txt" --to "$job"
"$here/install-collection.sh" uniprobeMouse "$project/examples/collection/sample_uniprobe.txt" --to "$job"
"$here/new-job.sh" "$job"

# The program refuses thread counts that contain the digit 0, such as 10 and 20.
threads="$(nproc)"
(( threads <= 9 )) || threads=9
if $text_only; then tree=N format=Text; else tree=Y format=All; fi

# Each answer, with its question. Few matches are requested, as WeasyPrint makes only about five PDF pages per second.
answers=(
    "2|number of files"
    "3|number of top significant motifs"
    "2|number of best matches"
    "0.75|cutoff for similarity"
    "$threads|number of threads"
    "$job/motifs/|input file's location"
    "promoters.txt|file 1" "10|its format (unspecified)"
    "enhancers.txt|file 2" "10|its format (unspecified)"
    "1|collection: jasparAll (here the sample)"
    "$tree|phylogenetic tree"
    "Y|combine similar motifs"
    "All|output file type"
    "$format|output file format"
    "$job/result/|output file's location"
)

say "Answers of this job ($job/answers.txt)"
for answer in "${answers[@]}"; do
    printf '  %-40s %s\n' "${answer#*|}:" "${answer%%|*}"
    printf '%s\n' "${answer%%|*}" >> "$job/answers.txt"
done

say "Running the job: $job/run answers.txt"
timeout "$limit" "$job/run" "$job/answers.txt" | tee "$job/console.txt" \
    || fail "the run did not end well; its console is kept in $job/console.txt"

identity="$(find "$job/result" -name 'J_*_input_motifs.txt' -printf '%f')"
identity="${identity%input_motifs.txt}"
missing=0

# line NAME WHAT: prints a line of the list.
line() {
    printf '  %-58s %s\n' "$1" "$2"
}

# lacking NAME WHAT: prints and counts something that is missing.
lacking() {
    line "$1" "MISSING: $2"
    missing=$((missing + 1))
}

# named FILE WHAT [IDENTITY]: lists one file of the result folder.
named() {
    if [[ -s $job/result/${3:-}$1 ]]; then line "$1" "$2"; else lacking "$1" "$2"; fi
}

# report NAME WHAT: lists a file whose name begins with the job's identity; the list leaves out the identity.
report() {
    named "$1" "$2" "$identity"
}

# logos: checks that there are two pictures for each input motif and each reference motif.
logos() {
    local motifs found
    motifs=$(( $(sed -n 's/^Total number of motifs: //p' "$job/result/${identity}input_motifs.txt")
               + $(grep -c '^>' "$job/databases/jaspar/jaspar_pfm_all.txt") ))
    found="$(find "$job/result/${identity}image" -name '*.jpeg' -size +0 | wc -l)"
    if (( found == 2 * motifs )); then
        line image/ "$found logos: each motif and its reverse complement"
    else
        lacking image/ "$(( 2 * motifs - found )) of $(( 2 * motifs )) logos"
    fi
}

say "Reports in $job/result/ (before each name stands the job's identity, $identity)"
report input_motifs.txt "the motifs as they were read"
report Results.txt "full report: best matches and top significant motifs"
report Results_Without_Motif_Details.txt "the same without the matrices"
report Results_Global_Matching.txt "matches between different files only"
report Results_Database_Matching.txt "full report of matches in the collection"
report Results_Database_Matching_Without_Motif_Details.txt "the same without the matrices"
report Results_Database_Matching_Global_Matching.txt "the top motifs of global matching in the collection"
report Results_Combined_Motifs_Global_Matching.txt "groups of global matches, each folded into one motif"
report Results_Combined_Motifs_Global_and_Local_Matching.txt "groups of all matches, folded"
report Results_Combined_Motifs_Best_Matches.txt "groups of best matches, folded"
if ! $text_only; then
    for kind in html pdf; do
        report "HTML_Results.$kind" "full report with logos"
        report "HTML_Global_Matching_Results.$kind" "matches between different files"
        report "HTML_Results_Database_Matching.$kind" "matches in the collection"
        report "HTML_Results_Database_Matching_Global_Matching.$kind" "the top motifs in the collection"
        report "Phylogenetic_Tree.$kind" "tree of all motifs"
        report "Global_Matching_Phylogenetic_Tree.$kind" "tree by matches between different files"
    done
    logos
    say "Files of the trees (under these bare names)"
    for tree_of in "" Global_Matching_; do
        named "${tree_of}Distance_Matrix.csv" "the distances that a tree is made of"
        named "${tree_of}Plot_File.R" "the script that draws it"
        named "${tree_of}Phylogenetic_Tree.png" "its picture"
    done
fi
(( missing == 0 )) || fail "$missing of the reports are missing; the console is kept in $job/console.txt"

# The same job by the companion, as text: its pages would be the same ones again.
short="$project/build/demo-short"
samples="$project/examples"
command=("$companion" run --force -o "$short" --top 3 --best 2 --cutoff 0.75 --merge
         --collection "$samples/collection/sample_jaspar.txt" "$samples/motifs/promoters.txt" "$samples/motifs/enhancers.txt")
$text_only || command+=(--tree)
rm -rf "$short"
say "The same job in one command"
printf ' %s' "" "${command[@]#"$project/"}"
printf '\n'
"${command[@]}"
# made FILE WHAT: lists one file of the companion's job.
made() {
    if [[ -s $short/$1 ]]; then line "$1" "$2"; else lacking "$1" "$2"; fi
}

say "What it wrote in $short/"
made index.html "the page to open first: matches, motifs and tree, in any browser"
made matches.tsv "every match of every list; matches.json holds the same"
made motifs.tsv "every motif, with its file and line"
made combined_motifs.meme "merged motifs with their matrices; also .jaspar, .transfac, .tsv"
$text_only || made tree.nwk "the tree as Newick"
made job.json "settings, files, counts and times"
(( missing == 0 )) || fail "$missing files of the companion's job are missing"
say "The first matches in $short/matches.tsv (six of its columns)"
awk -F '\t' '
    NR == 1 { for (i = 1; i <= NF; i++) column[$i] = i }
    NR <= 4 { printf "  %-12s %-14s %-14s %-12s %-8s %s\n", $column["list"], $column["query_id"], $column["target_id"],
                     $column["orientation"], $column["overlap"], $column["similarity"] }' "$short/matches.tsv"

say "All there. Your own motifs: varnolix-job run FILE..., or scripts/new-job.sh DIR for the dialogue"
say "Open this in a browser: ${short#"$PWD/"}/index.html"
