#!/bin/bash
# Sourced by the tests of packages that are made from a release: makes its archive from the present sources, including
# uncommitted changes. Exits with 77 if there is no repository.
# usage: . release.sh; make_release SOURCES FOLDER; skip_without PROGRAM...
skip_without() { # skip_without PROGRAM...
    for program in "$@"; do
        if ! command -v "$program" >/dev/null; then
            echo "skipped: $program is not installed (scripts/install-packages packaging)"
            exit 77
        fi
    done
}

make_release() {
    if ! git -C "$1" rev-parse --git-dir >/dev/null 2>&1; then
        echo 'skipped: these sources are not in a repository'
        exit 77
    fi
    "$1/packaging/make-release" "$2" "$(git -C "$1" stash create | grep . || echo HEAD)"
}
