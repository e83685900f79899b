#!/bin/bash
# Each linked library stays in memory all day, so a library that is not listed here needs a good reason.
# usage: linked_libraries.sh PROGRAM
set -euo pipefail

allowed='^lib(c|m|gcc_s|stdc\+\+|glib-2\.0|systemd|plist-2\.0|xcb|xcb-[a-z0-9]+)\.so'
needed=$(objdump --private-headers "$1" | awk '$1 == "NEEDED" { print $2 }')
grep --quiet '^libc\.so' <<<"$needed"
if grep --invert-match --extended-regexp "$allowed" <<<"$needed"; then
    echo "The libraries above are linked and not in the list of $(basename "${BASH_SOURCE[0]}")."
    exit 1
fi
