#!/usr/bin/env bash
# Installs with apt what VARNOLIX needs on this machine, and proves that it works.
#
#   setup.sh              C++ toolchain, WebLogo, PHP, WeasyPrint, R: for logos, PDF files, trees, and the page of a job
#   setup.sh --text       C++ toolchain and GNU parallel only: for building, and for text reports
#   setup.sh --chromium   the default set, and Chromium, which converts pages to PDF more faithfully
#
#   --tests               also what the tests need: GoogleTest, poppler-utils to examine PDF files, a browser driver,
#                         Slurm
#   --firefox             also Firefox, in which the page of a job is tested too
#   --packages            also what package.sh needs: the tools of Debian packages, and those that make manual pages
#   --checks              also what more-tests.sh needs: clang with its libraries, the checkers of check.sh
#   --check               installs nothing: says what is missing, and does the proof
#   --if-missing          skips the proof if nothing was missing
#
# Only missing packages are installed. If this release of the system does not have a package, the script names it and
# says what follows, and installs the others; for the R package dendextend there is a stand-in in tools/R. The proof
# (prove.sh) makes one logo, one PDF and one tree, and compiles a small program; with --text it only compiles. The exit
# status is 0 if all of it is ok.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

build_packages=(g++ cmake ninja-build python3 libcli11-dev nlohmann-json3-dev zlib1g-dev
                libssl-dev)
job_packages=(parallel)
report_packages=(python3-weblogo ghostscript php-cli weasyprint fonts-liberation fonts-dejavu-core
                 r-base-core r-cran-ggplot2 r-cran-ggdendro r-cran-dendextend r-cran-ape
                 libjs-jquery libjs-jquery-datatables node-d3)
package_packages=(dpkg-dev file help2man lowdown lintian)
check_packages=(clang libomp-dev libclang-rt-dev clang-format clang-tidy shellcheck)

choice=default firefox=false tests=false checks=false packages=false check_only=false if_missing=false
for argument in "$@"; do
    case $argument in
        --text) choice=text ;;
        --chromium) choice=chromium ;;
        --firefox) firefox=true ;;
        --tests) tests=true ;;
        --checks) checks=true ;;
        --packages) packages=true ;;
        --check) check_only=true ;;
        --if-missing) if_missing=true ;;
        --help) usage_of "$0"; exit 0 ;;
        *) wrong_use "unknown option $argument" ;;
    esac
done

# wanted_packages: lists the packages, one name per line.
wanted_packages() {
    every_wanted_package | awk '!seen[$0]++'
}

# every_wanted_package: the same, where some may come twice.
every_wanted_package() {
    printf '%s\n' "${build_packages[@]}" "${job_packages[@]}"
    ! $tests || printf '%s\n' libgtest-dev libgmock-dev
    ! $packages || printf '%s\n' "${package_packages[@]}"
    ! $checks || printf '%s\n' "${check_packages[@]}"
    [[ $choice != text ]] || return 0
    printf '%s\n' "${report_packages[@]}"
    ! $tests || printf '%s\n' help2man lowdown man-db
    ! $tests || printf '%s\n' poppler-utils python3-biopython python3-pil python3-selenium chromium-driver \
                               slurm-wlm munge
    [[ $choice != chromium ]] || echo chromium
    ! $firefox || echo firefox-esr
}

# without PACKAGE: says what goes wrong without it.
without() {
    case $1 in
        g++ | cmake | ninja-build | libcli11-dev | nlohmann-json3-dev | zlib1g-dev | libssl-dev)
            echo "the program cannot be built" ;;
        python3) echo "no logo is drawn, and the run script of job folders does not work" ;;
        parallel) echo "varnolix-job many runs no jobs, and its tests fail" ;;
        slurm-wlm | munge) echo "the tests of arrays for Slurm are left out" ;;
        libgtest-dev | libgmock-dev) echo "the tests cannot be built" ;;
        clang | libomp-dev) echo "nothing can be built with clang" ;;
        libclang-rt-dev) echo "no fuzz targets, and no sanitizers with clang" ;;
        clang-format | clang-tidy | shellcheck) echo "check.sh fails" ;;
        python3-biopython | python3-pil) echo "tests of the tables and pictures of jobs fail" ;;
        python3-selenium | chromium-driver) echo "the tests of the page of a job fail" ;;
        firefox-esr) echo "the page of a job is tested in Chromium alone" ;;
        libjs-jquery | libjs-jquery-datatables) echo "the page of a job has a plain table that cannot be sorted" ;;
        node-d3) echo "the page of a job has its tree as text" ;;
        help2man | lowdown) echo "there are no manual pages, and their tests fail" ;;
        man-db) echo "the tests of the manual pages fail" ;;
        dpkg-dev | file) echo "package.sh cannot make packages" ;;
        lintian) echo "package.sh does not check the packages" ;;
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

