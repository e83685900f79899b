#!/bin/bash
# Makes the package of what is built.
# usage: make.sh CPACK BUILD FOLDER
set -euo pipefail

cpack=$1 build=$2 folder=$3
rm -rf "$folder"
"$cpack" --config "$build/CPackConfig.cmake" -B "$folder"

shopt -s nullglob
packages=("$folder"/tessel_*.deb)
if ((${#packages[@]} != 1)); then
    echo "there are ${#packages[@]} packages in $folder, not 1"
    exit 1
fi
