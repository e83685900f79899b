# bash completion for tessel

# The installed applications: the names of their desktop entries (Desktop Entry Specification, Desktop File ID).
_tessel_applications() {
    local folder folders
    IFS=: read -ra folders <<<"${XDG_DATA_HOME:-$HOME/.local/share}:${XDG_DATA_DIRS:-/usr/local/share:/usr/share}"
    for folder in "${folders[@]}"; do
        (cd "$folder/applications" 2>/dev/null && find -L . -name '*.desktop' -printf '%P\n')
    done | sed 's/\.desktop$//; s:/:-:g' | sort -u
}

_tessel() {
    local current=${COMP_WORDS[COMP_CWORD]} place=0 json=--json index option='' words='' actions
    actions='left-half right-half center maximize almost-maximize maximize-height top-half bottom-half top-left top-right'
    actions+=' bottom-left bottom-right first-third center-third last-third first-two-thirds last-two-thirds'
    actions+=' next-display previous-display restore'
    # The first option that is not --json, and how many words follow it.
    for ((index = 1; index < COMP_CWORD; ++index)); do
        if [[ ${COMP_WORDS[index]} == --json ]]; then
            json=
        elif [[ -z $option ]]; then
            option=${COMP_WORDS[index]}
        else
            ((++place))
        fi
    done
    case $option,$place in
    ,0) words='--status --perform --rule --take-shortcuts --give-back-shortcuts --quit --forget --snapshot --help --version '$json ;;
    --perform,0) words=$actions ;;
    --rule,0) words=$(_tessel_applications) ;;
    --rule,1) words='maximize center none' ;;
    --status,0 | --take-shortcuts,0 | --give-back-shortcuts,0 | --quit,0 | --forget,0 | --perform,1 | --rule,2) words=$json ;;
    --snapshot,0)
        mapfile -t COMPREPLY < <(compgen -A directory -- "$current")
        return
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _tessel tessel
