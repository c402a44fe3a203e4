#!/usr/bin/env bash
# Makes a job folder for VARNOLIX and prints the answers to give for it.
#
#   new-job.sh DIR
#
# DIR/motifs/      for the motif files; also holds the client through which WebLogo draws the logos
# DIR/result/      where the reports appear
# DIR/databases/   links to the installed collections (see databases/README.md)
# DIR/prince.php   makes the PDF files
# DIR/run          starts the program: DIR/run for the dialogue, DIR/run ANSWERS for answers from a file
#
# The program finds the result folder by removing the last seven characters of the input path, so the folder
# of the motif files must keep its name. If you run this again on the same DIR, it links the collections that
# have been installed since and leaves your files alone.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

case ${1:-} in
    --help) usage_of "$0"; exit 0 ;;
    "" | -*) wrong_use "the folder to make must be named" ;;
esac
(( $# == 1 )) || wrong_use "one folder at a time (quote a name with blanks)"
[[ $1 != *$'\n'* ]] || fail "a folder name with a line end cannot be typed in the dialogue"

mkdir -p -- "$1" || fail "cannot make the folder $1"
job="$(cd -- "$1" && pwd)"
mkdir -p "$job/motifs" "$job/result" "$job"/databases/{jaspar,transfac,uniprobe}
cp "$project/tools/prince.php" "$job/prince.php"

# write_run_script: writes DIR/run, with full paths, so that it can be started from anywhere.
write_run_script() {
    {
        cat <<'END'
#!/usr/bin/env bash
# Starts VARNOLIX in this job folder: the dialogue on the terminal, or answers from a file.
#
#   run [ANSWERS]
#
# The work is done by the project's scripts/run_job.py; run --help explains it.
set -euo pipefail
END
        printf 'project=%q\n' "$project"
        cat <<'END'
program="${VARNOLIX_PROGRAM:-$project/build/release/varnolix}"
if [[ ! -x $program ]]; then
    echo "run: the program is not built yet: run $project/scripts/demo.sh once" >&2
    exit 1
fi
if ! command -v python3 > /dev/null; then
    echo "run: python3 is not installed: $project/scripts/setup.sh --text installs it" >&2
    exit 1
fi
export PATH="$project/tools/bin:$PATH" VARNOLIX_TOOLS="$project/tools"
if [[ -d $project/build/R-library ]]; then
    export R_LIBS="$project/build/R-library${R_LIBS:+:$R_LIBS}"
fi
job="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
exec python3 -B "$project/scripts/run_job.py" "$program" "$job" "$@"
END
    } > "$job/run"
    chmod +x "$job/run"
}

# link_project_file TARGET LINK: makes a link into the project, but never replaces something put there by hand.
link_project_file() {
    if [[ -L $2 || ! -e $2 ]]; then
        rm -f "$2"
        [[ ! -e $1 ]] || ln -s "$1" "$2"
    fi
}

write_run_script
# The client for logos is built beside the program. If it has not been built yet, the launcher will find it later.
logo_tool="$(realpath -m -- "$(dirname -- "$program")")/weblogo-3.4"
[[ -x $logo_tool/weblogo ]] || logo_tool="$project/tools/weblogo-3.4"
link_project_file "$logo_tool" "$job/motifs/weblogo-3.4"
cat <<END
Job folder $job
  motif files go into  $job/motifs/
  reports appear in    $job/result/
  start it with        $job/run   (answers from a file: run ANSWERS)

Answers for this folder:
  input file's location    $job/motifs/
  input file names         the bare names of files in motifs/, without blanks
  output file's location   $job/result/

Collections (answer, name, what is there):
END
missing=0
while read -r number name file; do
    link_project_file "$project/databases/$file" "$job/databases/$file"
    if [[ -f $job/databases/$file ]]; then
        printf '  %4s  %-20s %s\n' "$number" "$name" "$(count_motifs "$job/databases/$file")"
    else
        printf '  %4s  %-20s not installed\n' "$number" "$name"
        missing=$((missing + 1))
    fi
done < <(grep -v '^#' "$catalogue")
printf '  %4s  %-20s %s\n' 14 None "no collection"
if (( missing > 0 )); then
    cat <<END

A run that chooses a collection that is not installed ends at the database stage with exit status 1.
Install one with: $here/install-collection.sh NAME FILE   (see databases/README.md), then run this again.
END
fi
