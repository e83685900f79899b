#!/bin/bash
# Lists every source of more than 400 lines: such a file holds more than one idea.
# usage: short_files.sh ROOT
set -euo pipefail
cd "$1"

find . \( -path ./build -o -path ./.git \) -prune -o \( -name '*.cpp' -o -name '*.h' -o -name '*.py' \) -print0 |
    sort --zero-terminated | LC_ALL=C xargs --null wc --lines |
    awk '$2 != "total" && $1 > 400 { print $2 ": " $1 " lines; split it"; long = 1 } END { exit long }'
