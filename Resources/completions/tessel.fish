# fish completion for tessel

# The installed applications: the names of their desktop entries (Desktop Entry Specification, Desktop File ID).
function __tessel_applications
    set -l home $XDG_DATA_HOME
    test -n "$home"; or set home ~/.local/share
    set -l folders (string split : -- "$XDG_DATA_DIRS")
    test -n "$XDG_DATA_DIRS"; or set folders /usr/local/share /usr/share
    for folder in $home $folders
        test -d $folder/applications
        and find -L $folder/applications -name '*.desktop' -printf '%P\n' 2>/dev/null
    end | string replace -r '\.desktop$' '' | string replace -a / -
end

# The words after the one option that is not --json.
function __tessel_place
    set -l words (string match -v -- --json (commandline -opc)[2..])
    test (count $words) -eq $argv[1]; or return 1
    test $argv[1] -eq 0; or test "$words[1]" = $argv[2]
end

complete -c tessel -f
complete -c tessel -n '__tessel_place 0' -l status -d 'Show the status'
complete -c tessel -n '__tessel_place 0' -l perform -d 'Place the focused window'
complete -c tessel -n '__tessel_place 0' -l rule -d 'Set an app rule'
complete -c tessel -n '__tessel_place 0' -l take-shortcuts -d 'Use the shortcuts that the desktop holds'
complete -c tessel -n '__tessel_place 0' -l give-back-shortcuts -d 'Return them to the desktop'
complete -c tessel -n '__tessel_place 0' -l quit -d 'End the running Tessel'
complete -c tessel -n '__tessel_place 0' -l forget -d 'End Tessel and remove its files from your home'
complete -c tessel -n '__tessel_place 0' -l help -d 'Show a summary'
complete -c tessel -n '__tessel_place 0' -l version -d 'Show the version'
complete -c tessel -n '__tessel_place 0' -l snapshot -d 'Draw pictures of the interface'
complete -c tessel -n 'not __fish_seen_argument -l json -l help -l version -l snapshot' -l json -d 'Answer in JSON'
complete -c tessel -n '__tessel_place 1 --perform' -a 'left-half right-half center maximize almost-maximize maximize-height top-half bottom-half top-left top-right bottom-left bottom-right first-third center-third last-third first-two-thirds last-two-thirds next-display previous-display restore'
complete -c tessel -n '__tessel_place 1 --rule' -a '(__tessel_applications)'
complete -c tessel -n '__tessel_place 1 --snapshot' -a '(__fish_complete_directories)'
complete -c tessel -n '__tessel_place 2 --rule' -a 'maximize center none'
