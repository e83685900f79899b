#!/bin/bash
# lintian, Debian's checker of packages, finds no fault.
# usage: lintian.sh FOLDER
set -euo pipefail

# Its warning about root's environment is about building for others.
LC_ALL=C.UTF-8 lintian --allow-root --fail-on error,warning "$1"/tessel_*.deb
