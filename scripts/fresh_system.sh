# shellcheck shell=bash disable=SC2034
# Fresh Debian systems in chroots, for the scripts that try things there. To be sourced behind common.sh. It uses and
# sets the variables suite, mirror, keep and root of the script.

inside_path=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin

# run_inside ROOT COMMAND...: runs a command in the chroot, in mount and process namespaces of its own. These disappear
# with the command, however it ends, so no mount is left whose contents could be removed by mistake.
run_inside() {
    unshare --mount --pid --fork --kill-child -- bash "${BASH_SOURCE[0]}" --inside "$@" &
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

suite="" mirror="" keep=false root="" inside=""
roots=()

# common_option ARGUMENT...: takes a release or an option that all of these scripts have. Sets taken to the number of
# arguments that it took, or ends the script for wrong use.
common_option() {
    taken=1
    case $1 in
        --help) usage_of "$0"; exit 0 ;;
        --keep) keep=true ;;
        --mirror)
            (( $# > 1 )) || wrong_use "--mirror needs an address"
            mirror=$2
            taken=2
            ;;
        -*) wrong_use "unknown option $1" ;;
        *)
            [[ -z $suite ]] || wrong_use "one release at a time"
            suite=$1
            ;;
    esac
}

# own_mirror: prints the Debian mirror that this machine's apt uses.
own_mirror() {
    # shellcheck disable=SC2016  # the fields are apt-get's
    apt-get indextargets --format '$(REPO_URI) $(LABEL)' 'Created-By: Packages' 2> /dev/null |
        awk '$2 == "Debian" || $1 ~ /\/debian\/?$/ { print $1; exit }'
}

# check_release: makes sure that a release is named, that chroots can be made, and that there is a mirror.
check_release() {
    local tool
    [[ -n $suite ]] || wrong_use "a release must be named, such as trixie"
    [[ $suite =~ ^[a-z]+$ ]] || wrong_use "$suite is no name of a release"
    [[ $(id -u) == 0 ]] || fail "only root can make a chroot"
    for tool in debootstrap unshare git; do
        command -v "$tool" > /dev/null || fail "$tool is not installed"
    done
    [[ -n $mirror ]] || mirror="$(own_mirror)"
    [[ -n $mirror ]] || fail "apt has no Debian mirror here; name one with --mirror"
}

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

# new_root: makes the folder of a chroot, which is removed when the script ends, and calls it root.
new_root() {
    root="$(mktemp -d "${TMPDIR:-/var/tmp}/varnolix-$suite-XXXXXX")"
    roots+=("$root")
    # The root of a system is open to every user; the tests run some commands as another one.
    chmod 755 "$root"
}

# remove_roots: also runs after a signal, and then ends what is still running inside.
remove_roots() {
    local each
    [[ -z $inside ]] || kill -KILL "$inside" 2> /dev/null || true
    for each in "${roots[@]}"; do
        rm -f "$each.log"
        if $keep; then
            say "Kept: $each"
            continue
        fi
        # The last process may still be writing while it is killed.
        rm -rf --one-file-system "$each" 2> /dev/null || { sleep 2; rm -rf --one-file-system "$each"; }
    done
}

# remove_roots_at_end: does so however the script ends.
remove_roots_at_end() {
    trap remove_roots EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}

# make_chroot: sets up the base system in the root, and apt with all it needs for downloads.
make_chroot() {
    local certificates
    say "Making a bare $suite in $root"
    debootstrap --variant=minbase "$suite" "$root" "$mirror" > "$root.log" 2>&1 ||
        { tail -n 20 "$root.log" >&2; fail "debootstrap did not end well"; }
    rm -f "$root"/var/cache/apt/archives/*.deb
    copy_inside /etc/resolv.conf
    copy_inside /etc/hosts
    echo "deb $mirror $suite main" > "$root/etc/apt/sources.list"
    apt_settings > "$root/etc/apt/apt.conf.d/90mirror"
    copy_inside /etc/ssl/certs/ca-certificates.crt
    while read -r certificates; do
        copy_inside "$certificates"
    done < <(sed -n 's/^Acquire::.*::CaInfo "\(.*\)";/\1/p' "$root/etc/apt/apt.conf.d/90mirror")
}

if [[ ${BASH_SOURCE[0]} == "$0" && ${1:-} == --inside ]]; then
    set -euo pipefail
    shift
    enter "$@"
fi
