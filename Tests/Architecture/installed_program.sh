#!/bin/bash
# Installs a build into a folder of its own; the program there has to start without a desktop and tell its version, and
# what belongs to it has to be where it is looked for.
# usage: installed_program.sh BUILD VERSION
set -euo pipefail

prefix=$(mktemp --directory)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$1" --prefix "$prefix" >"$prefix/log"

told=$(env --ignore-environment "$prefix/bin/tessel" --version </dev/null)
if [[ $told != "tessel $2" ]]; then
    echo "--version says '$told', not 'tessel $2'"
    exit 1
fi

for file in share/man/man1/tessel.1 share/bash-completion/completions/tessel share/zsh/site-functions/_tessel \
    share/fish/vendor_completions.d/tessel.fish; do
    if [[ ! -s $prefix/$file ]]; then
        echo "$file is not installed"
        exit 1
    fi
done
