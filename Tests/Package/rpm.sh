#!/bin/bash
# tessel.spec makes a package of a release, without a repository, with the files of the Debian package.
# usage: rpm.sh SOURCES LIST...
set -euo pipefail

# shellcheck source-path=SCRIPTDIR source=release.sh
. "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/release.sh"
take_arguments "$@"

mkdir "$folder/SOURCES"
skip_without rpmbuild bsdtar
make_release "$folder/SOURCES"
# What it needs is named as Fedora and openSUSE name it, and installed here under other names.
if ! rpmbuild --define "_topdir $folder" --nodeps -bb "$sources/packaging/tessel.spec" >"$folder/log" 2>&1; then
    tail --lines=40 "$folder/log"
    exit 1
fi
package=$(echo "$folder"/RPMS/*/tessel-[0-9]*.rpm)
# A folder's mode begins with d.
rpm --query --package --queryformat '[%{FILEMODES:perms} %{FILENAMES}\n]' "$package" | sed -n 's|^-[^ ]* /||p' >"$folder/files"
libraries=$(rpm --eval '%{_libdir}')
check_package "$package" "${libraries#/}"
