#!/usr/bin/env bash
# Installs a reference collection from a downloaded file.
#
#   install-collection.sh NAME FILE [--to DIR]
#
# NAME is one of the names in databases/README.md (jasparAll ... uniprobeYeast, transfac). FILE may have
# any layout of docs/downloads.md.
#
# The collection goes into databases/ of the project, where new-job.sh finds it; with --to it goes only into the
# job folder DIR. A file that cannot be read correctly is refused, and the old collection stays. The same as:
# varnolix-job collections install NAME FILE [--to DIR]
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

[[ ${1:-} != --help ]] || { usage_of "$0"; exit 0; }
run_companion collections install "$@"
