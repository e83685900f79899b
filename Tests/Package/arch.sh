#!/bin/bash
# The PKGBUILD makes a package of a release, without a repository, with the files of the Debian package.
# usage: arch.sh SOURCES LIST...
set -euo pipefail

here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
sources=$1
lists=("${@:2}")
# shellcheck source-path=SCRIPTDIR source=release.sh
. "$here/release.sh"

folder=$(mktemp --directory)
trap 'rm -rf "$folder"' EXIT
skip_without makepkg bsdtar
make_release "$sources" "$folder"
cp "$sources/packaging/PKGBUILD" "$folder"
# makepkg refuses to run as root. It checks for pacman, which it does not need here.
as_somebody=(env HOME="$folder" PACMAN=true)
if ((EUID == 0)); then
    chown --recursive nobody "$folder"
    as_somebody+=(setpriv --reuid nobody --regid nogroup --clear-groups)
fi
# The dependencies have Arch's names, and are installed here under other names.
if ! (cd "$folder" && "${as_somebody[@]}" makepkg --nodeps --skipinteg --noconfirm >"$folder/log" 2>&1); then
    tail --lines=40 "$folder/log"
    exit 1
fi
package=$(echo "$folder"/tessel-[0-9]*.pkg.tar*)
# Files that begin with a dot are the package's own metadata.
bsdtar --list --file "$package" | sed '/^\./d; /\/$/d' >"$folder/files"
"$here/contents-match.sh" "$folder/files" usr/lib "${lists[@]}"
mkdir "$folder/root"
bsdtar --extract --file "$package" --directory "$folder/root"
"$here/plugin-fits.sh" "$folder/root" usr/lib
