#!/bin/bash
# The program does not use the internet, so it resolves no names and opens no connection to other machines.
# usage: no_network.sh PROGRAM
set -euo pipefail

imported=$(nm --dynamic --undefined-only "$1" | awk '{ print $2 }' | sed 's/@.*//')
grep --quiet '^socketpair$' <<<"$imported"
if grep --extended-regexp '^(getaddrinfo|gethostby.*|getnameinfo|res_.*|inet_.*|g_socket_.*|g_resolver_.*|curl_.*)$' \
    <<<"$imported"; then
    echo "The program imports the functions above, which are for networks."
    exit 1
fi
