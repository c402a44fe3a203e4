#!/usr/bin/env bash
# Installs by apt what VARNOLIX needs on this machine, and proves that it works.
#
#   setup.sh              compiler kit, WebLogo, PHP, WeasyPrint, R: logos, PDF files, tree
#   setup.sh --text       compiler kit only: building, testing, text reports
#   setup.sh --chromium   the default set and Chromium, which turns pages into PDF more faithfully
#
#   --check               installs nothing, does the proof alone
#   --if-missing          no proof when every package was there already
#
# Only missing packages are installed. The proof makes one logo, one PDF and one tree (with --text: one
# small program). Exit status 0 when all of it is ok.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

text_packages=(g++ cmake ninja-build libgtest-dev libgmock-dev python3)
default_packages=(python3-weblogo ghostscript php-cli weasyprint fonts-liberation fonts-dejavu-core poppler-utils
                  r-base-core r-cran-ggplot2 r-cran-ggdendro r-cran-dendextend r-cran-ape)
chromium_packages=(chromium)

choice=default check_only=false if_missing=false
for argument in "$@"; do
    case $argument in
        --text) choice=text ;;
        --chromium) choice=chromium ;;
        --check) check_only=true ;;
        --if-missing) if_missing=true ;;
        --help) usage_of "$0"; exit 0 ;;
        *) wrong_use "unknown option $argument" ;;
    esac
done

# wanted_packages: one name a line.
wanted_packages() {
    printf '%s\n' "${text_packages[@]}"
    [[ $choice == text ]] || printf '%s\n' "${default_packages[@]}"
    [[ $choice != chromium ]] || printf '%s\n' "${chromium_packages[@]}"
}

# missing_packages: those of wanted_packages that are not installed.
missing_packages() {
    local installed
    # dpkg-query complains about every name that it has never heard of; those are missing all the same.
    # shellcheck disable=SC2016  # the fields are dpkg-query's
    installed="$(wanted_packages | xargs dpkg-query -W -f='${Package} ${db:Status-Status}\n' 2>/dev/null || true)"
    wanted_packages | while read -r package; do
        grep -qxF "$package installed" <<<"$installed" || printf '%s\n' "$package"
    done
}

# as_root: the words to put before a command that needs root; false where there are none.
as_root() {
    if [[ $(id -u) == 0 ]]; then
        return 0
    fi
    command -v sudo >/dev/null || return 1
    if sudo -n true 2>/dev/null; then
        echo "sudo -n"
    elif [[ -t 0 ]]; then
        echo sudo           # asks for the password
    else
        return 1
    fi
}

# install_packages PACKAGE...
install_packages() {
    local command="apt-get update && apt-get install -y --no-install-recommends $*" prefix
    if ! command -v apt-get >/dev/null; then
        fail "no apt-get here; please install by your own means what these Debian packages hold: $*"
    fi
    if ! prefix="$(as_root)"; then
        printf 'Neither root nor sudo works here. Please run as root, then start this again:\n\n    %s\n' "$command" >&2
        exit 1
    fi
    say "Installing by apt: $*"
    # shellcheck disable=SC2086  # the prefix is a list of words, often empty
    {
        # One source that is down need not matter: whether all packages can be had shows below.
        $prefix apt-get -q update || true
        $prefix env DEBIAN_FRONTEND=noninteractive \
            apt-get -q -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300 install -y --no-install-recommends "$@"
    }
}

if ! $check_only; then
    command -v dpkg-query >/dev/null || fail "this is no Debian system; please install what these packages hold:" \
                                             "$(wanted_packages | tr '\n' ' ')"
    mapfile -t missing < <(missing_packages)
    if (( ${#missing[@]} == 0 )); then
        say "All packages of the $choice set are installed"
        ! $if_missing || exit 0
    else
        install_packages "${missing[@]}"
    fi
fi

if [[ $choice == text ]]; then
    exec "$here/prove.sh" --text
fi
exec "$here/prove.sh"
