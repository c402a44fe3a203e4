#!/usr/bin/env bash
# Installs a reference collection from a downloaded file.
#
#   install-collection.sh NAME FILE [--to DIR]
#
# NAME is one of the names in databases/catalogue.txt (jasparAll ... uniprobeYeast, transfac). FILE may have
# any usual public layout: Jaspar with or without brackets, empty lines and row letters; TRANSFAC; the minimal
# format of MEME; or UniPROBE's own tables with rows "A:", "C:", "G:", "T:".
#
# The collection goes into databases/ of the project, where new-job.sh finds it; with --to it goes only into the
# job folder DIR. A file that cannot be read correctly is refused, and the old collection stays.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

name="" source_file="" base="$project"
while (( $# > 0 )); do
    case $1 in
        --help) usage_of "$0"; exit 0 ;;
        --to)
            (( $# > 1 )) || wrong_use "--to needs a folder"
            base=$2
            shift
            ;;
        -*) wrong_use "unknown option $1" ;;
        *)
            if [[ -z $name ]]; then
                name=$1
            elif [[ -z $source_file ]]; then
                source_file=$1
            else
                wrong_use "one file at a time"
            fi
            ;;
    esac
    shift
done
[[ -n $name && -n $source_file ]] || wrong_use "a name and a file are needed"

file="$(awk -v name="$name" '$1 !~ /^#/ && $2 == name { print $3 }' "$catalogue")"
if [[ -z $file ]]; then
    fail "no collection is named $name; the names are:" "$(awk '!/^#/ { printf "%s ", $2 }' "$catalogue")"
fi
command -v python3 > /dev/null || fail "python3 is not installed, which reads the file: run scripts/setup.sh --text"
[[ -d $base ]] || fail "there is no folder $base"
[[ -f $source_file && -r $source_file ]] || fail "cannot read the file $source_file"

layout=jaspar
[[ $name != transfac ]] || layout=transfac
target="$base/databases/$file"
mkdir -p "$(dirname "$target")"

# The new file is written beside the target and then renamed, so the old collection stays until the new one is
# complete.
fresh="$(mktemp "$target.XXXXXX")"
trap 'rm -f "$fresh"' EXIT
python3 "$here/convert_collection.py" --taxon "$layout" "$source_file" > "$fresh"
chmod 644 "$fresh"
mv -f "$fresh" "$target"
say "$name: $(count_motifs "$target") in $target"
