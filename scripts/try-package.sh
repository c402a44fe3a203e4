#!/usr/bin/env bash
# Tries the Debian packages on a fresh Debian: installs them, runs a job as an ordinary user, and removes them again.
#
#   try-package.sh SUITE   a Debian release by name: bookworm, trixie
#
#   --packages DIR         tries the packages in DIR, which package.sh made on that release; otherwise package.sh makes
#                          those of the last commit in a chroot of its own
#   --text                 installs no recommended packages, and runs a job with text reports
#   --keep                 keeps the chroots and says where they are
#   --mirror URL           where packages come from; the default is the mirror that this machine's apt uses
#
# The packages are installed by apt in a new chroot that holds only the base system and what the packages depend on and
# recommend. All files are listed before they are installed, and again after they are purged: the lists must be the
# same but for the user's files. This needs root, debootstrap, about 5 GB of space below TMPDIR (or /var/tmp), and a
# mirror that can be reached. The exit status is 0 if all went well.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"
# shellcheck source=fresh_system.sh
source "$here/fresh_system.sh"

user=tester
packages_inside=/root/packages

# --- What runs in the chroot, where this script is copied to.

# install_by_apt ARGUMENT...: apt-get install or satisfy, without questions.
install_by_apt() {
    DEBIAN_FRONTEND=noninteractive apt-get -q -o Dpkg::Use-Pty=0 "$@" > /root/apt.log 2>&1 ||
        { tail -n 30 /root/apt.log >&2; fail "apt-get $1 failed"; }
}

# wanted_of FIELD: the packages that a field of ours names, one group of alternatives a line, without our own.
wanted_of() {
    local package
    for package in "$packages_inside"/*.deb; do
        dpkg-deb -f "$package" "$1" | tr ',' '\n'
    done | sed 's/^ *//' | grep -v -e '^varnolix' -e '^$' | sort -u
}

# install_wanted: installs what the packages depend on and recommend, but not themselves.
install_wanted() {
    local groups=() group
    mapfile -t groups < <(wanted_of Depends)
    if ! $text_only; then
        while read -r group; do
            if apt-get satisfy -s "$group" > /dev/null 2>&1; then
                groups+=("$group")
            else
                say "This release does not have $group"
            fi
        done < <(wanted_of Recommends)
    fi
    install_by_apt satisfy -y --no-install-recommends "${groups[@]}"
}

# files_of_system: lists all files but those of the user and of this trial.
files_of_system() {
    find / \( -path /proc -o -path /sys -o -path /dev -o -path /root \) -prune -o ! -user "$user" -print | sort
}

# as_user COMMAND...: runs a command as the user, in the user's home.
as_user() {
    (cd "/home/$user" && runuser -u "$user" -- env -i HOME="/home/$user" LC_ALL=C.UTF-8 PATH=/usr/bin:/bin "$@")
}

# require FILE...: fails unless each of the user's files is there and not empty.
require() {
    local file
    for file in "$@"; do
        [[ -s /home/$user/$file ]] || fail "the job made no $file"
    done
}

# run_job: one command on the examples, as a user would type it.
run_job() {
    local examples=/usr/share/doc/varnolix/examples extra=() job=/home/$user/job
    $text_only || extra=(--format all --tree)
    say "As $user: varnolix-job run --merge ${extra[*]} ... promoters.txt enhancers.txt"
    as_user varnolix-job run -o job --top 3 --best 2 --cutoff 0.75 --merge "${extra[@]}" \
        --collection "$examples/collection/sample_jaspar.txt" "$examples/motifs/promoters.txt" \
        "$examples/motifs/enhancers.txt"
    require job/index.html job/matches.tsv job/combined_motifs.meme
    cut -f 1,6,11,18,19 "$job/matches.tsv" | sed -n 1,4p
    find "$job" -name '*_Results*.txt' -printf '  %f, %s bytes\n' | sort | sed -n 1,4p
    find "$job" -type l -printf '  %P -> %l\n'
    sed -n 's/^\(home\|built\)=/  run: \1=/p' "$job/run"
    $text_only && return
    require job/tree.nwk job/result/Phylogenetic_Tree.png
    printf '  %s: %d\n' "PDF files" "$(find "$job/result" -name '*.pdf' -size +1k | wc -l)" \
        "logos" "$(find "$job/result" -name '*.jpeg' -size +1k | wc -l)"
    [[ -n $(find "$job/result" -name '*.pdf' -size +1k) ]] || fail "the job made no PDF file"
    [[ -n $(find "$job/result" -name '*.jpeg' -size +1k) ]] || fail "the job drew no logo"
    say "The same job by its start script: job/run job/answers.txt"
    as_user job/run job/answers.txt < /dev/null | tail -n 2
}

