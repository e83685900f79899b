#!/bin/bash
# The program exports the names that its interface uses, and none of its backends'.
# usage: exported_names.sh PROGRAM INTERFACE
set -euo pipefail

ours='(corvid|tessel|platform)::'
exported=$(nm --dynamic --defined-only --demangle "$1" | cut --delimiter=' ' --fields=3- | sort)
used=$(nm --dynamic --undefined-only --demangle "$2" | sed --regexp-extended 's/^ +[A-Za-z] //' |
    grep --extended-regexp "$ours" | sort)
missing=$(comm -13 <(echo "$exported") <(echo "$used"))
if [[ -z $used || -n $missing ]]; then
    printf 'not exported, see Tessel/Wiring/exported-names:\n%s\n' "${missing:-(the interface uses no name of the program)}"
    exit 1
fi
if backends=$(grep --extended-regexp '^platform::[a-z0-9]+::' <<<"$exported"); then
    printf 'names of backends are exported:\n%s\n' "$backends"
    exit 1
fi
