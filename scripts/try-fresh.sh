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

inside_path=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin

# run_inside ROOT COMMAND...: runs a command in the chroot, in mount and process namespaces of its own. These disappear
# with the command, however it ends, so no mount is left whose contents could be removed by mistake.
run_inside() {
    unshare --mount --pid --fork --kill-child -- bash "$here/try-fresh.sh" --inside "$@" &
    inside=$!
    # A signal interrupts this wait at once; it would not interrupt a command in the foreground.
    local status=0
    wait "$inside" || status=$?
    inside=""
    return "$status"
}

# enter ROOT COMMAND...: the part of run_inside that runs in the new namespaces.
enter() {
    local root=$1
    shift
    mount -t proc proc "$root/proc"
    mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"
    mount -t tmpfs tmpfs "$root/dev/shm"
    exec chroot "$root" /usr/bin/env -i HOME=/root PATH="$inside_path" "$@" < /dev/null
}

suite="" mirror="" demo_only=false keep=false choice=()
while (( $# > 0 )); do
    case $1 in
        --inside) shift; enter "$@" ;;
        --help) usage_of "$0"; exit 0 ;;
        --demo-only) demo_only=true ;;
        --text) choice=(--text) ;;
        --keep) keep=true ;;
        --mirror)
            (( $# > 1 )) || wrong_use "--mirror needs an address"
            mirror=$2
            shift
            ;;
        -*) wrong_use "unknown option $1" ;;
        *)
            [[ -z $suite ]] || wrong_use "one release at a time"
            suite=$1
            ;;
    esac
    shift
done
[[ -n $suite ]] || wrong_use "a release must be named, such as trixie"
[[ $suite =~ ^[a-z]+$ ]] || wrong_use "$suite is no name of a release"
[[ $(id -u) == 0 ]] || fail "only root can make a chroot"
for tool in debootstrap unshare git; do
    command -v "$tool" > /dev/null || fail "$tool is not installed"
done

# own_mirror: prints the Debian mirror that this machine's apt uses.
own_mirror() {
    # shellcheck disable=SC2016  # the fields are apt-get's
    apt-get indextargets --format '$(REPO_URI) $(LABEL)' 'Created-By: Packages' 2> /dev/null |
        awk '$2 == "Debian" || $1 ~ /\/debian\/?$/ { print $1; exit }'
}

if [[ -z $mirror ]]; then
    mirror="$(own_mirror)"
    [[ -n $mirror ]] || fail "apt has no Debian mirror here; name one with --mirror"
fi

# apt_settings: prints the settings that this machine's apt needs for downloads, without its hooks.
apt_settings() {
    local scheme proxy
    apt-config dump | grep -E '^Acquire::(http|https|Check-)' || true
    for scheme in http https; do
        proxy="${scheme}_proxy"
        [[ -z ${!proxy:-} ]] || printf 'Acquire::%s::Proxy "%s";\n' "$scheme" "${!proxy}"
    done
}

# copy_inside PATH: copies a file or folder of this machine, if it exists, to the same path in the chroot.
copy_inside() {
    [[ -e $1 ]] || return 0
    mkdir -p "$root$(dirname "$1")"
    cp -RL --remove-destination "$1" "$root$(dirname "$1")/"
}

# make_chroot: sets up the base system, apt with all it needs for downloads, and a clean copy of the project.
make_chroot() {
    local certificates
    say "Making a bare $suite in $root"
    debootstrap --variant=minbase "$suite" "$root" "$mirror" > "$root.log" 2>&1 ||
        { tail -n 20 "$root.log" >&2; fail "debootstrap did not end well"; }
    rm -f "$root"/var/cache/apt/archives/*.deb
    copy_inside /etc/resolv.conf
    copy_inside /etc/hosts
    echo "deb $mirror $suite main" > "$root/etc/apt/sources.list"
    apt_settings > "$root/etc/apt/apt.conf.d/90try-fresh"
    copy_inside /etc/ssl/certs/ca-certificates.crt
    while read -r certificates; do
        copy_inside "$certificates"
    done < <(sed -n 's/^Acquire::.*::CaInfo "\(.*\)";/\1/p' "$root/etc/apt/apt.conf.d/90try-fresh")
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

root="$(mktemp -d "${TMPDIR:-/var/tmp}/varnolix-$suite-XXXXXX")"
# The root of a system is open to every user; the tests run some commands as another one.
chmod 755 "$root"
inside=""
# clean_up: also runs after a signal, and then ends what is still running inside.
clean_up() {
    [[ -z $inside ]] || kill -KILL "$inside" 2> /dev/null || true
    rm -f "$root.log"
    if $keep; then
        say "Kept: $root"
        return
    fi
    # The last process may still be writing while it is killed.
    rm -rf --one-file-system "$root" 2> /dev/null || { sleep 2; rm -rf --one-file-system "$root"; }
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

make_chroot
bare="$(on_disk)"
summary=() passed=true
try demo.sh || passed=false
if ! $demo_only; then
    try test.sh || passed=false
fi
say "What was tried"
printf '  %s\n' "${summary[@]}"
$passed || fail "not all went well on $suite"