# try_installed: the whole trial in the chroot.
try_installed() {
    cd /root
    install_by_apt update
    say "Installing what the packages depend on$($text_only || echo ' and recommend')"
    install_wanted
    useradd --create-home "$user"
    files_of_system > /root/before
    say "Installing $(cd "$packages_inside" && echo ./*.deb)"
    if $text_only; then
        install_by_apt install -y --no-install-recommends "$packages_inside"/*.deb
    else
        install_by_apt install -y "$packages_inside"/*.deb
    fi
    say "$(files_of_system | comm -13 /root/before - | grep -c -v /var/lib/dpkg) files and folders of ours"
    as_user varnolix-job --version
    as_user varnolix-job collections install jasparAll /usr/share/doc/varnolix/examples/collection/sample_jaspar.txt
    run_job
    say "Purging them"
    install_by_apt purge -y varnolix varnolix-job
    files_of_system > /root/after
    if ! diff /root/before /root/after; then
        fail "the lists of files before and after differ"
    fi
    require job/index.html .local/share/varnolix/databases/jaspar/jaspar_pfm_all.txt
    say "Nothing is left but $(find / -xdev -user "$user" -type f -not -path '/proc/*' | wc -l) files of $user;" \
        "$(wc -l < /root/after) others were there before"
}

# --- What runs outside.

text_only=false given=""
while (( $# > 0 )); do
    taken=1
    case $1 in
        --installed)
            text_only=$2
            try_installed
            exit 0
            ;;
        --text) text_only=true ;;
        --packages)
            (( $# > 1 )) || wrong_use "--packages needs a folder"
            given="$(realpath "$2")"
            taken=2
            ;;
        *) common_option "$@" ;;
    esac
    shift "$taken"
done
check_release

# build_packages ROOT: makes the packages in this chroot, as package.sh does on any machine of that release.
build_packages() {
    "$here/package.sh" --source "$1/root"
    mkdir "$1/root/varnolix"
    tar -x -f "$1"/root/varnolix-*.tar.gz -C "$1/root/varnolix" --strip-components=1
    run_inside "$1" /root/varnolix/scripts/setup.sh --text --packages > "$1/root/setup.log" 2>&1 ||
        { tail -n 30 "$1/root/setup.log" >&2; fail "setup.sh failed in the chroot"; }
    # The stand-in for dendextend is packed where the release does not have the real one.
    # shellcheck disable=SC2016
    run_inside "$1" bash -c 'LC_ALL=C apt-cache policy r-cran-dendextend | grep -q "Candidate: [^(]" ||
        DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends r-base-core r-cran-ape' > /dev/null
    run_inside "$1" bash -c "/root/varnolix/scripts/package.sh --from /root/varnolix-*.tar.gz $packages_inside"
}

remove_roots_at_end
new_root
make_chroot
if [[ -z $given ]]; then
    fresh=$root
    new_root
    cp -a "$fresh/." "$root"
    say "Making the packages on $suite"
    build_packages "$root"
    given="$root$packages_inside"
    root=$fresh
fi
mkdir -p "$root$packages_inside"
cp "$given"/*.deb "$root$packages_inside"
mkdir "$root/root/scripts"
cp "$here"/{common,fresh_system,try-package}.sh "$root/root/scripts"
say "Trying the packages on $suite"
run_inside "$root" bash /root/scripts/try-package.sh --installed "$text_only"
say "$suite: installed, run and removed"
