#!/bin/bash
# Checks every shell and Python script for mistakes, also those without a suffix in their name.
# usage: scripts.sh ROOT
set -euo pipefail
cd "$1"

shell=()
python=()
while IFS= read -r -d '' file; do
    interpreter=$(head --lines 1 "$file" | tr --delete '\0')
    case $file,$interpreter in
    *.py,* | *,'#!'*python*) python+=("$file") ;;
    *.sh,* | *,'#!'*/bash* | *,'#!'*/sh*) shell+=("$file") ;;
    esac
done < <(find . \( -path ./build -o -path ./.git \) -prune -o -type f -print0 | sort --zero-terminated)

echo "${#shell[@]} shell and ${#python[@]} Python scripts"
((${#shell[@]} > 0 && ${#python[@]} > 0))
shellcheck "${shell[@]}"
pyflakes3 "${python[@]}"
