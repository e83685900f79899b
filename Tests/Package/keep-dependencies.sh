#!/bin/bash
# Removes from this system every module that the toolkit loads by name and the package does not depend on, so that the
# interface must work with its dependencies alone. Runs as root in a system of its own.
# usage: keep-dependencies.sh PACKAGE
set -euo pipefail

toolkit=/usr/lib/$(dpkg-architecture -q DEB_HOST_MULTIARCH)/qt6
if [[ ! -d $toolkit ]]; then
    exit
fi
read -ra depends < <(dpkg-deb --field "$1" Depends | sed 's/([^)]*)//g; s/[,|]/ /g')
# One name a line, after its kind of dependency.
apt-cache depends --recurse --installed --no-recommends --no-suggests --no-conflicts --no-breaks --no-replaces \
    --no-enhances "${depends[@]}" | sed 's/^[ |]*\([A-Za-z]*: \)\?//; s/[<>]//g; s/:.*//' | sort --unique >/tmp/depended
# A package, a colon and a path on each line.
find "$toolkit/qml" "$toolkit/plugins" ! -type d -print0 | xargs --null dpkg-query --search |
    while IFS=' ' read -r owner file; do
        if ! grep --quiet --line-regexp --fixed-strings "${owner%%:*}" /tmp/depended; then
            echo "$file"
        fi
    done | xargs --no-run-if-empty rm
