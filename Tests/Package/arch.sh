#!/bin/bash
# The PKGBUILD makes a package of a release, without a repository, with the files of the Debian package.
# usage: arch.sh SOURCES LIST...
set -euo pipefail

# shellcheck source-path=SCRIPTDIR source=release.sh
. "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/release.sh"
take_arguments "$@"

skip_without makepkg bsdtar
make_release "$folder"
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
check_package "$package" usr/lib
