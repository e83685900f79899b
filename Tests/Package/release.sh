#!/bin/bash
# Read by the tests of packages that are made of a release. make_release makes its archive of the sources as they are,
# with what is not committed yet, and ends with 77 where there is no repository.
# usage: . release.sh; take_arguments SOURCES LIST...; skip_without PROGRAM...; make_release FOLDER;
#        check_package PACKAGE LIBRARIES
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")

take_arguments() { # take_arguments SOURCES LIST...: sets sources, lists, and a folder that is removed at the end
    sources=$1
    lists=("${@:2}")
    folder=$(mktemp --directory)
    trap 'rm -rf "$folder"' EXIT
}

skip_without() { # skip_without PROGRAM...
    for program in "$@"; do
        if ! command -v "$program" >/dev/null; then
            echo "skipped: $program is not installed (scripts/install-packages packaging)"
            exit 77
        fi
    done
}

make_release() { # make_release FOLDER
    if ! git -C "$sources" rev-parse --git-dir >/dev/null 2>&1; then
        echo 'skipped: these sources are not in a repository'
        exit 77
    fi
    "$sources/packaging/make-release" "$1" "$(git -C "$sources" stash create | grep . || echo HEAD)"
}

check_package() { # check_package PACKAGE LIBRARIES: compares $folder/files with the lists, and the plugin with the program
    "$here/contents-match.sh" "$folder/files" "$2" "${lists[@]}"
    mkdir "$folder/root"
    bsdtar --extract --file "$1" --directory "$folder/root"
    "$here/plugin-fits.sh" "$folder/root" "$2"
}
