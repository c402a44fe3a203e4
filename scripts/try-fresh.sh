#!/usr/bin/env bash
# Tries demo.sh and test.sh on a fresh Debian: as root, in a new chroot that holds only the base system.
#
#   try-fresh.sh SUITE     a Debian release by name: bookworm, trixie
#
#   --demo-only            leaves out test.sh
#   --text                 runs both scripts with --text
#   --keep                 keeps the chroot and says where it is
#   --mirror URL           where packages come from; the default is the mirror that this machine's apt uses
#
# The last commit is tried. This needs debootstrap, about 3 GB of space below TMPDIR (or /var/tmp), and a mirror that
# can be reached; apt in the chroot gets the proxies and certificates of this machine's apt. For each script it says
# how long the script took, and how much is downloaded and installed by then. The exit status is 0 if all scripts
# succeeded.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"
# shellcheck source=fresh_system.sh
source "$here/fresh_system.sh"

demo_only=false choice=()
while (( $# > 0 )); do
    taken=1
    case $1 in
        --demo-only) demo_only=true ;;
        --text) choice=(--text) ;;
        *) common_option "$@" ;;
    esac
    shift "$taken"
done
check_release

# copy_project: puts a clean copy of the last commit into the root.
copy_project() {
    mkdir -p "$root/root/varnolix"
    git -C "$project" -c safe.directory='*' archive HEAD | tar -x -C "$root/root/varnolix"
    [[ -z $(git -C "$project" -c safe.directory='*' status --porcelain) ]] ||
        say "Changes that are not committed are left out"
}

# megabytes ARGUMENT...: prints what du finds, in units of a million bytes; mounts inside are not visible here.
megabytes() {
    du -s --block-size=1000000 "$@" | cut -f 1
}

# fetched, on_disk: print what apt has downloaded, and what the system takes without these files and the project.
fetched() {
    megabytes "$root/var/cache/apt/archives"
}
on_disk() {
    megabytes --exclude="$root/var/cache/apt" --exclude="$root/var/lib/apt/lists" --exclude="$root/root" "$root"
}

# try SCRIPT: runs one of the two scripts and records time and sizes; fails if the script does.
try() {
    local start=$SECONDS result=passed
    say "$suite: $1${choice[*]:+ ${choice[*]}}"
    run_inside "$root" "/root/varnolix/scripts/$1" "${choice[@]}" || result="FAILED (status $?)"
    summary+=("$(printf '%s %s: %s after %d s; by then %d MB fetched, %d MB more on disk' "$suite" \
                        "$1${choice[*]:+ ${choice[*]}}" "$result" $((SECONDS - start)) "$(fetched)" \
                        $(( $(on_disk) - bare )))")
    [[ $result == passed ]]
}

remove_roots_at_end
new_root
make_chroot
copy_project
bare="$(on_disk)"
summary=() passed=true
try demo.sh || passed=false
if ! $demo_only; then
    try test.sh || passed=false
fi
say "What was tried"
printf '  %s\n' "${summary[@]}"
$passed || fail "not all went well on $suite"
