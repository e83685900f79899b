#!/bin/bash
# Checks that a package's files are exactly those that the lists name.
# usage: contents-match.sh FILES LIBRARIES LIST...
# FILES has a path per line, relative to the root; LIBRARIES replaces that word in the lists.
set -euo pipefail

files=$1 libraries=$2
lists=("${@:3}")

patterns=$(mktemp)
trap 'rm -f "$patterns"' EXIT
failed=no
sed "s|LIBRARIES|$libraries|; /^#/d" "${lists[@]}" >"$patterns"
while read -r pattern; do
    if ! grep --quiet --extended-regexp --line-regexp -e "$pattern" "$files"; then
        echo "there is no $pattern"
        failed=yes
    fi
done <"$patterns"
if grep --invert-match --extended-regexp --line-regexp --file "$patterns" "$files"; then
    echo 'nothing tells what the files above are for'
    failed=yes
fi
[[ $failed == no ]]
