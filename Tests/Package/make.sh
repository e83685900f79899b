#!/bin/bash
# Makes the package of the build, for that website.
# usage: make.sh CPACK BUILD FOLDER WEBSITE
set -euo pipefail

cpack=$1 build=$2 folder=$3 website=$4
rm -rf "$folder"
"$cpack" --config "$build/CPackConfig.cmake" -D CPACK_PACKAGE_HOMEPAGE_URL="$website" -B "$folder"

shopt -s nullglob
packages=("$folder"/tessel_*.deb)
if ((${#packages[@]} != 1)); then
    echo "there are ${#packages[@]} packages in $folder, not 1"
    exit 1
fi