# missing_packages: lists those of wanted_packages that are not installed.
missing_packages() {
    local installed
    # dpkg-query complains about names that it does not know; those packages are missing, too.
    # shellcheck disable=SC2016  # the fields are dpkg-query's
    installed="$(wanted_packages | xargs dpkg-query -W -f='${Package} ${db:Status-Status}\n' 2>/dev/null || true)"
    wanted_packages | while read -r package; do
        grep -qxF "$package installed" <<<"$installed" || printf '%s\n' "$package"
    done
}

# as_root: prints what to put in front of a command that needs root; fails if root cannot be had.
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

# tell_missing PACKAGE...: prints a line for each: whether apt has it, and what goes wrong without it.
tell_missing() {
    local known package why
    known=" $(with_candidate "$@" | tr '\n' ' ')"
    for package in "$@"; do
        why="not to be had"
        [[ $known != *" $package "* ]] || why="not installed"
        printf '  %-18s %s: %s\n' "$package" "$why" "$(without "$package")"
    done
}

# install_packages PACKAGE...: installs those that this release has and names the others.
install_packages() {
    local prefix known=() lacking=()
    if ! command -v apt-get >/dev/null; then
        fail "no apt-get here; please install by your own means what these Debian packages hold: $*"
    fi
    if ! prefix="$(as_root)"; then
        mapfile -t known < <(with_candidate "$@")
        # If apt's lists have none of them, the lists are most likely still empty.
        (( ${#known[@]} > 0 )) || known=("$@")
        printf 'Neither root nor sudo works here. Please run as root, then start this again:\n\n    %s\n' \
               "apt-get update && apt-get install -y --no-install-recommends ${known[*]}" >&2
        exit 1
    fi
    # A source that is down may not matter: below it turns out whether all packages are available.
    # shellcheck disable=SC2086  # the prefix is a list of words, often empty
    $prefix apt-get -q update || true
    mapfile -t known < <(with_candidate "$@")
    mapfile -t lacking < <(printf '%s\n' "$@" | grep -vxF -f <(printf '%s\n' "${known[@]}"))
    if (( ${#lacking[@]} > 0 )); then
        say "Not in the package sources of this machine, and what that means"
        tell_missing "${lacking[@]}"
    fi
    (( ${#known[@]} > 0 )) || return 0
    # WebLogo needs SciPy, which in Debian 12 asks for a BLAS to build with; apt would choose a large one.
    [[ " ${known[*]} " != *" python3-weblogo "* ]] || known+=(libblas-dev)
    say "Installing by apt: ${known[*]}"
    # shellcheck disable=SC2086
    $prefix env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300 install -y --no-install-recommends "${known[@]}"
}

# real_dendextend_is_there: succeeds if R has the real package, wherever it came from.
real_dendextend_is_there() {
    R_LIBS='' Rscript -e 'find.package("dendextend")' > /dev/null 2>&1
}

# unmet_packages: missing_packages, without dendextend if R has the real one from elsewhere or our stand-in.
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

# install_all: installs packages and stand-in; ends the script if nothing was missing and --if-missing was given.
install_all() {
    local missing
    command -v dpkg-query >/dev/null || fail "this is no Debian system; please install what these packages hold:" \
                                             "$(wanted_packages | tr '\n' ' ')"
    mapfile -t missing < <(unmet_packages)
    if (( ${#missing[@]} == 0 )); then
        say "All packages of the $choice set are installed"
        ! $if_missing || exit 0
    elif [[ ${missing[*]} != r-cran-dendextend || -n $(with_candidate r-cran-dendextend) ]]; then
        # Installing only the stand-in does not need root.
        install_packages "${missing[@]}"
    fi
    [[ $choice == text ]] || install_stand_in
}

# tell_all_missing: prints what --check says before the proof.
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
