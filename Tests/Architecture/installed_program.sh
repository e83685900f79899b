#!/bin/bash
# Installs a build into a folder of its own. The program there must start without a desktop and print its version, and
# its files must be in their places.
# usage: installed_program.sh BUILD VERSION
set -euo pipefail

prefix=$(mktemp --directory)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$1" --prefix "$prefix" >"$prefix/log"

told=$(env --ignore-environment "$prefix/bin/tessel" --version </dev/null)
if [[ $told != "tessel $2" ]]; then
    echo "--version says '$told', not 'tessel $2'"
    exit 1
fi

entry=share/applications/org.corvid.Tessel.desktop
service=share/dbus-1/services/org.corvid.Tessel.service
metainfo=share/metainfo/org.corvid.Tessel.metainfo.xml
icons=(share/icons/hicolor/scalable/apps/org.corvid.Tessel.svg
    share/icons/hicolor/symbolic/apps/org.corvid.Tessel-symbolic.svg)
for symbol in uiwindow.split.2x1 rectangle.split.2x1 exclamationmark.triangle.fill; do
    icons+=("share/icons/hicolor/symbolic/apps/org.corvid.Tessel.$symbol"{,.badged}-symbolic.svg)
done
for file in share/man/man1/tessel.1 share/bash-completion/completions/tessel share/zsh/site-functions/_tessel \
    share/fish/vendor_completions.d/tessel.fish "$entry" "$metainfo" "$service" "${icons[@]}" \
    share/locale/{de,zh_CN}/LC_MESSAGES/tessel.mo share/doc/tessel/OFL.txt; do
    if [[ ! -s $prefix/$file ]]; then
        echo "$file is not installed"
        exit 1
    fi
done

# The files for menus must be valid, and start the installed program.
desktop-file-validate "$prefix/$entry"
appstreamcli validate --no-net --no-color "$prefix/$metainfo"
for icon in "${icons[@]}"; do
    xmllint --noout "$prefix/$icon"
done
while read -r program _; do
    if [[ ! -x $prefix/bin/$program ]]; then
        echo "$entry starts '$program', which is not installed"
        exit 1
    fi
done < <(sed -n 's/^Exec=//p' "$prefix/$entry")
for line in Name=org.corvid.Tessel "Exec=$prefix/bin/tessel"; do
    if ! grep --quiet --line-regexp --fixed-strings "$line" "$prefix/$service"; then
        echo "$service does not say '$line'"
        exit 1
    fi
done
