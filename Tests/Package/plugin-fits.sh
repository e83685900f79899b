#!/bin/bash
# The plugin of an unpacked package belongs to its program: its note has the program's build identity, which a packaging
# tool may have recomputed.
# usage: plugin-fits.sh ROOT LIBRARIES
set -euo pipefail

export LC_ALL=C
root=$1
identity=$(readelf --notes --wide "$root/usr/bin/tessel" | sed --quiet 's/.*Build ID: //p')
plugin=$root/$2/tessel/tessel-menu.so
noted=$(readelf --notes --wide "$plugin" | sed --quiet 's/^ *Tessel .*description data: //p' | tr --delete ' ')
if [[ -z $identity || $identity != "$noted" ]]; then
    echo "the program is ${identity:-without identity}, the plugin is for ${noted:-none}"
    exit 1
fi
