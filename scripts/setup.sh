#!/usr/bin/env bash
# Installs by apt what VARNOLIX needs on this machine, and proves that it works.
#
#   setup.sh              compiler kit, WebLogo, PHP, WeasyPrint, R: logos, PDF files, tree
#   setup.sh --text       compiler kit only: building, text reports
#   setup.sh --chromium   the default set and Chromium, which turns pages into PDF more faithfully
#
#   --tests               also what the tests need: GoogleTest, and poppler-utils to look at PDF files
#   --check               installs nothing: says what is missing, and does the proof
#   --if-missing          no proof when everything was there already
#
# Only missing packages are installed. What this release of the system does not have is named, with what that means,
# and the rest is installed all the same; dendextend, a package of R, has a stand-in in tools/R. The proof makes one
# logo, one PDF and one tree (with --text: one small program). Exit status 0 when all of it is ok.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

build_packages=(g++ cmake ninja-build python3)
report_packages=(python3-weblogo ghostscript php-cli weasyprint fonts-liberation fonts-dejavu-core
                 r-base-core r-cran-ggplot2 r-cran-ggdendro r-cran-dendextend r-cran-ape)

choice=default tests=false check_only=false if_missing=false
for argument in "$@"; do
    case $argument in
        --text) choice=text ;;
        --chromium) choice=chromium ;;
        --tests) tests=true ;;
        --check) check_only=true ;;
        --if-missing) if_missing=true ;;
        --help) usage_of "$0"; exit 0 ;;
        *) wrong_use "unknown option $argument" ;;
    esac
done

# wanted_packages: one name a line.
wanted_packages() {
    printf '%s\n' "${build_packages[@]}"
    ! $tests || printf '%s\n' libgtest-dev libgmock-dev
    [[ $choice != text ]] || return 0
    printf '%s\n' "${report_packages[@]}"
    ! $tests || echo poppler-utils
    [[ $choice != chromium ]] || echo chromium
}

# without PACKAGE: what goes wrong where it is missing.
without() {
    case $1 in
        g++ | cmake | ninja-build) echo "the program cannot be built" ;;
        python3) echo "no collection can be installed and no logo drawn" ;;
        libgtest-dev | libgmock-dev) echo "the tests cannot be built" ;;
        poppler-utils) echo "the tests of PDF files fail" ;;
        python3-weblogo | ghostscript) echo "pages have no logos" ;;
        php-cli) echo "no PDF files are made" ;;
        weasyprint) echo "no PDF files are made, unless Chromium is there" ;;
        chromium) echo "WeasyPrint makes the PDF files, and pages are not tested in a browser" ;;
        fonts-*) echo "PDF files get other letters, and the lines of alignments may not match" ;;
        r-cran-dendextend) echo "trees are drawn with the stand-in of tools/R, which gives the same pictures" ;;
        r-cran-ggplot2 | r-cran-ggdendro) echo "nothing is lost: the script of a tree asks for it and goes on" ;;
        r-*) echo "no trees are drawn" ;;
    esac
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

# with_candidate PACKAGE...: those that apt can install, by its present lists.
with_candidate() {
    LC_ALL=C apt-cache policy "$@" |
        awk '/^[^ ]/ { sub(/:$/, ""); name = $0 } $1 == "Candidate:" && $2 != "(none)" { print name }'
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

# tell_missing PACKAGE...: a line for each: whether apt has it, and what goes wrong without it.
tell_missing() {
    local known package why
    known=" $(with_candidate "$@" | tr '\n' ' ')"
    for package in "$@"; do
        why="not to be had"
        [[ $known != *" $package "* ]] || why="not installed"
        printf '  %-18s %s: %s\n' "$package" "$why" "$(without "$package")"
    done
}

# install_packages PACKAGE...: installs those that this release has, and names the others.
install_packages() {
    local prefix known=() lacking=()
    if ! command -v apt-get >/dev/null; then
        fail "no apt-get here; please install by your own means what these Debian packages hold: $*"
    fi
    if ! prefix="$(as_root)"; then
        mapfile -t known < <(with_candidate "$@")
        # Where apt's lists know none of them, they are most likely empty still.
        (( ${#known[@]} > 0 )) || known=("$@")
        printf 'Neither root nor sudo works here. Please run as root, then start this again:\n\n    %s\n' \
               "apt-get update && apt-get install -y --no-install-recommends ${known[*]}" >&2
        exit 1
    fi
    # One source that is down need not matter: whether all packages can be had shows below.
    # shellcheck disable=SC2086  # the prefix is a list of words, often empty
    $prefix apt-get -q update || true
    mapfile -t known < <(with_candidate "$@")
    mapfile -t lacking < <(printf '%s\n' "$@" | grep -vxF -f <(printf '%s\n' "${known[@]}"))
    if (( ${#lacking[@]} > 0 )); then
        say "Not in the package sources of this machine, and what that means"
        tell_missing "${lacking[@]}"
    fi
    (( ${#known[@]} > 0 )) || return 0
    # WebLogo comes with SciPy, which in Debian 12 wants some BLAS to build with: left to itself apt takes a large one.
    [[ " ${known[*]} " != *" python3-weblogo "* ]] || known+=(libblas-dev)
    say "Installing by apt: ${known[*]}"
    # shellcheck disable=SC2086
    $prefix env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300 install -y --no-install-recommends "${known[@]}"
}

# real_dendextend_is_there: whether R has it, from wherever.
real_dendextend_is_there() {
    R_LIBS='' Rscript -e 'find.package("dendextend")' > /dev/null 2>&1
}

# unmet_packages: missing_packages, without dendextend where R has the real one from elsewhere or our stand-in.
unmet_packages() {
    missing_packages | while read -r package; do
        if [[ $package != r-cran-dendextend ]] ||
            ! { [[ -d $r_library/dendextend ]] || real_dendextend_is_there; }; then
            printf '%s\n' "$package"
        fi
    done
}

# install_stand_in: gives R our stand-in for dendextend, unless it has the real one.
install_stand_in() {
    rm -rf "$r_library/dendextend"
    if ! command -v Rscript > /dev/null || real_dendextend_is_there; then
        return 0
    fi
    say "Installing the stand-in for dendextend into $r_library"
    mkdir -p "$r_library"
    R CMD INSTALL --no-docs --library="$r_library" "$project/tools/R/dendextend"
}

# install_all: packages and stand-in; ends the script where nothing was missing and no proof is wanted then.
install_all() {
    local missing
    command -v dpkg-query >/dev/null || fail "this is no Debian system; please install what these packages hold:" \
                                             "$(wanted_packages | tr '\n' ' ')"
    mapfile -t missing < <(unmet_packages)
    if (( ${#missing[@]} == 0 )); then
        say "All packages of the $choice set are installed"
        ! $if_missing || exit 0
    elif [[ ${missing[*]} != r-cran-dendextend || -n $(with_candidate r-cran-dendextend) ]]; then
        # For its stand-in alone nobody need be root.
        install_packages "${missing[@]}"
    fi
    [[ $choice == text ]] || install_stand_in
}

# tell_all_missing: what --check says before the proof.
tell_all_missing() {
    local missing
    command -v dpkg-query >/dev/null || return 0
    mapfile -t missing < <(missing_packages)
    if (( ${#missing[@]} > 0 )); then
        say "Missing here, and what that means"
        tell_missing "${missing[@]}"
    fi
}

if $check_only; then tell_all_missing; else install_all; fi
if [[ $choice == text ]]; then
    exec "$here/prove.sh" --text
fi
exec "$here/prove.sh"
