#!/bin/bash
# tessel.spec makes a package of a release, without a repository, with the files of the Debian package.
# usage: rpm.sh SOURCES LIST...
set -euo pipefail

here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
sources=$1
lists=("${@:2}")
# shellcheck source-path=SCRIPTDIR source=release.sh
. "$here/release.sh"

folder=$(mktemp --directory)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/SOURCES"
skip_without rpmbuild bsdtar
make_release "$sources" "$folder/SOURCES"
# The dependencies have the names of Fedora and openSUSE, and are installed here under other names.
if ! rpmbuild --define "_topdir $folder" --nodeps -bb "$sources/packaging/tessel.spec" >"$folder/log" 2>&1; then
    tail --lines=40 "$folder/log"
    exit 1
fi
package=$(echo "$folder"/RPMS/*/tessel-[0-9]*.rpm)
# A folder's mode begins with d.
rpm --query --package --queryformat '[%{FILEMODES:perms} %{FILENAMES}\n]' "$package" | sed -n 's|^-[^ ]* /||p' >"$folder/files"
libraries=$(rpm --eval '%{_libdir}')
"$here/contents-match.sh" "$folder/files" "${libraries#/}" "${lists[@]}"
mkdir "$folder/root"
bsdtar --extract --file "$package" --directory "$folder/root"
"$here/plugin-fits.sh" "$folder/root" "${libraries#/}"
