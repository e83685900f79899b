#!/bin/bash
# The manual page and the shells' completions contain every option and every word that the program's own help names, and
# are valid.
# usage: command_line_texts.sh PROGRAM RESOURCES
set -euo pipefail
cd "$2"

texts=(tessel.1 completions/tessel.bash completions/_tessel completions/tessel.fish)
help=$("$1" --help)
failed=0

# An option in mdoc is a hyphen after the macro; in fish a word after -l.
mapfile -t options < <(grep --only-matching --extended-regexp -- '--[a-z]+' <<<"$help" | sort --unique)
# The program lists its words when it gets an unknown one.
words_after() {
    { "$@" 2>&1 || true; } | sed 's/.*there are //; s/,//g' | tr ' ' '\n'
}
mapfile -t words < <({ words_after "$1" --perform x; words_after "$1" --rule x x; } | sort --unique)
((${#options[@]} >= 8 && ${#words[@]} == 21))

for text in "${texts[@]}"; do
    for option in "${options[@]}"; do
        name=${option#--}
        if ! grep --quiet --extended-regexp -- "(--|Fl -|-l )$name([^a-z]|$)" "$text"; then
            echo "$text does not know $option"
            failed=1
        fi
    done
    for word in "${words[@]}"; do
        if ! grep --quiet --extended-regexp -- "(^|[^a-z-])$word([^a-z-]|$)" "$text"; then
            echo "$text does not know $word"
            failed=1
        fi
    done
done

# The completions that bash offers after the given words; the last word is being completed.
offered() {
    # shellcheck source=/dev/null
    (source completions/tessel.bash && COMP_WORDS=(tessel "$@") COMP_CWORD=$# && _tessel && echo "${COMPREPLY[*]-}")
}
applications=$(mktemp --directory)
trap 'rm -rf "$applications"' EXIT
mkdir -p "$applications/applications/kde"
touch "$applications/applications/org.example.Editor.desktop" "$applications/applications/kde/kate.desktop"
export XDG_DATA_HOME=$applications XDG_DATA_DIRS=/nonexistent
expect() {
    local expected=$1 seen
    shift
    seen=$(offered "$@")
    if [[ $seen != "$expected" ]]; then
        echo "after '$*' bash offers '$seen', not '$expected'"
        failed=1
    fi
}
expect '--status' --st
expect 'maximize maximize-height' --perform max
expect 'left-half' --json --perform le
expect 'kde-kate org.example.Editor' --rule ''
expect 'maximize center none' --rule org.example.Editor ''
expect '--json' --status ''
expect '--json' --forget ''
expect 'completions' --snapshot comp
expect '' --perform center --json ''

if command -v zsh >/dev/null; then zsh -n completions/_tessel; fi
if command -v fish >/dev/null; then fish --no-execute completions/tessel.fish; fi

# Every warning counts.
warnings=$(groff -mdoc -Tutf8 -ww -z tessel.1 2>&1)
if command -v mandoc >/dev/null; then
    warnings+=$(mandoc -T lint -W warning tessel.1) || true
fi
if [[ -n $warnings ]]; then
    echo "$warnings"
    failed=1
fi
exit "$failed"
