#!/bin/bash
# Without a website, making a package fails with one line that names the missing setting.
# usage: without-website.sh CPACK BUILD FOLDER
set -euo pipefail

cpack=$1 build=$2 folder=$3
rm -rf "$folder"
mkdir -p "$folder"
if "$cpack" --config "$build/CPackConfig.cmake" -D CPACK_PACKAGE_HOMEPAGE_URL= -B "$folder" >"$folder/said" 2>&1; then
    echo 'it was made'
    exit 1
fi
if ! grep --quiet -e '-DTESSEL_WEBSITE=' "$folder/said"; then
    cat "$folder/said"
    echo 'nothing says what is missing'
    exit 1
fi
[[ -z $(find "$folder" -name '*.deb') ]]
