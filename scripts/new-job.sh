#!/usr/bin/env bash
# Makes a job folder for VARNOLIX and prints the answers to give for it.
#
#   new-job.sh DIR
#
# DIR/motifs/      for the motif files; also holds the client through which WebLogo draws the logos
# DIR/result/      where the reports appear
# DIR/databases/   links to the installed collections (see databases/README.md)
# DIR/prince.php   makes the PDF files; prince-calls-may-overlap beside it says that it may run several times at once
# DIR/run          starts the program: DIR/run for the dialogue, DIR/run ANSWERS for answers from a file
#
# The program finds the result folder by removing the last seven characters of the input path, so the folder
# of the motif files must keep its name. If you run this again on the same DIR, it links the collections that
# have been installed since and leaves your files alone. The same as: varnolix-job folder DIR
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

case ${1:-} in
    --help) usage_of "$0"; exit 0 ;;
    "" | -*) wrong_use "the folder to make must be named" ;;
esac
(( $# == 1 )) || wrong_use "one folder at a time (quote a name with blanks)"
run_companion folder "$1"
