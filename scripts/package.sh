#!/usr/bin/env bash
# Makes the source archive and the Debian packages of the last commit, for the release of Debian that this machine has.
#
#   package.sh [DIR]        DIR gets them; the default is build/packages
#
#   --source                makes the source archive only
#   --from ARCHIVE          makes the packages of this source archive, which needs no git
#   --twice                 builds a second time in another folder, without a compiler cache, and compares: programs and
#                           packages must be the same, byte for byte
#
# scripts/setup.sh --text --packages installs what this needs. The packages are built from the archive alone, with
# Debian's own flags, and checked by lintian; its errors are failures, its warnings are printed. If this release has no
# package of dendextend for R, the stand-in is packed, for which R and its package ape must be installed.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

output="" archive="" twice=false source_only=false
while (( $# > 0 )); do
    case $1 in
        --help) usage_of "$0"; exit 0 ;;
        --twice) twice=true ;;
        --source) source_only=true ;;
        --from)
            (( $# > 1 )) || wrong_use "--from needs an archive"
            archive="$(realpath "$2")"
            shift
            ;;
        -*) wrong_use "unknown option $1" ;;
        *)
            [[ -z $output ]] || wrong_use "one folder at a time"
            output=$1
            ;;
    esac
    shift
done
output="${output:-$project/build/packages}"
needed=(cmake ninja cpack dpkg-buildflags dpkg-shlibdeps file help2man lowdown)
! $source_only || needed=(git)
for tool in "${needed[@]}"; do
    command -v "$tool" > /dev/null || fail "$tool is not installed; scripts/setup.sh --text --packages installs it"
done
mkdir -p "$output"
output="$(realpath "$output")"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# version_of FOLDER: the version that the sources there name.
version_of() {
    sed -n 's/^project(varnolix VERSION \([0-9.]*\) .*/\1/p' "$1/CMakeLists.txt"
}

# make_archive: packs the last commit. The same commit gives the same bytes.
make_archive() {
    local name git=(git -C "$project" -c safe.directory='*')
    [[ -e $project/.git ]] || fail "these sources are no repository; --from packs an archive of them"
    [[ -z $("${git[@]}" status --porcelain --untracked-files=no) ]] ||
        say "Changes that are not committed are left out"
    mkdir "$work/head"
    "${git[@]}" archive HEAD CMakeLists.txt | tar -x -C "$work/head"
    name="varnolix-$(version_of "$work/head")"
    archive="$output/$name.tar.gz"
    "${git[@]}" archive --prefix="$name/" HEAD | gzip -9n > "$archive"
}

# install_stand_in FOLDER: where this release has no package of dendextend, installs the stand-in into the sources, from
# where it is packed.
install_stand_in() {
    local library="$1/build/R-library"
    [[ -z $(with_candidate r-cran-dendextend) ]] || return 0
    if ! command -v R > /dev/null; then
        say "R is not installed, so the packages have no stand-in for dendextend, and draw no trees"
        return 0
    fi
    mkdir -p "$library"
    R CMD INSTALL --no-docs --built-timestamp="$(date -u -d "@$SOURCE_DATE_EPOCH" '+%F %T UTC')" \
        --library="$library" "$1/tools/R/dendextend" > "$1/build/stand-in.log" 2>&1 ||
        { cat "$1/build/stand-in.log" >&2; fail "the stand-in for dendextend could not be installed"; }
}

# build_in FOLDER: unpacks the archive there, builds it, and makes the packages in FOLDER/packages.
build_in() {
    local folder=$1 flags link
    mkdir -p "$folder/sources"
    tar -x -f "$archive" -C "$folder/sources" --strip-components=1
    SOURCE_DATE_EPOCH="$(sed -n 's/^[0-9a-f]\{40\} \([0-9]*\)$/\1/p' "$folder/sources/packaging/source_commit.txt")"
    [[ -n $SOURCE_DATE_EPOCH ]] || fail "$archive does not name its commit: it was not made by git archive"
    export SOURCE_DATE_EPOCH
    install_stand_in "$folder/sources"
    cd "$folder/sources"
    # Debian's flags map the folder of the sources to ".", so that no path of this machine gets into the programs. Debug
    # information would be stripped again.
    export DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CXXFLAGS_MAINT_STRIP=-g
    flags="$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)"
    link="$(dpkg-buildflags --get LDFLAGS)"
    cmake -G Ninja -S . -B build/package -D CMAKE_BUILD_TYPE=Release -D CMAKE_INSTALL_PREFIX=/usr \
        -D CMAKE_CXX_FLAGS="$flags" -D CMAKE_EXE_LINKER_FLAGS="$link" -D VARNOLIX_TESTS=OFF \
        -D VARNOLIX_STATIC_CLIENT=OFF -D VARNOLIX_PACKAGE_RELEASE="$release" > build.log
    cmake --build build/package --target programs >> build.log || { tail -n 30 build.log >&2; fail "the build failed"; }
    cpack --config build/package/CPackConfig.cmake -B "$folder/packages" >> build.log 2>&1 ||
        { tail -n 30 build.log >&2; fail "the packages could not be made"; }
}

# The release of the system is part of the version, so that packages for a later one count as newer.
release="1~$(. /etc/os-release; case $ID in debian) echo "deb${VERSION_ID:-}" ;; *) echo "$ID${VERSION_ID:-}" ;; esac)"

[[ -n $archive ]] || make_archive
if $source_only; then
    say "Made $archive"
    exit 0
fi
say "Building the packages of $(basename "$archive")"
build_in "$work/first"
if $twice; then
    say "Building them again in another folder"
    CCACHE_DISABLE=1 build_in "$work/another/second"
    for file in build/package/{varnolix,varnolix-job,weblogo-3.4/weblogo}; do
        cmp "$work/first/sources/$file" "$work/another/second/sources/$file" || fail "$(basename "$file") differs"
    done
    for package in "$work"/first/packages/*.deb; do
        cmp "$package" "$work/another/second/packages/$(basename "$package")" || fail "$(basename "$package") differs"
    done
    say "Both builds gave the same bytes: the programs and the packages"
fi
mv "$work"/first/packages/*.deb "$output"

if command -v lintian > /dev/null; then
    say "Checking them (lintian)"
    lintian --allow-root --fail-on error "$output"/*"-${release}_"*.deb || fail "lintian finds errors"
else
    say "They are not checked, as lintian is not installed"
fi
say "Made in $output"
sha256sum "$archive" "$output"/*"-${release}_"*.deb
