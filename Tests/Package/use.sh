#!/bin/bash
# Uses the installed program as its user's session does. Runs as root in a system of its own; all processes started here
# end with it.
# usage: use.sh VERSION
set -euo pipefail

version=$1
export HOME=/tmp/home XDG_RUNTIME_DIR=/tmp/runtime
mkdir "$HOME"
mkdir --mode 700 "$XDG_RUNTIME_DIR"

told=$(tessel --version)
if [[ $told != "tessel $version" ]]; then
    echo "--version says '$told', not 'tessel $version'"
    exit 1
fi

# The interface finds everything that it loads.
if [[ -e /usr/lib/$(dpkg-architecture -q DEB_HOST_MULTIARCH)/tessel/tessel-menu.so ]]; then
    mkdir /tmp/pictures
    tessel --snapshot /tmp/pictures
    if [[ ! -s /tmp/pictures/menu-en-shortcuts-light.png ]]; then
        echo "the interface draws no pictures; the folder has: $(ls /tmp/pictures)"
        exit 1
    fi
fi

# A desktop that starts it over the message bus.
mkfifo /tmp/display
Xvfb -displayfd 3 -nolisten tcp 3>/tmp/display >/dev/null 2>&1 &
read -r number </tmp/display
export DISPLAY=:$number
DBUS_SESSION_BUS_ADDRESS=$(dbus-daemon --session --fork --print-address)
export DBUS_SESSION_BUS_ADDRESS
if tessel --status; then
    echo 'it runs before it was started'
    exit 1
fi
gdbus call --session --dest org.corvid.Tessel --object-path /org/corvid/Tessel \
    --method org.freedesktop.Application.Activate '{}'
started=$(pgrep --exact tessel) || true
program=$([[ -n $started ]] && readlink "/proc/$started/exe") || true
if [[ $program != /usr/bin/tessel ]]; then
    echo "the message bus has started '$program'"
    exit 1
fi
if ! tessel --status --json | grep --quiet "\"version\": *\"$version\""; then
    echo 'what it has started is of another version'
    exit 1
fi
tessel --quit
if tessel --status; then
    echo 'it runs after it was ended'
    exit 1
fi
