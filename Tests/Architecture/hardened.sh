#!/bin/bash
# The program and its libraries are compiled and linked with the hardening flags that distributions use.
# usage: hardened.sh PROGRAM LIBRARY...
set -euo pipefail

missing=0
expect() { # expect FILE WHAT COMMAND...
    if ! "${@:3}" >/dev/null; then
        echo "$1: $2 is missing"
        missing=1
    fi
}

for file in "$@"; do
    headers=$(readelf --wide --file-header --program-headers --dynamic "$file")
    imported=$(nm --dynamic --undefined-only "$file")
    expect "$file" 'position-independent code (-fPIE, -fPIC)' grep --extended-regexp 'Type: +DYN' <<<"$headers"
    expect "$file" 'a relocation table that becomes read-only (-z relro)' grep GNU_RELRO <<<"$headers"
    expect "$file" 'resolving all symbols at the start (-z now)' grep --extended-regexp 'BIND_NOW|FLAGS_1.*NOW' <<<"$headers"
    expect "$file" 'a stack that cannot be executed' grep --extended-regexp 'GNU_STACK.* RW +0x' <<<"$headers"
    expect "$file" 'guarding the stack (-fstack-protector-strong)' grep __stack_chk_fail <<<"$imported"
done
# The interface calls none of the C library's functions that have fortified variants.
expect "$1" 'fortified functions (-D_FORTIFY_SOURCE)' grep --extended-regexp ' __[a-z]+_chk(@|$)' <<<"$(nm --dynamic --undefined-only "$1")"
exit "$missing"
