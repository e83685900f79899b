#!/bin/bash
# Installs the package with dpkg, uses it, and removes it again: in an overlay of this system that is removed with this
# script.
# usage: install.sh FOLDER VERSION
set -euo pipefail

here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
package=$(realpath "$1"/tessel_*.deb)
version=$2

if [[ -z ${TESSEL_PACKAGE_APART:-} ]]; then
    apart=(env TESSEL_PACKAGE_APART=yes unshare --mount --pid --fork --kill-child --propagation private)
    if ((EUID != 0)); then
        if ! sudo --non-interactive true 2>/dev/null; then
            echo 'skipped: installing takes root, or sudo that does not ask'
            exit 77
        fi
        apart=(sudo --non-interactive "${apart[@]}")
    fi
    if ! "${apart[@]}" true 2>/dev/null; then
        echo 'skipped: this machine does not let root have mounts and processes of its own'
        exit 77
    fi
    exec "${apart[@]}" "$0" "$1" "$2"
fi

mounts=$(mktemp --directory)
trap 'umount --recursive --lazy "$mounts"; rmdir "$mounts"' EXIT
mount -t tmpfs tmpfs "$mounts"
written=$mounts/written root=$mounts/root
mkdir "$written" "$mounts/work" "$root"
if ! mount -t overlay overlay -o "lowerdir=/,upperdir=$written,workdir=$mounts/work" "$root" 2>/dev/null; then
    echo 'skipped: the file system of this machine cannot be laid under another'
    exit 77
fi
mount -t proc proc "$root/proc"
mount --rbind /dev "$root/dev"
for folder in /tmp /run; do
    mount -t tmpfs tmpfs "$root$folder"
done

inside() {
    env --ignore-environment PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        chroot "$root" "$@" </dev/null
}

# Tessel may be installed on this system already; that copy must not be tested.
inside dpkg --purge tessel >/dev/null 2>&1 || true
cp "$package" "$root/tmp/tessel.deb"
cp "$here/keep-dependencies.sh" "$here/use.sh" "$root/tmp"
inside /tmp/keep-dependencies.sh /tmp/tessel.deb
cp --archive "$written" "$mounts/before"

inside dpkg --install /tmp/tessel.deb
inside /tmp/use.sh "$version"
# A user's first day with it, if this system can run that case.
cp --recursive "$here/../Desktop" "$root/tmp/desktop"
used=0
inside env PYTHONDONTWRITEBYTECODE=1 TESSEL_DESKTOP_TRIES="${TESSEL_DESKTOP_TRIES:-1}" \
    /tmp/desktop/run desktop.as-its-user /usr/bin/tessel || used=$?
if ((used != 0 && used != 77)); then
    exit "$used"
fi
inside dpkg --purge tessel

# Files that dpkg and the readers of menus and icons keep for themselves.
caches='var/(lib/dpkg|log|cache)/.*|usr/share/(applications/mimeinfo\.cache|icons/hicolor/icon-theme\.cache)'
left=0
while read -r -d '' path; do
    # A file that was rewritten with the same contents is not left over.
    before=/$path
    if [[ -e $mounts/before/$path ]]; then
        before=$mounts/before/$path
    fi
    # In an overlay, a deleted file is a character device.
    if [[ $path =~ ^($caches)$ || (-d $written/$path && -d $before) || (-c $written/$path && -c $before) ]] ||
        cmp --quiet "$written/$path" "$before"; then
        continue
    fi
    echo "/$path is left behind, or not what it was"
    left=1
done < <(find "$written" -mindepth 1 -printf '%P\0')
((left == 0))
if inside dpkg-query --show tessel 2>/dev/null; then
    echo 'dpkg still knows the package'
    exit 1
fi
