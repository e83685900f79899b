#!/bin/bash
# The package matches its name and has exactly its files, in Debian's places.
# usage: contents.sh FOLDER VERSION LIST...
set -euo pipefail

package=$(echo "$1"/tessel_*.deb)
version=$2
lists=("${@:3}")

folder=$(mktemp --directory)
trap 'rm -rf "$folder"' EXIT
failed=no
complain() {
    echo "$1"
    failed=yes
}

dpkg-deb --fsys-tarfile "$package" | tar --list --verbose --numeric-owner >"$folder/listing"
# A listing's sixth word is the path.
sed -n 's|^-.* \./||p' "$folder/listing" >"$folder/files"
triplet=$(dpkg-architecture -q DEB_HOST_MULTIARCH)
"$(dirname "${BASH_SOURCE[0]}")/contents-match.sh" "$folder/files" "usr/lib/$triplet" "${lists[@]}" || failed=yes
if grep --invert-match --extended-regexp '^(drwxr-xr-x|-rw-r--r--|-rwxr-xr-x) 0/0 ' "$folder/listing"; then
    complain "the entries above are not root's, or others may write to them or cannot read them"
fi

field() { dpkg-deb --field "$package" "$1"; }
dpkg-deb --extract "$package" "$folder/root"
root=$folder/root
[[ $(field Package) == tessel && $(field Architecture) == "$(dpkg --print-architecture)" ]] ||
    complain "it is $(field Package) for $(field Architecture)"
[[ $(field Version) == "$version"-* ]] || complain "it has version $(field Version), not $version"
zcat "$root/usr/share/doc/tessel/changelog.Debian.gz" >"$folder/changelog"
newest=$(dpkg-parsechangelog --file "$folder/changelog" --show-field Version)
[[ $(field Version) == "$newest" ]] || complain "the newest version in the change log is $newest"
[[ $(field Maintainer) == 'Corvid <'*'@tessel.example>' ]] || complain "its maintainer is $(field Maintainer)"

[[ $(field Homepage) == https://tessel.example ]] || complain "its homepage is $(field Homepage)"
grep --quiet --line-regexp 'Source: https://tessel.example' "$root/usr/share/doc/tessel/copyright" ||
    complain 'its copyright file names another source'

# Each library that a program or plugin links, and each module that these load by name.
needed='libc6 libglib2.0-0 libplist3 libsystemd0 libxcb1 libxcb-randr0'
if [[ -e $root/usr/lib/$triplet/tessel/tessel-menu.so ]]; then
    needed+=' libqt6core6 libqt6gui6 libqt6qml6 libqt6quick6 libqt6svg6 qml6-module-qtquick'
fi
for name in $needed; do
    [[ ", $(field Depends)," == *", $name"[\ ,]* ]] || complain "it does not depend on $name"
done

for name in dbus-session-bus xdg-utils qt6-wayland; do
    [[ ", $(field Recommends)," == *[\ ]"$name",* ]] || complain "it does not recommend $name"
done

while read -r file; do
    if file --brief "$root/$file" | grep --quiet '^ELF.*not stripped'; then
        complain "$file is not stripped"
    fi
done <"$folder/files"
service=$root/usr/share/dbus-1/services/org.corvid.Tessel.service
grep --quiet --line-regexp 'Name=org.corvid.Tessel' "$service" || complain 'the bus service has another name'
grep --quiet --line-regexp 'Exec=/usr/bin/tessel' "$service" || complain 'the bus service starts another program'
desktop-file-validate "$root/usr/share/applications/org.corvid.Tessel.desktop" || complain 'menus cannot read its entry'
[[ $failed == no ]]
